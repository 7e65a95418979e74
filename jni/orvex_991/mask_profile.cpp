#include "mask_profile.h"

#include <cstdint>

#include "cv_numeric.h"

namespace orvex_cv_991 {

std::vector<Point> outline_points(const Mat<unsigned char>& mask, Isa isa) {
    if (mask.rows <= 0 || mask.cols <= 0) return {};
    const size_t cols = static_cast<size_t>(mask.cols);
    std::vector<int> top(cols, mask.rows), bottom(cols, 0);
    std::vector<uint64_t> words((cols + 63) / 64);
    for (int row = 0; row < mask.rows; ++row) {
        kernels::pack_nonzero(isa, mask.data + static_cast<ptrdiff_t>(row) * mask.cols, words.data(),
                              mask.cols);
        for (size_t w = 0; w < words.size(); ++w) {
            for (uint64_t word = words[w]; word; word &= word - 1) {
                const size_t col = 64 * w + static_cast<size_t>(lowest_bit(word));
                if (top[col] > row) top[col] = row;
                bottom[col] = row;
            }
        }
    }

    std::vector<Point> points;
    // A point that lies no further out than the one before it and the one after it is no corner; equal
    // heights are dropped too, which thins level runs to their ends.
    const auto append = [&](const std::vector<int>& profile, int outward) {
        const size_t first = points.size();
        for (size_t col = 0; col < cols; ++col) {
            if (top[col] > bottom[col]) continue;
            const int y = profile[col];
            while (points.size() - first > 1) {
                const int last = points.back().y, before = points[points.size() - 2].y;
                if (outward * (last - y) > 0 || outward * (last - before) > 0) break;
                points.pop_back();
            }
            points.push_back(Point(static_cast<int>(col), y));
        }
    };
    append(top, -1);
    append(bottom, 1);
    return points;
}

}  // namespace orvex_cv_991
