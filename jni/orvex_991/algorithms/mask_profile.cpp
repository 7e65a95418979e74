#include "algorithms/mask_profile.h"

#include <cstdint>
#include <vector>

#include "base/block.h"

namespace orvex_cv_991 {

namespace {

/// One side of the outline: rows come downward, and a point stays while it is a corner of what came so far.
class Side {
 public:
    /// @param outward  -1 for the left side, 1 for the right one
    Side(int outward, int rows) : outward_(outward) { corners_.reserve(static_cast<size_t>(rows)); }

    void add(const Point& next) {
        while (corners_.size() >= 2 && !turns(corners_[corners_.size() - 2], corners_.back(), next))
            corners_.pop_back();
        corners_.push_back(next);
    }
    const std::vector<Point>& corners() const { return corners_; }

 private:
    // Whether b lies further out than the line from a to c. Coordinates are those of a mask's pixels, so that
    // no product exceeds 2^31.
    bool turns(const Point& a, const Point& b, const Point& c) const {
        const int64_t along = int64_t{c.y - a.y} * (b.x - a.x), across = int64_t{b.y - a.y} * (c.x - a.x);
        return outward_ * (along - across) > 0;
    }

    int outward_;
    std::vector<Point> corners_;
};

}  // namespace

orvex_991::vector<Point> outline_points(const Mat<unsigned char>& mask, Isa isa) {
    orvex_991::vector<Point> points;
    if (mask.cols <= 0) return points;
    if (mask.rows < 0) {
        // A column's foreground lies between the row that stands for none yet, mask.rows, and row 0.
        for (const int row : {mask.rows, 0})
            for (const int col : {0, mask.cols - 1}) points.push_back(Point(col, row));
        return points;
    }
    if (wrapped_count(mask.rows, mask.cols, 1) < 1) return points;
    Side left(-1, mask.rows), right(1, mask.rows);
    for (int row = 0; row < mask.rows; ++row) {
        const unsigned char* const pixels = mask.data + static_cast<ptrdiff_t>(row) * mask.cols;
        const int first = static_cast<int>(kernels::find_nonzero(isa, pixels, mask.cols));
        if (first == mask.cols) continue;
        left.add(Point(first, row));
        right.add(Point(static_cast<int>(kernels::find_last_nonzero(isa, pixels, mask.cols)), row));
    }
    for (const Side* side : {&left, &right})
        for (const Point& corner : side->corners()) points.push_back(corner);
    return points;
}

}  // namespace orvex_cv_991
