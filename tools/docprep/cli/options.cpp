#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>

#include "cli/unknown_name.h"

namespace docprep {

CLI::Option* add_extents(CLI::App& app, const std::string& name, std::optional<Extents>& value,
                         const std::string& description) {
    const auto set = [name, &value](const std::string& text) {
        Extents extents;
        if (!parse_extents(text, extents)) throw CLI::ValidationError(name, "'" + text + "' is not WxH");
        value = extents;
    };
    return app.add_option_function<std::string>(name, set, description)->type_name("WxH");
}

CLI::Option* add_number(CLI::App& app, const std::string& name, std::optional<float>& value,
                        const std::string& description) {
    const auto set = [name, &value](const float& number) {
        if (!std::isfinite(number)) throw CLI::ValidationError(name, "must be a finite number");
        value = number;
    };
    return app.add_option_function<float>(name, set, description)->type_name("NUMBER");
}

CLI::Option* add_positive(CLI::App& app, const std::string& name, std::optional<float>& value,
                          const std::string& description) {
    const auto set = [name, &value](const float& number) {
        if (!std::isfinite(number) || number <= 0)
            throw CLI::ValidationError(name, "must be a finite number above 0");
        value = number;
    };
    return app.add_option_function<float>(name, set, description)->type_name("NUMBER");
}

namespace {

std::string without_outer_spaces(const std::string& text) {
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) return "";
    return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

/// As "binarise" is spelled here.
std::string spelled_with_s(std::string text) {
    for (size_t at = text.find("ize"); at != std::string::npos; at = text.find("ize", at)) text[at + 1] = 's';
    return text;
}

}  // namespace

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    size_t begin = 0;
    for (size_t end = text.find(separator); end != std::string::npos; end = text.find(separator, begin)) {
        parts.push_back(without_outer_spaces(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    parts.push_back(without_outer_spaces(text.substr(begin)));
    return parts;
}

size_t position_of(const std::string& option, const std::string& text,
                   const std::vector<std::string>& names) {
    const auto is_meant = [sought = spelled_with_s(text)](const std::string& name) {
        return spelled_with_s(name) == sought;
    };
    const auto found = std::find_if(names.begin(), names.end(), is_meant);
    if (found == names.end()) throw UnknownName(option, text, names);
    return static_cast<size_t>(found - names.begin());
}

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

}  // namespace docprep
