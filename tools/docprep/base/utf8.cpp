#include "base/utf8.h"

#include <nlohmann/json.hpp>

#include "base/json.h"

namespace docprep {

std::string as_utf8(const std::string& text) {
    return nlohmann::json::parse(Json(text).dump()).get<std::string>();
}

bool is_utf8(const std::string& text) {
    return text.find('\0') == std::string::npos && as_utf8(text) == text;
}

}  // namespace docprep
