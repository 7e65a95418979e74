// Parts of the driver of warps.
#ifndef ORVEX_FUZZ_WARP_MATRICES_H
#define ORVEX_FUZZ_WARP_MATRICES_H

#include "reader.h"

namespace fuzzing {

/// Mostly 2 x 3, often as of a resize or a turn.
orvex_cv_991::Mat<float> any_matrix(Reader& reader);

/// A matrix is made.
void rotation(Reader& reader);

/// A point and a rectangle go through a matrix, a rectangle into an image.
void points_and_rectangles(Reader& reader);

}  // namespace fuzzing

#endif  // ORVEX_FUZZ_WARP_MATRICES_H
