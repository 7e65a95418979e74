#include "cli/usage_error.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <vector>

#include "cli/near_miss.h"

namespace docprep {

namespace {

namespace fs = std::filesystem;

/// The command whose options were parsed last.
const CLI::App& innermost(const CLI::App& app) {
    const std::vector<CLI::App*> parsed = app.get_subcommands();
    return parsed.empty() ? app : innermost(*parsed[0]);
}

std::string program_of(const CLI::App& app) {
    const std::string above = app.get_parent() ? program_of(*app.get_parent()) + " " : "";
    return above + app.get_name();
}

bool ends_as_a_file_does(const std::string& argument) {
    const std::string ending = fs::path(argument).extension().string();
    const auto is_letter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; };
    return ending.size() > 1 && std::any_of(ending.begin(), ending.end(), is_letter) &&
           argument.find('=') == std::string::npos;
}

bool is_a_file(const std::string& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

/// The argument that was meant as a file although it begins with a dash; empty when there is none.
std::string file_with_a_dash(const std::vector<std::string>& left_over, int argc, const char* const* argv) {
    for (int k = 1; k < argc && std::string(argv[k]) != "--"; ++k)
        if (argv[k][0] == '-' && argv[k][1] != '\0' && is_a_file(argv[k])) return argv[k];
    for (const std::string& argument : left_over)
        if (argument[0] == '-' && ends_as_a_file_does(argument)) return argument;
    return "";
}

/// What an option that does not exist is mistyped for; empty when nothing is near.
std::string mistyped(const CLI::App& app, const std::vector<std::string>& left_over) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    for (const std::string& argument : left_over) {
        if (argument.rfind("--", 0) != 0 || argument == "--") continue;
        const std::string option = argument.substr(0, argument.find('='));
        const std::string meant = suggestion(option, names);
        if (!meant.empty()) return std::string("'").append(option).append("' is not an option").append(meant);
    }
    return "";
}

}  // namespace

std::string explained(const CLI::App& app, const CLI::ParseError& error, int argc, const char* const* argv) {
    const CLI::App& command = innermost(app);
    const std::vector<std::string> left_over = command.remaining();
    const std::string file = file_with_a_dash(left_over, argc, argv);
    if (!file.empty())
        return "'" + file + "' begins with a dash and is taken for an option; a file of that name is './" +
               file + "', or stands after '--'";
    std::string what = mistyped(command, left_over);
    if (what.empty()) what = error.what();
    return what + " (" + program_of(command) + " --help shows the usage)";
}

}  // namespace docprep
