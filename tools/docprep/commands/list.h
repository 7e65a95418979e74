// docprep list: the operations that docprep op knows.
#ifndef DOCPREP_LIST_H
#define DOCPREP_LIST_H

#include <string>

namespace CLI {
class App;
}

namespace docprep {

struct ListOptions {
    bool json = false;
};

/// All operations with their parameters, aligned.
std::string list_text();

/// The same as an array with one object an operation and line: "name", "description", "input" ("none", "any",
/// "gray", "binary", "colour" or "frame"), "result" ("picture" or "numbers") and "parameters", each with
/// "name", "type", "required", "meaning" and, where it has them, "least", "most", "choices" and "default".
std::string list_json();

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_list(CLI::App& app, ListOptions& options);

/// Runs the command.
/// @throws Failure
void list(const ListOptions& options);

}  // namespace docprep

#endif  // DOCPREP_LIST_H
