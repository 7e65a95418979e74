#include "output/summary.h"

#include <cinttypes>
#include <cstdio>

#include "base/failure.h"
#include "base/number_text.h"
#include "output/standard_output.h"

namespace docprep {

namespace {

std::string time_text(double ms, const std::string& step) {
    char text[32];
    std::snprintf(text, sizeof text, "%8.1f  ", ms);
    return text + step;
}

}  // namespace

void Summary::line(const std::string& name, const std::string& value) {
    constexpr size_t kNameWidth = 14;
    std::string cell = name == last_ ? "" : name;
    cell.resize(kNameWidth, ' ');
    text_ += cell + one_line(value) + "\n";
    last_ = name;
}

void Summary::count(const std::string& name, int64_t value) {
    char text[24];
    std::snprintf(text, sizeof text, "%8" PRId64, value);
    line(name, text);
}

void Summary::source(const Source& source) {
    std::string input =
        source.file + " (" + source.format + ", " + pixel_size(source.stored_cols, source.stored_rows);
    if (source.orientation != 1) input += ", orientation " + std::to_string(source.orientation);
    line("input", input + ")");
    line("size", pixel_size(source.cols, source.rows));
}

void Summary::steps(const Steps& steps) {
    for (const Steps::Step& step : steps.list()) line("ms", time_text(step.ms, step.name));
    line("ms", time_text(steps.total_ms(), "in all"));
}

void Summary::written(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) line("written", path);
}

void Summary::print() const {
    docprep::print(text_);
}

}  // namespace docprep
