#include "convex_hull.h"

#include <algorithm>
#include <cstdint>

#include "cv_numeric.h"

namespace orvex_cv_991 {

namespace {

bool comes_before(const Point& a, const Point& b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

/// @param pops  pops(a, b, p): b is no corner between a and p
template <class Pops>
std::vector<Point> monotone_chain(std::vector<Point>& points, Pops pops) {
    std::sort(points.begin(), points.end(), comes_before);
    const size_t n = points.size();
    std::vector<size_t> chain;  // indices into the sorted points
    chain.reserve(n + 1);
    const auto extend = [&](size_t next, size_t least) {
        while (chain.size() > least &&
               pops(points[chain[chain.size() - 2]], points[chain.back()], points[next]))
            chain.pop_back();
        chain.push_back(next);
    };
    for (size_t i = 0; i < n; ++i) extend(i, 1);
    const size_t first_chain = chain.size();
    for (size_t i = n; i-- > 1;) extend(i - 1, first_chain);

    // Each chain runs through the sorted points, so equal points are neighbours there: marking one of them is
    // enough to find repetitions, which the closing point and arithmetic that wraps bring about.
    std::vector<bool> taken(n, false);
    std::vector<Point> hull;
    for (size_t index : chain) {
        while (index > 0 && points[index - 1] == points[index]) --index;
        if (taken[index]) continue;
        taken[index] = true;
        hull.push_back(points[index]);
    }
    return hull;
}

}  // namespace

std::vector<Point> wrapping_convex_hull(std::vector<Point>& points) {
    return monotone_chain(points, [](const Point& a, const Point& b, const Point& p) {
        return wrap_mul(wrap_sub(p.y, a.y), wrap_sub(b.x, a.x)) <=
               wrap_mul(wrap_sub(p.x, a.x), wrap_sub(b.y, a.y));
    });
}

std::vector<Point> exact_convex_hull(std::vector<Point>& points) {
    return monotone_chain(points, [](const Point& a, const Point& b, const Point& p) {
        const auto difference = [](int x, int y) { return static_cast<int64_t>(x) - y; };
        return !(ExactProduct(difference(p.x, a.x), difference(b.y, a.y)) <
                 ExactProduct(difference(p.y, a.y), difference(b.x, a.x)));
    });
}

}  // namespace orvex_cv_991
