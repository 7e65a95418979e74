#include "extents.h"

#include <charconv>

namespace docprep {

namespace {

bool parse_extent(const char*& at, const char* end, int& value) {
    const auto [stop, error] = std::from_chars(at, end, value);
    at = stop;
    return error == std::errc() && value > 0;
}

}  // namespace

bool parse_extents(const std::string& text, Extents& extents) {
    const char* at = text.data();
    const char* const end = at + text.size();
    Extents parsed;
    if (!parse_extent(at, end, parsed.cols) || at == end || *at++ != 'x') return false;
    if (!parse_extent(at, end, parsed.rows) || at != end) return false;
    extents = parsed;
    return true;
}

std::string as_text(const Extents& extents) {
    return std::to_string(extents.cols) + "x" + std::to_string(extents.rows);
}

}  // namespace docprep
