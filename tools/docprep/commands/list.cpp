#include "commands/list.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "base/json.h"
#include "commands/operations.h"
#include "output/standard_output.h"

namespace docprep {

namespace {

std::string result_name(const Operation& operation) {
    return operation.makes_picture ? "picture" : "numbers";
}

std::string name_of(Operand operand) {
    switch (operand) {
        case Operand::kAny:
            return "any";
        case Operand::kGray:
            return "gray";
        case Operand::kBinary:
            return "binary";
        case Operand::kColour:
            return "colour";
        case Operand::kFrame:
            return "frame";
        case Operand::kNone:
            break;
    }
    return "none";
}

/// What stands in the first column.
std::string usage(const Parameter& parameter) {
    const std::string type = type_name(parameter);
    return "  --" + parameter.name + (type.empty() ? "" : " " + type);
}

Json as_json(const Parameter& parameter) {
    const std::string type = type_name(parameter);
    Json json = {{"name", parameter.name},
                 {"type", type.empty() ? "flag" : type},
                 {"required", parameter.required},
                 {"meaning", parameter.meaning}};
    if (parameter.range.least < parameter.range.most) {
        json.add("least", parameter.range.least);
        json.add("most", parameter.range.most);
    }
    if (!parameter.choices.empty()) json.add("choices", Json::array(parameter.choices));
    if (!parameter.unless_given.empty()) json.add("default", parameter.unless_given);
    return json;
}

Json as_json(const Operation& operation) {
    Json parameters = Json::array();
    for (const Parameter& parameter : operation.parameters) parameters.push_back(as_json(parameter));
    return {{"name", operation.name},
            {"description", operation.description},
            {"input", name_of(operation.operand)},
            {"result", result_name(operation)},
            {"parameters", parameters}};
}

}  // namespace

std::string list_text() {
    size_t width = 0;
    for (const Operation& operation : operations()) {
        width = std::max(width, operation.name.size());
        for (const Parameter& parameter : operation.parameters)
            width = std::max(width, usage(parameter).size());
    }
    const auto line = [&](std::string first, const std::string& rest) {
        first.resize(width + 2, ' ');
        return first + rest + "\n";
    };
    std::string text;
    for (const Operation& operation : operations()) {
        text += line(operation.name, operation.description + " (" + name_of(operation.operand) + " -> " +
                                         result_name(operation) + ")");
        for (const Parameter& parameter : operation.parameters)
            text += line(usage(parameter), described(parameter) + (parameter.required ? "; required" : ""));
    }
    return text;
}

std::string list_json() {
    std::string text;
    for (const Operation& operation : operations())
        text += (text.empty() ? "[\n" : ",\n") + as_json(operation).dump();
    return text + "\n]\n";
}

void add_list(CLI::App& app, ListOptions& options) {
    app.add_flag("--json", options.json, "As JSON, one operation a line");
}

void list(const ListOptions& options) {
    print(options.json ? list_json() : list_text());
}

}  // namespace docprep
