#include "shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace reference {

namespace {

int difference(int a, int b) {
    return wrapping(static_cast<int64_t>(a) - b);
}

bool before(Point a, Point b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

}  // namespace

int cross(Point a, Point b, Point c) {
    const int first = wrapping_product(difference(c.y, a.y), difference(b.x, a.x));
    const int second = wrapping_product(difference(c.x, a.x), difference(b.y, a.y));
    return difference(first, second);
}

void convexHull(const List<Point>& points, List<Point>& hull) {
    hull.clear();
    const int n = points.size();
    List<Point> sorted = points;
    for (int i = 0; i < n - 1; ++i)
        for (int j = 0; j < n - 1 - i; ++j)
            if (before(sorted[j + 1], sorted[j])) std::swap(sorted[j], sorted[j + 1]);
    List<Point> chain;
    chain.resize(2 * n);
    const auto pops = [](Point a, Point b, Point p) {
        return wrapping_product(difference(p.y, a.y), difference(b.x, a.x)) <=
               wrapping_product(difference(p.x, a.x), difference(b.y, a.y));
    };
    int k = 0;
    for (int i = 0; i < n; ++i) {
        while (k >= 2 && pops(chain[k - 2], chain[k - 1], sorted[i])) --k;
        chain[k++] = sorted[i];
    }
    const int t = k;
    for (int i = n - 2; i >= 0; --i) {
        while (k > t && pops(chain[k - 2], chain[k - 1], sorted[i])) --k;
        chain[k++] = sorted[i];
    }
    for (int j = 0; j < k; ++j) {
        bool known = false;
        for (const Point& corner : hull.items)
            known = known || (corner.x == chain[j].x && corner.y == chain[j].y);
        if (!known) hull.push_back(chain[j]);
    }
    print_line("convexhull done (#ms)");
}

namespace {

// Corners of the hull by exact products, from the least point by x, then y, and in the order in which
// every next corner lies to the left (y pointing up). Gift wrapping.
std::vector<Point> exact_hull(const List<Point>& points) {
    std::vector<Point> hull;
    if (points.size() == 0) return hull;
    Point corner = points[0];
    for (const Point& point : points.items)
        if (before(point, corner)) corner = point;
    const Point first = corner;
    do {
        hull.push_back(corner);
        Point next = corner;
        for (const Point& point : points.items) {
            const int64_t ax = int64_t{next.x} - corner.x, ay = int64_t{next.y} - corner.y;
            const int64_t bx = int64_t{point.x} - corner.x, by = int64_t{point.y} - corner.y;
            const int64_t turn = ax * by - ay * bx;
            // To the right of the best so far, or further out in its direction.
            if (turn < 0 || (turn == 0 && ax * ax + ay * ay < bx * bx + by * by)) next = point;
        }
        corner = next;
    } while (corner.x != first.x || corner.y != first.y);
    return hull;
}

}  // namespace

List<Point32f> calipers(const List<Point>& points) {
    const std::vector<Point> hull = exact_hull(points);
    const size_t n = hull.size();
    List<Point32f> corners;
    if (n < 3) return corners;
    double best_area = 0;
    for (size_t edge = 0; edge < n; ++edge) {
        const Point a = hull[edge], b = hull[(edge + 1) % n];
        const int64_t dx = int64_t{b.x} - a.x, dy = int64_t{b.y} - a.y;
        // The corners furthest back, on, and across; of several the first round the hull from the edge's end.
        struct Extreme {
            int64_t reach = INT64_MIN;
            double along = 0, across = 0;
        } least, most, furthest;
        for (size_t k = 1; k <= n; ++k) {
            const Point c = hull[(edge + k) % n];
            const int64_t cx = int64_t{c.x} - a.x, cy = int64_t{c.y} - a.y;
            const double x = static_cast<double>(dx), y = static_cast<double>(dy);
            const double xx = x * static_cast<double>(cx), yy = y * static_cast<double>(cy);
            const double xy = x * static_cast<double>(cy), yx = y * static_cast<double>(cx);
            const double along = xx + yy, across = xy - yx;
            if (dx * cx + dy * cy > most.reach) most = {dx * cx + dy * cy, along, across};
            if (-(dx * cx + dy * cy) > least.reach) least = {-(dx * cx + dy * cy), along, across};
            if (dx * cy - dy * cx > furthest.reach) furthest = {dx * cy - dy * cx, along, across};
        }
        const double xx = static_cast<double>(dx) * static_cast<double>(dx);
        const double yy = static_cast<double>(dy) * static_cast<double>(dy);
        const double squared = xx + yy;
        const double extent = most.along - least.along;
        const double length = extent / squared;
        const double area = length * furthest.across;
        if (edge > 0 && !(area < best_area)) continue;
        best_area = area;
        corners.clear();
        const auto corner = [&](double along, double across) {
            const double along_x = along * static_cast<double>(dx),
                         across_y = across * static_cast<double>(dy);
            const double along_y = along * static_cast<double>(dy),
                         across_x = across * static_cast<double>(dx);
            const double x_part = (along_x - across_y) / squared, y_part = (along_y + across_x) / squared;
            corners.push_back({static_cast<float>(a.x + x_part), static_cast<float>(a.y + y_part)});
        };
        corner(least.along, 0);
        corner(most.along, 0);
        corner(most.along, furthest.across);
        corner(least.along, furthest.across);
    }
    return corners;
}

RotatedRect minAreaRect(const List<Point>& points, const Calipers& calipers_of) {
    RotatedRect rect;
    List<Point32f> c = calipers_of(points);
    if (c.size() != 4) return rect;
    const float sum_x = ((c[0].x + c[1].x) + c[2].x) + c[3].x;
    const float sum_y = ((c[0].y + c[1].y) + c[2].y) + c[3].y;
    rect.center = {sum_x * 0.25f, sum_y * 0.25f};
    const auto length = [](Point32f a, Point32f b) {
        const float dx = a.x - b.x, dy = a.y - b.y;
        const float xx = dx * dx, yy = dy * dy;
        return to_int(sqrtf(xx + yy));
    };
    rect.width = length(c[0], c[1]);
    rect.height = length(c[1], c[2]);
    rect.angle = atan2f(c[0].y - c[1].y, c[1].x - c[0].x);
    rect.pts = c;
    return rect;
}

RotatedRect minAreaRect(const Image<Byte>& mat, const Calipers& calipers_of) {
    check(!mat.empty(), "!mat.empty()", "minAreaRect");
    const int n = mat.counted();
    std::vector<Point> foreground;
    for (int y = 0; n >= 1 && y < mat.rows; ++y)
        for (int x = 0; x < mat.cols; ++x)
            if (mat.data.at(static_cast<size_t>(y * mat.cols + x)) != 0) foreground.push_back({x, y});
    const size_t cols = static_cast<size_t>(std::max(mat.cols, 0));
    std::vector<int> top(cols, mat.rows), bottom(cols, 0);
    for (const Point& point : foreground) {
        int& highest = top.at(static_cast<size_t>(point.x));
        int& lowest = bottom.at(static_cast<size_t>(point.x));
        highest = std::min(highest, point.y);
        lowest = std::max(lowest, point.y);
    }
    List<Point> top_chain, bottom_chain;
    for (size_t x = 0; x < cols; ++x) {
        if (top[x] > bottom[x]) continue;
        while (top_chain.size() > 1) {
            const Point last = top_chain[top_chain.size() - 1], other = top_chain[top_chain.size() - 2];
            if (top[x] > last.y) break;
            if (last.y < other.y) break;
            top_chain.items.pop_back();
        }
        top_chain.push_back({static_cast<int>(x), top[x]});
        while (bottom_chain.size() > 1) {
            const Point last = bottom_chain[bottom_chain.size() - 1],
                        other = bottom_chain[bottom_chain.size() - 2];
            if (bottom[x] < last.y) break;
            if (last.y > other.y) break;
            bottom_chain.items.pop_back();
        }
        bottom_chain.push_back({static_cast<int>(x), bottom[x]});
    }
    List<Point> outline = top_chain, hull;
    for (const Point& point : bottom_chain.items) outline.push_back(point);
    convexHull(outline, hull);
    RotatedRect rect = minAreaRect(hull, calipers_of);
    print_line("min area done (#ms)");
    return rect;
}

float calcLineDegree(Point32f p1, Point32f p2) {
    const double pi = 3.141590118408203;
    const float dx = p2.x - p1.x;
    if (dx == 0) return static_cast<float>(1.5707950592041016 * 180 / pi);
    const float dy = p1.y - p2.y;
    double a = atan(static_cast<double>(dy) / static_cast<double>(dx));
    if (a < 0) a += pi;
    return static_cast<float>(a * 180 / pi);
}

float getRotatedRectAngle(const List<Point32f>& pts) {
    check(4 == pts.size(), "4 == rotate_rect.pts.size()", "getRotatedRectAngle");
    const auto squared = [](Point32f a, Point32f b) {
        const float dy = b.y - a.y, dx = b.x - a.x;
        const float yy = dy * dy, xx = dx * dx;
        return yy + xx;
    };
    const float d01 = squared(pts[0], pts[1]), d12 = squared(pts[1], pts[2]);
    const float deg = d01 > d12 ? calcLineDegree(pts[0], pts[1]) : calcLineDegree(pts[2], pts[1]);
    float r;
    if (deg > 90)
        r = 270 - deg;
    else if (deg < 90)
        r = 90 - deg;
    else
        r = 90;
    const float share = r / 180;
    return share * 3.14159f;
}

}  // namespace reference
