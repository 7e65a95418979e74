// Parts of the driver of containers.
#ifndef ORVEX_FUZZ_CONTAINERS_H
#define ORVEX_FUZZ_CONTAINERS_H

#include "reader.h"

namespace fuzzing {

/// Actions on arrays, of numbers or of arrays.
void vectors(Reader& reader, bool nested);

/// Actions on matrices of bytes (0), floats (1) or ints (2).
void matrices(Reader& reader, int element);

void strings(Reader& reader);
void forest(Reader& reader);

}  // namespace fuzzing

#endif  // ORVEX_FUZZ_CONTAINERS_H
