// docprep completion: what shells need to complete docprep's arguments.
#ifndef DOCPREP_COMPLETION_H
#define DOCPREP_COMPLETION_H

#include <string>
#include <vector>

#include "commands/command_text.h"

namespace docprep {

struct CompletionOptions {
    size_t shell = 0;  ///< by its place among shell_names()
};

std::vector<std::string> shell_names();

/// A script for the shell. `program` is the command without a name, with the others below it; words that
/// docprep help knows are completed as well.
std::string completion(size_t shell, const CommandText& program);

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_completion(CLI::App& app, CompletionOptions& options);

}  // namespace docprep

#endif  // DOCPREP_COMPLETION_H
