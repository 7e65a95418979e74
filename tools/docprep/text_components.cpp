#include "text_components.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace docprep {

using orvex_cv_991::Rect;

namespace {

// In text heights. Capitals are about 1.5 times as high as the letters that set the text height, a headline's
// twice that; joined letters of a blurred word are some 10 wide.
constexpr int64_t kTallest = 3;
constexpr int64_t kWidest = 20;

bool touches_border(const Rect& rect, int rows, int cols) {
    return rect.x <= 0 || rect.y <= 0 || rect.x + rect.width >= cols || rect.y + rect.height >= rows;
}

/// The lowest height such that components up to it have at least half of the sum of all heights.
int median_by_height(const Rects& components, int rows, int cols) {
    std::vector<int64_t> sums(static_cast<size_t>(rows) + 1);  // by height
    int64_t all = 0;
    for (int k = 0; k < components.size; ++k) {
        const Rect& rect = components[k];
        if (touches_border(rect, rows, cols)) continue;
        sums[static_cast<size_t>(rect.height)] += rect.height;
        all += rect.height;
    }
    int64_t below = 0;
    for (int height = 1; height <= rows; ++height) {
        below += sums[static_cast<size_t>(height)];
        if (below > 0 && 2 * below >= all) return height;
    }
    return 0;
}

}  // namespace

TextComponents select_text(const Rects& components, int rows, int cols) {
    TextComponents text;
    text.text_height = median_by_height(components, rows, cols);
    const int64_t unit = text.text_height;
    for (int k = 0; k < components.size; ++k) {
        const Rect& rect = components[k];
        if (touches_border(rect, rows, cols))
            ++text.border;
        else if (rect.height > kTallest * unit)
            ++text.tall;
        else if (rect.width > kWidest * unit)
            ++text.wide;
        else if (2 * static_cast<int64_t>(std::max(rect.width, rect.height)) < unit)
            ++text.specks;
        else
            text.kept.push_back(rect);
    }
    return text;
}

}  // namespace docprep
