// What docprep says when it is done.
#ifndef DOCPREP_STANDARD_OUTPUT_H
#define DOCPREP_STANDARD_OUTPUT_H

#include <string>

namespace docprep {

/// Writes text to standard output, all of it.
/// @throws Failure when that does not take it
void print(const std::string& text);

}  // namespace docprep

#endif  // DOCPREP_STANDARD_OUTPUT_H
