// What is said about wrong arguments.
#ifndef DOCPREP_USAGE_ERROR_H
#define DOCPREP_USAGE_ERROR_H

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace docprep {

/// One line: what is wrong, what may have been meant, and which help to read.
/// @param argc, argv  what `app` parsed
std::string explained(const CLI::App& app, const CLI::ParseError& error, int argc, const char* const* argv);

}  // namespace docprep

#endif  // DOCPREP_USAGE_ERROR_H
