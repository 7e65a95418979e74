#include "commands/man_page.h"

#include <algorithm>
#include <cctype>

#include "commands/operations.h"
#include "commands/topics.h"

namespace docprep {

namespace {

/// Text as it stands in a line that is no request. Dashes of options are minus signs, which can be copied.
std::string escaped(const std::string& text) {
    std::string result;
    bool in_option = false;
    for (size_t k = 0; k < text.size(); ++k) {
        const char c = text[k];
        if (k == 0 || text[k - 1] == ' ' || text[k - 1] == ',') in_option = c == '-';
        if (c == '\\')
            result += "\\e";
        else if (c == '-' && in_option)
            result += "\\-";
        else if ((c == '.' || c == '\'') && k == 0)
            result += std::string("\\&") + c;
        else
            result += c == '\n' ? ' ' : c;
    }
    return result;
}

/// One argument of a request.
std::string in_quotes(const std::string& text) {
    std::string result = "\"";
    for (const char c : escaped(text)) result += c == '"' ? std::string("\\(dq") : std::string(1, c);
    return result + "\"";
}

std::string line(const std::string& text) {
    return escaped(text) + "\n";
}

std::string bold(const std::string& text) {
    return ".B " + in_quotes(text) + "\n";
}

/// A paragraph with a tag: names in bold, then the value in italics.
std::string tagged(const std::vector<std::string>& names, const std::string& value) {
    std::string tag;
    for (const std::string& name : names) tag += (tag.empty() ? "\\fB" : ", \\fB") + escaped(name) + "\\fR";
    if (!value.empty()) tag += " \\fI" + escaped(value) + "\\fR";
    return ".TP\n" + tag + "\n";
}

bool is_help(const OptionText& option) {
    return std::find(option.names.begin(), option.names.end(), "--help") != option.names.end() ||
           std::find(option.names.begin(), option.names.end(), "--version") != option.names.end();
}

std::string options_of(const CommandText& command) {
    std::string text;
    for (const OptionText& option : command.options) {
        if (is_help(option)) continue;
        text += option.names.empty() ? tagged({option.positional}, "") : tagged(option.names, option.value);
        std::string description = option.description;
        if (option.required && !option.names.empty()) description += " (required)";
        text += line(description);
    }
    return text;
}

std::string usage(const CommandText& command) {
    std::string text =
        command.program + (command.name.empty() || command.commands.empty() ? "" : " NAME") + " [OPTIONS]";
    for (const OptionText& option : command.options)
        if (!option.positional.empty())
            text += option.required ? " " + option.positional : " [" + option.positional + "]";
    return text;
}

std::string operation_text(const Operation& operation) {
    std::string text =
        tagged({operation.name}, "") + line(operation.description + ".") + line(described(operation.operand));
    if (operation.parameters.empty()) return text;
    text += ".RS\n";
    for (const Parameter& parameter : operation.parameters)
        text += tagged({"--" + parameter.name}, type_name(parameter)) +
                line(described(parameter) + (parameter.required ? " (required)" : ""));
    return text + ".RE\n";
}

std::string topic_text(const Topic& topic) {
    std::string heading = topic.title;
    for (char& c : heading) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    std::string text = ".SH " + in_quotes(heading) + "\n";
    for (size_t k = 0; k < topic.paragraphs.size(); ++k)
        text += (k == 0 ? "" : ".PP\n") + line(topic.paragraphs[k]);
    for (const auto& [word, meaning] : topic.entries) text += tagged({word}, "") + line(meaning);
    return text;
}

}  // namespace

std::string man_page(const CommandText& program) {
    std::string text = ".TH DOCPREP 1 \"\" \"docprep " DOCPREP_VERSION "\" \"User Commands\"\n";
    text += ".SH NAME\ndocprep \\- " + line(program.description);
    text += ".SH SYNOPSIS\n" + bold(usage(program));
    for (const CommandText& command : program.commands) text += ".br\n" + bold(usage(command));
    text += ".SH DESCRIPTION\n" + line(program.description + ".");
    text += line("Every command has --help and --version; docprep help WORD tells about one word.");
    text += ".SH OPTIONS\n" + options_of(program);
    text += ".SH COMMANDS\nA command's name comes first; anywhere else, or spelled ./NAME, it is a file.\n";
    for (const CommandText& command : program.commands)
        text +=
            ".SS " + in_quotes(usage(command)) + "\n" + line(command.description + ".") + options_of(command);
    text += ".SH OPERATIONS\n" +
            line(
                "Of docprep op NAME. The picture comes first, where there is one, then the file for "
                "the result; results that are no picture are printed as JSON.");
    for (const Operation& operation : operations()) text += operation_text(operation);
    for (const Topic& topic : topics()) text += topic_text(topic);
    return text;
}

}  // namespace docprep
