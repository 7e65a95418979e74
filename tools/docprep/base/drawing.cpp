#include "base/drawing.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace docprep {

using orvex_cv_991::Point;

namespace {

/// The columns that a convex outline covers in a row; none when first > second.
std::pair<int, int> columns_of(const Points& outline, int row) {
    double left = HUGE_VAL, right = -HUGE_VAL;
    for (int k = 0; k < outline.size; ++k) {
        const Point& a = outline[k];
        const Point& b = outline[(k + 1) % outline.size];
        if (row < std::min(a.y, b.y) || row > std::max(a.y, b.y)) continue;
        if (a.y == b.y) {
            left = std::min<double>(left, std::min(a.x, b.x));
            right = std::max<double>(right, std::max(a.x, b.x));
            continue;
        }
        const double x = a.x + static_cast<double>(b.x - a.x) * (row - a.y) / (b.y - a.y);
        left = std::min(left, x);
        right = std::max(right, x);
    }
    if (left > right) return {0, -1};
    return {static_cast<int>(std::ceil(left - 0.5)), static_cast<int>(std::floor(right + 0.5))};
}

}  // namespace

void fill_convex(Image& mask, const Points& outline, unsigned char value) {
    if (outline.size == 0) return;
    int top = outline[0].y, bottom = outline[0].y;
    for (int k = 1; k < outline.size; ++k) {
        top = std::min(top, outline[k].y);
        bottom = std::max(bottom, outline[k].y);
    }
    for (int row = top; row <= bottom; ++row) {
        const auto [left, right] = columns_of(outline, row);
        if (left <= right)
            std::fill_n(mask.data + static_cast<ptrdiff_t>(row) * mask.cols + left, right - left + 1, value);
    }
}

Image in_colour(Image picture) {
    if (picture.channels == 3) return picture;
    Image colour;
    colour.mat_create(picture.rows, picture.cols, 3, 0);
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    for (ptrdiff_t i = 0; i < n; ++i) std::memset(colour.data + 3 * i, picture.data[i], 3);
    return colour;
}

int line_thickness(const Image& picture) {
    constexpr int kPixelsPerThickness = 700;
    return 1 + std::min(picture.rows, picture.cols) / kPixelsPerThickness;
}

}  // namespace docprep
