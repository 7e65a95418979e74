// What docprep says when it is done.
#ifndef DOCPREP_STANDARD_OUTPUT_H
#define DOCPREP_STANDARD_OUTPUT_H

#include <string>

#include "base/bytes.h"

namespace docprep {

/// Writes text or bytes to standard output, all of it.
/// @throws Failure when that does not take it
void print(const std::string& text);
void print(const Bytes& bytes);

}  // namespace docprep

#endif  // DOCPREP_STANDARD_OUTPUT_H
