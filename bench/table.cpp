#include "table.h"

#include <cstdio>
#include <fstream>

namespace bench {

namespace {

std::string processor() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
    return "unknown processor";
}

std::string fixed(double value, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    return text;
}

std::string three_digits(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3g", value);
    return text;
}

// Three digits or so that matter, whatever the size.
std::string milliseconds(double ms) {
    return fixed(ms, ms < 0.01 ? 5 : ms < 1 ? 3 : ms < 100 ? 2 : 0);
}

}  // namespace

std::string table_head(const Inputs& in, int repetitions) {
    return "## " + std::to_string(in.cols) + " x " + std::to_string(in.rows) + "\n\n" + processor() +
           ", one thread, " BENCH_COMPILER ", medians of " + std::to_string(repetitions) + "\n\n" +
           "| operation | ms | GB/s | / memcpy | / fresh | others: ms (ours / theirs) "
           "|\n|---|---|---|---|---|---|\n";
}

std::string table_line(const Result& result) {
    const double ours = result.times.at("ours");
    std::string line = "| " + result.row.name + " | " + milliseconds(ours) + " | " +
                       fixed(static_cast<double>(result.row.bytes) / ours * 1e-6, 1) + " | " +
                       fixed(ours / result.times.at("memcpy"), 2) + " | " +
                       fixed(ours / result.times.at("memcpy fresh"), 2) + " |";
    for (const Candidate& candidate : result.row.candidates) {
        if (candidate.name == "ours") continue;
        const double theirs = result.times.at(candidate.name);
        line += " " + candidate.name + " " + milliseconds(theirs) + " (" + three_digits(ours / theirs) + ")";
    }
    return line + " |\n";
}

}  // namespace bench
