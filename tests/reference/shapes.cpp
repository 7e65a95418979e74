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

RotatedRect minAreaRect(const List<Point>& points, const Calipers& calipers) {
    RotatedRect rect;
    List<Point32f> c = calipers(points);
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

RotatedRect minAreaRect(const Image<Byte>& mat, const Calipers& calipers) {
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
    RotatedRect rect = minAreaRect(hull, calipers);
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
