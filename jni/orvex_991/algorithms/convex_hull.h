// Internal: convex hulls by monotone chains.
#ifndef ORVEX_991_ALGORITHMS_CONVEX_HULL_H
#define ORVEX_991_ALGORITHMS_CONVEX_HULL_H

#include <vector>

#include "cv_geometry.h"
#include "util_vector.h"

namespace orvex_cv_991 {

/// Both give the corners of the convex hull: first the one with the smallest x, then y; the chain of smaller
/// y comes before the other. Points on edges are left out, and no corner comes twice. O(n log n). `points`
/// may come in any order and repeat.

/// The hull with products in wrapping 32-bit arithmetic: deliberately wrong where coordinates differ by more
/// than some 32768, as callers rely on (test: products_wrap_in_32_bits).
std::vector<Point> wrapping_convex_hull(const orvex_991::vector<Point>& points);

/// The hull in exact arithmetic.
std::vector<Point> exact_convex_hull(const orvex_991::vector<Point>& points);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_CONVEX_HULL_H
