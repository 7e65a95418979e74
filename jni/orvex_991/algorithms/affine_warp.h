// Internal: resampling through an affine matrix.
#ifndef ORVEX_991_ALGORITHMS_AFFINE_WARP_H
#define ORVEX_991_ALGORITHMS_AFFINE_WARP_H

#include "cv_mat.h"
#include "kernels/kernels.h"

namespace orvex_cv_991 {

/// A 2 x 3 affine matrix, row-major: (x, y) goes to (m[0] x + m[1] y + m[2], m[3] x + m[4] y + m[5]).
struct Affine {
    float m[6];
};

/// The inverse. Steps are in single precision but for the division by the determinant and the products with
/// its result, which are in double and rounded where they are stored. A singular matrix gives an inverse that
/// maps everything to (0, 0).
Affine inverse(const Affine& forward);

/// Fills `dst` with samples of `src`: output pixel (row, col) is taken at inverse(col, row), interpolated
/// where the 2 x 2 neighbourhood of that point lies inside the source, otherwise copied from the source pixel
/// that holds it, clamped into the image.
/// @param src   its pixels known to be readable
/// @param dst   created, channels as src
/// @param mask  null, or room for one byte a pixel of dst: 1 where interpolated, 0 where copied
void warp_linear(const Mat<unsigned char>& src, Mat<unsigned char>& dst, const Affine& inverse, Isa isa,
                 unsigned char* mask);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_AFFINE_WARP_H
