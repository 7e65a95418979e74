// The cases, by families. Inputs come from seeded numbers, no two of them drawn in one list of
// arguments, whose order of evaluation is the compiler's. Coefficients are binary fractions, so that
// no arithmetic of the test's own rounds.
#ifndef ORVEX_TESTS_GOLDEN_CASES_H
#define ORVEX_TESTS_GOLDEN_CASES_H

#include "recorder.h"

namespace golden {

/// Every operation of support/operations.h over every content, width, number of channels, and odd matrix.
void record_operations(const Recorder& recorder);

/// Operations on images with other parameters, masks and destinations than those.
void record_parameters(const Recorder& recorder);

/// Operations on points, rectangles and numbers.
void record_geometry(const Recorder& recorder);

/// Matrices, vectors, forests, sorting.
void record_values(const Recorder& recorder);

}  // namespace golden

#endif  // ORVEX_TESTS_GOLDEN_CASES_H
