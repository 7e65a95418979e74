#ifndef ORVEX_991_CV_ROTATING_CALIPERS_H
#define ORVEX_991_CV_ROTATING_CALIPERS_H

#include "cv_geometry.h"

namespace orvex_cv_991 {

/// Minimum-area rectangles by rotating calipers.
class RotatingCalipers {
 public:
    /// The four corners of the rectangle of least area that holds all points.
    ///
    /// One of its sides lies along an edge of the convex hull; of several rectangles of equal area, that of
    /// the first edge is taken. Corners 0 and 1 lie on that edge in the hull's direction, 2 and 3 follow
    /// around the rectangle. Computed in double precision, rounded to single at the end.
    /// @param points  any order, repetitions allowed
    /// @return 4 corners, or none for fewer than 3 distinct hull points
    /// @throws std::bad_alloc without memory for the lists
    /// @cost O(n) for a convex polygon in the order of CImgproc::convexHull, else O(n log n) to find it
    static orvex_991::vector<Point32f> getMinimumBoundingRectangle(orvex_991::vector<Point> points);
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_CV_ROTATING_CALIPERS_H
