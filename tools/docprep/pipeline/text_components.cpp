#include "pipeline/text_components.h"

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

Fate fate_of(const Rect& component, int text_height, int rows, int cols) {
    const int64_t unit = text_height;
    if (touches_border(component, rows, cols)) return Fate::kBorder;
    if (component.height > kTallest * unit) return Fate::kTall;
    if (component.width > kWidest * unit) return Fate::kWide;
    if (2 * static_cast<int64_t>(std::max(component.width, component.height)) < unit) return Fate::kSpeck;
    return Fate::kText;
}

TextComponents select_text(const Rects& components, int rows, int cols) {
    TextComponents text;
    text.text_height = median_by_height(components, rows, cols);
    for (int k = 0; k < components.size; ++k) {
        switch (fate_of(components[k], text.text_height, rows, cols)) {
            case Fate::kText:
                text.kept.push_back(components[k]);
                break;
            case Fate::kBorder:
                ++text.border;
                break;
            case Fate::kTall:
                ++text.tall;
                break;
            case Fate::kWide:
                ++text.wide;
                break;
            case Fate::kSpeck:
                ++text.specks;
                break;
        }
    }
    return text;
}

}  // namespace docprep
