#include "algorithms/convex_hull.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "base/key_sort.h"
#include "base/numeric.h"

namespace orvex_cv_991 {

namespace {

/// A point as one number, ordered by x, then y.
uint64_t sort_key(const Point& p) {
    return uint64_t{ordered_bits(p.x)} << 32 | ordered_bits(p.y);
}

Point point_of(uint64_t key) {
    return Point(from_ordered_bits(static_cast<uint32_t>(key >> 32)),
                 from_ordered_bits(static_cast<uint32_t>(key)));
}

/// The two chains over points in order of x, then y.
/// @param pops  pops(a, b, p): b is no corner between a and p
template <class Pops>
std::vector<Point> monotone_chain(std::vector<uint64_t>& keys, Pops pops) {
    sort_keys(keys, 0);
    const size_t n = keys.size();
    std::vector<Point> points(n);
    std::transform(keys.begin(), keys.end(), points.begin(), point_of);
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

/// The octagon of the points that lie furthest out in eight directions. What lies inside it is no
/// corner of the hull.
class Octagon {
 public:
    Octagon(const Point* points, size_t n) {
        Point left = points[0], right = left, top = left, bottom = left;
        Point top_left = left, top_right = left, bottom_left = left, bottom_right = left;
        for (size_t i = 1; i < n; ++i) {
            const Point& p = points[i];
            if (p.x < left.x) left = p;
            if (p.x > right.x) right = p;
            if (p.y < top.y) top = p;
            if (p.y > bottom.y) bottom = p;
            if (sum(p) < sum(top_left)) top_left = p;
            if (sum(p) > sum(bottom_right)) bottom_right = p;
            if (difference(p) > difference(top_right)) top_right = p;
            if (difference(p) < difference(bottom_left)) bottom_left = p;
        }
        width_ = int64_t{right.x} - left.x;
        height_ = int64_t{bottom.y} - top.y;
        // Within the four on the diagonals lies a box.
        left_ = std::max(top_left.x, bottom_left.x);
        right_ = std::min(top_right.x, bottom_right.x);
        top_ = std::max(top_left.y, top_right.y);
        bottom_ = std::min(bottom_left.y, bottom_right.y);
        for (const Point& corner :
             {left, top_left, top, top_right, right, bottom_right, bottom, bottom_left, left})
            if (sides_ < 0 || !(corner == corners_[sides_])) corners_[++sides_] = corner;
    }

    /// Whether no product of a difference of columns and one of rows exceeds 32 bits.
    bool products_fit() const {
        constexpr int64_t kMost = std::numeric_limits<int>::max();
        return width_ <= kMost && height_ <= kMost && width_ * height_ <= kMost;
    }

    /// Whether p lies inside, not on the border. Needs products that fit.
    bool contains(const Point& p) const {
        if (p.x > left_ && p.x < right_ && p.y > top_ && p.y < bottom_) return true;
        for (int k = 0; k < sides_; ++k) {
            const Point &a = corners_[k], &b = corners_[k + 1];
            if (int64_t{b.x - a.x} * (p.y - a.y) <= int64_t{b.y - a.y} * (p.x - a.x)) return false;
        }
        return sides_ > 0;
    }

 private:
    static int64_t sum(const Point& p) { return int64_t{p.x} + p.y; }
    static int64_t difference(const Point& p) { return int64_t{p.x} - p.y; }

    int64_t width_, height_;
    int left_, right_, top_, bottom_;
    Point corners_[9];  // around from the leftmost and back to it
    int sides_ = -1;
};

}  // namespace

std::vector<Point> wrapping_convex_hull(const orvex_991::vector<Point>& points) {
    if (points.size() == 0) return {};
    const size_t n = static_cast<size_t>(points.size());
    std::vector<uint64_t> keys;
    keys.reserve(n);
    const Octagon octagon(points.data, n);
    const bool fit = octagon.products_fit();  // where they wrap, points inside have a say
    for (size_t i = 0; i < n; ++i)
        if (!fit || !octagon.contains(points.data[i])) keys.push_back(sort_key(points.data[i]));
    return monotone_chain(keys, [](const Point& a, const Point& b, const Point& p) {
        return wrap_mul(wrap_sub(p.y, a.y), wrap_sub(b.x, a.x)) <=
               wrap_mul(wrap_sub(p.x, a.x), wrap_sub(b.y, a.y));
    });
}

std::vector<Point> exact_convex_hull(const orvex_991::vector<Point>& points) {
    std::vector<uint64_t> keys(static_cast<size_t>(points.size()));
    std::transform(points.data, points.data + keys.size(), keys.begin(), sort_key);
    return monotone_chain(keys, [](const Point& a, const Point& b, const Point& p) {
        const auto difference = [](int x, int y) { return static_cast<int64_t>(x) - y; };
        return !(ExactProduct(difference(p.x, a.x), difference(b.y, a.y)) <
                 ExactProduct(difference(p.y, a.y), difference(b.x, a.x)));
    });
}

}  // namespace orvex_cv_991
