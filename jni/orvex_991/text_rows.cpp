#include "text_rows.h"

#include <algorithm>
#include <utility>

#include "cv_numeric.h"

namespace orvex_cv_991 {

std::vector<int> band_starts(const orvex_991::vector<Rect>& rects) {
    std::vector<std::pair<int, int>> covered;  // first row, row after the last
    covered.reserve(static_cast<size_t>(rects.size()));
    for (int k = 0; k < rects.size; ++k) {
        const Rect& rect = rects.data[k];
        const int bottom = wrap_add(rect.y, rect.height);
        if (bottom <= rect.y) continue;
        if (rect.y < 0) throw orvex_991::CException(4);
        covered.emplace_back(rect.y, bottom);
    }
    std::sort(covered.begin(), covered.end());

    std::vector<int> starts;
    int bottom = -1;  // of the band so far
    for (const auto& rows : covered) {
        if (rows.first > bottom) starts.push_back(rows.first);
        bottom = std::max(bottom, rows.second);
    }
    return starts;
}

}  // namespace orvex_cv_991
