// Internal: images turned by quarter turns and mirrored.
#ifndef ORVEX_991_ALGORITHMS_QUARTER_TURN_H
#define ORVEX_991_ALGORITHMS_QUARTER_TURN_H

#include "cv_mat.h"
#include "kernels/kernels.h"

namespace orvex_cv_991 {

/// Fills `out` with `src`, mirrored left-right if so wanted and then turned clockwise.
/// @param src    not empty, its pixels known to be readable
/// @param turns  0 .. 3
/// @param out    created with the extents that result, not aliasing src
void turn_image(const Mat<unsigned char>& src, int turns, bool mirrored, Isa isa, Mat<unsigned char>& out);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_QUARTER_TURN_H
