// Internal: the upper and lower outline of a mask.
#ifndef ORVEX_991_MASK_PROFILE_H
#define ORVEX_991_MASK_PROFILE_H

#include <vector>

#include "cv_geometry.h"
#include "cv_kernels.h"
#include "cv_mat.h"

namespace orvex_cv_991 {

/// Points of a mask's foreground (not 0) with the mask's convex hull: of every column the topmost pixel, then
/// of every column the lowest, each list without points that lie no further out than both their neighbours.
///
/// One pass; memory is a few words a column.
/// @param mask  the first rows * cols bytes are read as one channel and are known to be readable
std::vector<Point> outline_points(const Mat<unsigned char>& mask, Isa isa);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_MASK_PROFILE_H
