// docprep help: about a command, an operation, an option or a topic.
#ifndef DOCPREP_HELP_H
#define DOCPREP_HELP_H

#include <string>

#include "commands/command_text.h"

namespace docprep {

struct HelpOptions {
    std::string word;  ///< empty: an overview
};

/// What there is to say about a word, with all of its meanings; empty when it has none. Options may be given
/// without their dashes. `program` is the command without a name, with the others below it.
std::string help_on(const std::string& word, const CommandText& program);

/// Every word that help_on() knows.
std::vector<std::string> help_words(const CommandText& program);

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_help(CLI::App& app, HelpOptions& options);

/// Runs the command.
/// @throws CLI::ValidationError for a word without a meaning; Failure
void help(const HelpOptions& options, const CommandText& program);

}  // namespace docprep

#endif  // DOCPREP_HELP_H
