#include "base/extents.h"

#include <charconv>

namespace docprep {

namespace {

bool parse_extent(const char*& at, const char* end, int& value) {
    const auto [stop, error] = std::from_chars(at, end, value);
    at = stop;
    return error == std::errc() && value > 0;
}

void skip_spaces(const char*& at, const char* end) {
    while (at != end && *at == ' ') ++at;
}

/// Steps over the sign between two numbers.
bool parse_times(const char*& at, const char* end) {
    skip_spaces(at, end);
    if (at == end || (*at != 'x' && *at != 'X')) return false;
    ++at;
    skip_spaces(at, end);
    return true;
}

}  // namespace

bool parse_extents(const std::string& text, Extents& extents) {
    const char* at = text.data();
    const char* const end = at + text.size();
    Extents parsed;
    if (!parse_extent(at, end, parsed.cols) || !parse_times(at, end)) return false;
    if (!parse_extent(at, end, parsed.rows) || at != end) return false;
    extents = parsed;
    return true;
}

std::string as_text(const Extents& extents) {
    return std::to_string(extents.cols) + "x" + std::to_string(extents.rows);
}

}  // namespace docprep
