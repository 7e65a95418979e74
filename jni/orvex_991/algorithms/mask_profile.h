// Internal: the outline of a mask.
#ifndef ORVEX_991_ALGORITHMS_MASK_PROFILE_H
#define ORVEX_991_ALGORITHMS_MASK_PROFILE_H

#include "cv_geometry.h"
#include "cv_mat.h"
#include "kernels/kernels.h"
#include "util_vector.h"

namespace orvex_cv_991 {

/// Corners of the convex hull of a mask's foreground (not 0), left and right ones in turn of rows: its hull
/// is the mask's. A few more points may lie among them, and one may come twice.
///
/// Looks at each row from both ends up to its foreground. Memory is a few words a row.
/// @param mask  the first rows * cols bytes are read as one channel and are known to be readable; none
///              where the product wraps below 1. Deliberate: a negative number of rows makes every
///              column reach from there to row 0 (test: a_mask_of_negative_rows_reaches_up_to_row_0)
orvex_991::vector<Point> outline_points(const Mat<unsigned char>& mask, Isa isa);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_MASK_PROFILE_H
