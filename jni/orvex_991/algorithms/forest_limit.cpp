#include "algorithms/forest_limit.h"

#include <cstddef>

#include "base/block.h"
#include "cv_forest_join.h"

namespace orvex_cv_991 {

bool may_exceed_forest(const Mat<unsigned char>& src, int provisional_labels) {
    return provisional_labels >= wrapped_count(src.rows, src.cols, 1) / 2;
}

void scan_within_forest(const Mat<unsigned char>& src, Mat<int>& labels) {
    ForestJoin forest(wrapped_count(src.rows, src.cols, 1) / 2);
    int handed_out = 0;
    for (int row = 0; row < src.rows; ++row) {
        const ptrdiff_t start = static_cast<ptrdiff_t>(row) * src.cols;
        for (int col = 0; col < src.cols; ++col) {
            const ptrdiff_t i = start + col;
            const bool foreground = i == 0 ? src.data[0] == 255 : src.data[i] != 0;
            if (!foreground) continue;
            const int left = col > 0 ? labels.data[i - 1] : 0;
            const int up = row > 0 ? labels.data[i - src.cols] : 0;
            if (left == 0 && up == 0)
                labels.data[i] = ++handed_out;
            else if (left == 0 || up == 0 || left == up)
                labels.data[i] = left == 0 ? up : left;
            else
                labels.data[i] = forest.Join(left, up);
        }
    }
}

}  // namespace orvex_cv_991
