#include "commands/command_text.h"

#include <CLI/CLI.hpp>

#include "cli/unknown_name.h"

namespace docprep {

namespace {

std::vector<std::string> choices_of(CLI::Option& option) {
    std::vector<std::string> choices;
    option.add_result("?");
    try {
        option.run_callback();
    } catch (const UnknownName& error) {
        choices = error.names();
    } catch (const CLI::Error&) {  // takes no names
    }
    option.clear();
    return choices;
}

OptionText option_text(CLI::Option& option) {
    OptionText text;
    if (option.get_positional()) text.positional = option.get_name(true, false);
    for (const std::string& name : option.get_snames()) text.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) text.names.push_back("--" + name);
    text.description = option.get_description();
    text.required = option.get_required();
    if (option.get_items_expected_max() == 0) return text;  // a flag
    text.value = option.get_type_name();
    text.choices = choices_of(option);
    return text;
}

CommandText read(CLI::App& app, const std::string& name, const std::string& above) {
    CommandText text;
    text.name = name;
    text.program = app.get_name();
    if (!above.empty()) text.program.insert(0, above + " ");
    text.description = app.get_description();
    text.help = app.help(above);
    for (CLI::Option* option : app.get_options([](const CLI::Option*) { return true; }))
        text.options.push_back(option_text(*option));
    for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        text.commands.push_back(read(*command, command->get_name(), text.program));
    return text;
}

}  // namespace

CommandText command_text(CLI::App& app, const std::string& name) {
    return read(app, name, "");
}

}  // namespace docprep
