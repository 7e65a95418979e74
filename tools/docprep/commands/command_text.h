// What the command line takes, read off the declarations that parse it: help, the man page and completion are
// made from this and cannot say anything else.
#ifndef DOCPREP_COMMAND_TEXT_H
#define DOCPREP_COMMAND_TEXT_H

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace docprep {

struct OptionText {
    std::string positional;          ///< its name when it stands by its place
    std::vector<std::string> names;  ///< "-o", "--output"; may be empty for what stands by its place
    std::string value;               ///< "FILE", "NUMBER" ...; empty for what takes none
    std::vector<std::string>
        choices;  ///< the names that it takes as value; empty when it takes anything else
    std::string description;
    bool required = false;
};

struct CommandText {
    std::string name;     ///< "warp"; empty for the program itself
    std::string program;  ///< as the user calls it: "docprep warp"
    std::string description;
    std::vector<OptionText> options;
    std::vector<CommandText> commands;  ///< below it
    std::string help;                   ///< what its --help prints
};

/// Reads an app that has not parsed anything. Its options are tried with a value that none of them takes, to
/// learn the names which they do take.
CommandText command_text(CLI::App& app, const std::string& name);

}  // namespace docprep

#endif  // DOCPREP_COMMAND_TEXT_H
