// Internal: thresholds relative to the mean of a square window.
#ifndef ORVEX_991_ALGORITHMS_ADAPTIVE_THRESHOLD_H
#define ORVEX_991_ALGORITHMS_ADAPTIVE_THRESHOLD_H

#include "cv_mat.h"
#include "kernels/kernels.h"

namespace orvex_cv_991 {

/// out(r, c) is 255 where src(r, c) is above the mean of the window around it plus `offset`, else 0; with
/// `inverse` the other way round. The window covers the rows and columns up to `half` away, cut at the
/// image's edges. Sums are taken in 32 bits and wrap, means and comparison are in double precision.
///
/// O(log half) operations on whole rows a row; memory is about two rows a row of the window.
/// @param src   1 channel, its pixels known to be readable
/// @param half  negative: windows of no pixels, over which nothing is bright
/// @param out   rows * cols bytes, wholly written, not aliasing src
void threshold_by_window(const Mat<unsigned char>& src, int half, double offset, bool inverse, Isa isa,
                         unsigned char* out);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_ADAPTIVE_THRESHOLD_H
