// The convex hull of points and the smallest rectangle around them.
// prints: hull: (0,30) (40,0) (70,40) (30,70)
// prints: smallest rectangle: 50 x 50 around (35.0, 35.0)
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

int main() {
    orvex_991::vector<Point> points;
    for (int i = 0; i <= 10; ++i)  // a square of 50 x 50, turned: 11 x 11 points 5 apart
        for (int k = 0; k <= 10; ++k) points.push_back(Point(4 * i + 3 * k, 30 - 3 * i + 4 * k));

    orvex_991::vector<Point> hull;
    CImgproc::convexHull(points, hull);
    std::printf("hull:");
    for (int i = 0; i < hull.size(); ++i) std::printf(" (%d,%d)", hull[i].x, hull[i].y);

    const RotatedRect box = CImgproc::minAreaRect(points);
    if (box.pts.size() != 4) return 1;  // fewer than 3 points on the hull have no rectangle
    std::printf("\nsmallest rectangle: %d x %d around (%.1f, %.1f)\n", box.width, box.height,
                static_cast<double>(box.center.x), static_cast<double>(box.center.y));
}
