#include "base/fp_strict.h"
//
#include "cv_rotating_calipers.h"

#include <cstdint>
#include <vector>

#include "algorithms/convex_hull.h"
#include "base/numeric.h"

namespace orvex_cv_991 {

namespace {

struct Vector {
    int64_t x, y;  // magnitudes below 2^32
};

Vector between(const Point& a, const Point& b) {
    return {static_cast<int64_t>(b.x) - a.x, static_cast<int64_t>(b.y) - a.y};
}

double dot(const Vector& a, const Vector& b) {
    return static_cast<double>(a.x) * static_cast<double>(b.x) +
           static_cast<double>(a.y) * static_cast<double>(b.y);
}

double cross(const Vector& a, const Vector& b) {
    return static_cast<double>(a.x) * static_cast<double>(b.y) -
           static_cast<double>(a.y) * static_cast<double>(b.x);
}

// The signs of the dot and the cross product, exact, so that the walks below end.
bool goes_along(const Vector& direction, const Vector& step) {
    return ExactProduct(-direction.y, step.y) < ExactProduct(direction.x, step.x);
}
bool turns_left(const Vector& direction, const Vector& step) {
    return ExactProduct(direction.y, step.x) < ExactProduct(direction.x, step.y);
}

/// A convex polygon that turns strictly left at every corner and goes round once, from its least point
/// by x, then y.
bool is_hull(const std::vector<Point>& points) {
    const size_t n = points.size();
    if (n < 3) return false;
    bool falling = false;  // behind the corner with the largest x
    for (size_t i = 0; i < n; ++i) {
        const Point &a = points[i], &b = points[(i + 1) % n], &c = points[(i + 2) % n];
        if (!turns_left(between(a, b), between(b, c))) return false;
        const bool rises = a.x < b.x || (a.x == b.x && a.y < b.y);
        if (rises && falling) return false;
        falling = !rises;
    }
    return true;
}

/// A rectangle along edge `edge` of the hull: extents along the edge, measured from its
/// first point, and across.
struct Calipers {
    size_t edge = 0;
    double least = 0, most = 0, across = 0;
};

}  // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers rely on the signature
orvex_991::vector<Point32f> RotatingCalipers::getMinimumBoundingRectangle(orvex_991::vector<Point> points) {
    std::vector<Point> hull(points.data, points.data + points.size());
    if (!is_hull(hull)) hull = exact_convex_hull(points);
    orvex_991::vector<Point32f> corners;
    const size_t n = hull.size();
    if (n < 3) return corners;
    const auto at = [&](size_t i) -> const Point& { return hull[i % n]; };
    const auto edge_vector = [&](size_t i) { return between(at(i), at(i + 1)); };

    // Three more calipers run ahead of the edge: the points furthest along it, furthest
    // across, and furthest back.
    Calipers best;
    double best_area = -1;
    size_t most = 1, across = 1, least = 1;
    for (size_t edge = 0; edge < n; ++edge) {
        const Vector direction = edge_vector(edge);
        const Vector reverse = {-direction.x, -direction.y};
        if (most < edge + 1) most = edge + 1;
        while (goes_along(direction, edge_vector(most))) ++most;
        if (across < most) across = most;
        while (turns_left(direction, edge_vector(across))) ++across;
        if (least < across) least = across;
        while (goes_along(reverse, edge_vector(least))) ++least;
        const double squared_length = dot(direction, direction);
        const Calipers here = {edge, dot(direction, between(at(edge), at(least))),
                               dot(direction, between(at(edge), at(most))),
                               cross(direction, between(at(edge), at(across)))};
        // Every extent carries the edge's length as a factor once.
        const double area = (here.most - here.least) / squared_length * here.across;
        if (best_area < 0 || area < best_area) {
            best_area = area;
            best = here;
        }
    }

    const Point& origin = at(best.edge);
    const Vector direction = edge_vector(best.edge);
    const double x = static_cast<double>(direction.x), y = static_cast<double>(direction.y);
    const double squared_length = dot(direction, direction);
    const auto corner = [&](double along, double across_edge) {
        corners.push_back(
            Point32f(static_cast<float>(origin.x + (along * x - across_edge * y) / squared_length),
                     static_cast<float>(origin.y + (along * y + across_edge * x) / squared_length)));
    };
    corner(best.least, 0);
    corner(best.most, 0);
    corner(best.most, best.across);
    corner(best.least, best.across);
    return corners;
}

}  // namespace orvex_cv_991
