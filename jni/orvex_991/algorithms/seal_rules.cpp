#include "base/fp_strict.h"
//
#include "algorithms/seal_rules.h"

#include <algorithm>

namespace orvex_cv_991 {

namespace {

bool has_seal_shape(const Rect& rect, const Size& image) {
    return rect.width <= image.width / 2 && rect.height <= image.height / 2 &&
           rect.width <= 3 * rect.height && rect.height <= 3 * rect.width;
}

bool is_accepted(const Rect& rect, int pixels, const Size& image, bool relaxed, float least_fill) {
    constexpr int kLeastSide = 10;
    if (rect.width < kLeastSide || rect.height < kLeastSide) return false;
    if (!relaxed && !has_seal_shape(rect, image)) return false;
    return static_cast<float>(pixels) / static_cast<float>(rect.width * rect.height) >= least_fill;
}

// Deliberate: a component narrower than 6 is examined whatever its height, a wider one only from height
// 5 on (test: a_flat_wide_fragment_is_not_rescued).
bool may_be_rescued(const Rect& rect) {
    return rect.width < 6 || rect.height >= 5;
}

/// Whether more than half of `rect` lies in `seal` grown by a quarter of its own extent on every side.
bool is_near(const Rect& rect, const Rect& seal) {
    const int left = seal.x - seal.width / 4;
    const int top = seal.y - seal.height / 4;
    const int right = static_cast<int>(left + 1.5 * seal.width);
    const int bottom = static_cast<int>(top + 1.5 * seal.height);
    const int width = std::min(right, rect.x + rect.width) - std::max(left, rect.x);
    const int height = std::min(bottom, rect.y + rect.height) - std::max(top, rect.y);
    return 2 * std::max(width, 0) * std::max(height, 0) > rect.width * rect.height;
}

}  // namespace

SealSelection select_seals(const orvex_991::vector<Rect>& rects,
                           const orvex_991::vector<orvex_991::vector<Point>>& pixels, const Size& image,
                           bool relaxed) {
    const int n = rects.size;
    SealSelection selection;
    for (const float least_fill : {0.5f, 0.25f}) {
        selection.keep.assign(static_cast<size_t>(n), false);
        for (int k = 0; k < n; ++k) {
            if (!is_accepted(rects[k], pixels[k].size, image, relaxed, least_fill)) continue;
            selection.keep[k] = true;
            selection.candidates.push_back(rects[k]);
        }
        if (!selection.candidates.empty()) break;
    }
    const Scratch<Rect>& candidates = selection.candidates;
    for (int k = 0; k < n; ++k) {
        if (selection.keep[k] || !may_be_rescued(rects[k])) continue;
        const auto near = std::find_if(candidates.begin(), candidates.end(),
                                       [&](const Rect& seal) { return is_near(rects[k], seal); });
        if (near == candidates.end()) continue;
        selection.keep[k] = true;
        selection.rescued.push_back({k, static_cast<int>(near - candidates.begin())});
    }
    return selection;
}

}  // namespace orvex_cv_991
