#ifndef ORVEX_TESTS_REFERENCE_SHAPES_H
#define ORVEX_TESTS_REFERENCE_SHAPES_H

#include <array>
#include <functional>

#include "types.h"

namespace reference {

struct Point32f {
    float x, y;
};
struct RotatedRect {
    List<Point32f> pts;
    Point32f center{0, 0};
    int width = 0, height = 0;
    float angle = 0;
};

int cross(Point a, Point b, Point c);
void convexHull(const List<Point>& points, List<Point>& hull);
/// The rectangle of least area: every edge of the hull against every corner. Coordinates are within
/// -2^30 .. 2^30, both exclusive, so that sums of two products of differences stay within 64 bits.
List<Point32f> calipers(const List<Point>& points);

/// Points to corners; `calipers` or others.
using Calipers = std::function<List<Point32f>(const List<Point>&)>;
RotatedRect minAreaRect(const List<Point>& points, const Calipers& calipers);
RotatedRect minAreaRect(const Image<Byte>& mat, const Calipers& calipers);
float getRotatedRectAngle(const List<Point32f>& pts);
float calcLineDegree(Point32f p1, Point32f p2);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_SHAPES_H
