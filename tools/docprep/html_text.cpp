#include "html_text.h"

#include <cstddef>
#include <cstdint>

namespace docprep {

namespace {

constexpr const char* kReplacement = "\xef\xbf\xbd";

/// How many bytes the character at `at` has in UTF-8; 0 where there is none.
size_t length_of_character(const std::string& text, size_t at) {
    const auto byte = [&](size_t k) { return k < text.size() ? static_cast<unsigned char>(text[k]) : 0u; };
    const unsigned first = byte(at);
    if (first < 0x80) return 1;
    const size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    uint32_t code = first & (0x7fu >> length);
    for (size_t k = 1; k < length; ++k) {
        if ((byte(at + k) & 0xc0u) != 0x80) return 0;
        code = code << 6 | (byte(at + k) & 0x3fu);
    }
    // Each length has the codes that the shorter ones do not reach.
    const uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xd800 && code < 0xe000;
    return first >= 0xc0 && first < 0xf8 && code >= least[length] && code <= 0x10ffff && !surrogate ? length
                                                                                                    : 0;
}

bool in_xml(const std::string& character) {
    if (character == "\xef\xbf\xbe" || character == "\xef\xbf\xbf") return false;  // no characters
    const auto first = static_cast<unsigned char>(character[0]);
    return first >= 0x20 && first != 0x7f;
}

std::string escaped_character(const std::string& character) {
    switch (character[0]) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return in_xml(character) ? character : kReplacement;
    }
}

}  // namespace

std::string escaped(const std::string& text) {
    std::string result;
    for (size_t at = 0; at < text.size();) {
        const size_t length = length_of_character(text, at);
        result += length == 0 ? kReplacement : escaped_character(text.substr(at, length));
        at += length == 0 ? 1 : length;
    }
    return result;
}

std::string base64(const Bytes& bytes) {
    constexpr const char* kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t k = 0; k < bytes.size(); k += 3) {
        const size_t n = bytes.size() - k;
        const uint32_t three = static_cast<uint32_t>(bytes[k]) << 16 |
                               (n > 1 ? static_cast<uint32_t>(bytes[k + 1]) << 8 : 0u) |
                               (n > 2 ? static_cast<uint32_t>(bytes[k + 2]) : 0u);
        text += kDigits[three >> 18];
        text += kDigits[three >> 12 & 63];
        text += n > 1 ? kDigits[three >> 6 & 63] : '=';
        text += n > 2 ? kDigits[three & 63] : '=';
    }
    return text;
}

}  // namespace docprep
