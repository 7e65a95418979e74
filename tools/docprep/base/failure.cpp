#include "base/failure.h"

#include <cstdio>
#include <system_error>
#include <utility>

namespace docprep {

namespace {

const char* meaning(const orvex_991::CException& exception) {
    if (!exception.message.empty()) return exception.message.c_str();
    switch (exception.code) {
        case 1:
            return "an input check failed; --verbose shows which";
        case 2:
            return "an operation failed";
        case 3:
            return "no memory for pixels";
        default:
            return "an index is out of range";
    }
}

}  // namespace

Failure::Failure(std::string file, const std::string& reason)
    : std::runtime_error(reason), file_(std::move(file)) {}

std::string system_reason(int error_number) {
    return std::generic_category().message(error_number);
}

LibraryReason::LibraryReason(const orvex_991::CException& exception) {
    std::snprintf(text, sizeof text, "library error %d (%s)", exception.code, meaning(exception));
}

void complain(const char* about, const char* reason) {
    char line[2 * 4096];  // a path is no longer than half of that
    std::snprintf(line, sizeof line, "%s%s%s", about, *about ? ": " : "", reason);
    for (char* c = line; *c; ++c) *c = in_one_line(*c);
    std::fprintf(stderr, "docprep: %s\n", line);
}

char in_one_line(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? '?' : c;
}

std::string one_line(std::string text) {
    for (char& c : text) c = in_one_line(c);
    return text;
}

}  // namespace docprep
