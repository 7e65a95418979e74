#include "html/html_text.h"

#include <cstddef>
#include <cstdint>

#include "base/utf8.h"

namespace docprep {

namespace {

constexpr const char* kReplacement = "\xef\xbf\xbd";

// Well-formed, but no characters of XML.
constexpr const char* kNoCharacters[] = {"\xef\xbf\xbe", "\xef\xbf\xbf"};

void append_escaped(std::string& result, char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '&')
        result += "&amp;";
    else if (c == '<')
        result += "&lt;";
    else if (c == '>')
        result += "&gt;";
    else if (c == '"')
        result += "&quot;";
    else if (c == '\'')
        result += "&#39;";
    else if (byte < 0x20 || byte == 0x7f)
        result += kReplacement;
    else
        result += c;
}

}  // namespace

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : as_utf8(text)) append_escaped(result, c);
    for (const std::string none : kNoCharacters)
        for (size_t at = result.find(none); at != std::string::npos; at = result.find(none, at))
            result.replace(at, none.size(), kReplacement);
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
