#include "commands/help.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/near_miss.h"
#include "commands/topics.h"
#include "output/standard_output.h"

namespace docprep {

namespace {

/// The names and the value, as in "-o,--output FILE".
std::string usage(const OptionText& option) {
    std::string text;
    for (const std::string& name : option.names) text += (text.empty() ? "" : ",") + name;
    return option.value.empty() ? text : text + " " + option.value;
}

std::string described(const Topic& topic) {
    std::string text = topic.title + "\n";
    for (const std::string& paragraph : topic.paragraphs) text += "\n" + paragraph + "\n";
    size_t width = 0;
    for (const auto& entry : topic.entries) width = std::max(width, entry.first.size());
    text += "\n";
    for (const auto& [word, meaning] : topic.entries) {
        text.append("  ").append(word).append(width + 2 - word.size(), ' ').append(meaning).append("\n");
    }
    return text;
}

bool has_name(const OptionText& option, const std::string& word) {
    return std::any_of(option.names.begin(), option.names.end(), [&](const std::string& name) {
        return name == word || name.substr(name.find_first_not_of('-')) == word;
    });
}

/// The options of this name, of a command and those below it: "docprep warp --angle NUMBER", then the text.
std::string options_named(const std::string& word, const CommandText& command) {
    std::string text;
    for (const OptionText& option : command.options)
        if (has_name(option, word))
            text += command.program + " " + usage(option) + "\n    " + option.description + "\n";
    for (const CommandText& below : command.commands) text += options_named(word, below);
    return text;
}

std::string commands_named(const std::string& word, const CommandText& command) {
    std::string text;
    for (const CommandText& below : command.commands) {
        if (below.name == word) text += (text.empty() ? "" : "\n") + below.help;
        const std::string further = commands_named(word, below);
        if (!further.empty()) text += (text.empty() ? "" : "\n") + further;
    }
    return text;
}

void add_words(const CommandText& command, std::vector<std::string>& words) {
    for (const CommandText& below : command.commands) {
        words.push_back(below.name);
        add_words(below, words);
    }
    for (const OptionText& option : command.options)
        for (const std::string& name : option.names) words.push_back(name);
}

std::string overview(const CommandText& program) {
    std::string text =
        program.help +
        "\ndocprep help WORD tells about a command, an option, an operation (docprep list) or one of\n ";
    for (const Topic& topic : topics()) text += " " + topic.name;
    return text + "\n";
}

}  // namespace

std::string help_on(const std::string& word, const CommandText& program) {
    std::string text = word == program.program ? program.help : commands_named(word, program);
    for (const Topic& topic : topics())
        if (topic.name == word) text += (text.empty() ? "" : "\n") + described(topic);
    const std::string options = options_named(word, program);
    if (!options.empty()) text += (text.empty() ? "" : "\n") + options;
    return text;
}

std::vector<std::string> help_words(const CommandText& program) {
    std::vector<std::string> words = {program.program};
    for (const Topic& topic : topics()) words.push_back(topic.name);
    add_words(program, words);
    std::vector<std::string> once;
    for (const std::string& word : words)
        if (std::find(once.begin(), once.end(), word) == once.end()) once.push_back(word);
    return once;
}

void add_help(CLI::App& app, HelpOptions& options) {
    app.add_option("word", options.word,
                   "A command, an operation, an option or a topic; an overview by default");
    app.allow_extras();  // options, with their dashes
    app.callback([&app, &options] {
        const std::vector<std::string> rest = app.remaining();
        if (rest.size() > (options.word.empty() ? 1u : 0u)) throw CLI::ExtrasError(rest);
        if (!rest.empty()) options.word = rest[0];
    });
}

void help(const HelpOptions& options, const CommandText& program) {
    if (options.word.empty()) return print(overview(program));
    std::string text = help_on(options.word, program);
    if (text.empty())
        throw CLI::ValidationError("there is no help on '" + options.word + "'" +
                                   suggestion(options.word, help_words(program)));
    print(text);
}

}  // namespace docprep
