#include "batch/batch_progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/failure.h"

namespace docprep {

namespace {

std::string clock_text(double seconds) {
    constexpr double kMost = 359999;  // 99:59:59
    const auto whole = static_cast<int>(std::lround(std::min(seconds, kMost)));
    char text[16];
    if (whole >= 3600)
        std::snprintf(text, sizeof text, "%d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60);
    else
        std::snprintf(text, sizeof text, "%d:%02d", whole / 60, whole % 60);
    return text;
}

size_t terminal_columns() {
    constexpr size_t kUsual = 80;
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsual;
    return size.ws_col;
}

}  // namespace

std::string progress_line(const BatchCounts& counts, double seconds) {
    std::string line = std::to_string(counts.finished()) + " of " + std::to_string(counts.total);
    if (counts.worked_on() > 0 && seconds > 0) {
        const double rate = static_cast<double>(counts.worked_on()) / seconds;
        char text[32];
        std::snprintf(text, sizeof text, ", %.1f/s", rate);
        line += text;
        if (counts.finished() < counts.total)
            line += ", " + clock_text(static_cast<double>(counts.total - counts.finished()) / rate) + " left";
    }
    if (counts.refused > 0) line += ", " + std::to_string(counts.refused) + " refused";
    if (counts.failed > 0) line += ", " + std::to_string(counts.failed) + " failed";
    return line;
}

std::string progress_bar(const BatchCounts& counts, double seconds, size_t columns) {
    constexpr size_t kLength = 20;
    const auto filled = counts.total > 0 ? static_cast<size_t>(counts.finished()) * kLength /
                                               static_cast<size_t>(counts.total)
                                         : kLength;
    std::string bar = "[" + std::string(filled, '#') + std::string(kLength - filled, ' ') + "] " +
                      progress_line(counts, seconds);
    bar.resize(std::min(bar.size(), columns));
    return bar;
}

bool ProgressLines::due(const BatchCounts& counts, double seconds) {
    constexpr double kSoonest = 5, kLatest = 30;
    const int64_t tenths = counts.total > 0 ? counts.finished() * 10 / counts.total : 0;
    const double since = seconds - last_;
    if (since < kSoonest || (tenths == tenths_ && since < kLatest)) return false;
    tenths_ = tenths;
    last_ = seconds;
    return true;
}

BatchProgress::Show progress_for_standard_error() {
    const char* const terminal = std::getenv("TERM");
    const bool moves = isatty(STDERR_FILENO) != 0 && terminal && std::strcmp(terminal, "dumb") != 0;
    return moves ? BatchProgress::Show::kBar : BatchProgress::Show::kLines;
}

double BatchProgress::seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void BatchProgress::update(const BatchCounts& counts) {
    constexpr double kBetweenBars = 0.1;
    const double now = seconds();
    if (show_ == Show::kLines) {
        if (lines_.due(counts, now))
            std::fprintf(stderr, "docprep: %s\n", progress_line(counts, now).c_str());
    } else if (show_ == Show::kBar && (!bar_shown_ || now - *bar_shown_ >= kBetweenBars)) {
        // The last column stays free: some terminals go on to the next line with it.
        const std::string bar = progress_bar(counts, now, terminal_columns() - 1);
        std::fprintf(stderr, "\r\033[K%s", bar.c_str());
        bar_shown_ = now;
    }
}

void BatchProgress::complain(const std::string& file, const std::string& reason) {
    clear();
    docprep::complain(file.c_str(), reason.c_str());
}

void BatchProgress::warn(const std::string& file, const std::string& warning) {
    if (show_ != Show::kNothing) complain(file, "warning: " + warning);
}

void BatchProgress::clear() {
    if (bar_shown_) std::fputs("\r\033[K", stderr);
    bar_shown_.reset();
}

}  // namespace docprep
