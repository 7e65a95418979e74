#include "red_ink.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace docprep {

using orvex_cv_991::Rect;

namespace {

// Worn seals have 40 to 110 levels more of red than of the next colour; black print on warm paper
// has up to 30.
constexpr int64_t kRed = 35;

/// Whether the print within a rectangle is red on average.
bool is_red(const Image& page, const Image& binary, const Rect& rect) {
    int64_t sum = 0;
    int64_t n = 0;
    for (int row = rect.y; row < rect.y + rect.height; ++row) {
        const ptrdiff_t first = static_cast<ptrdiff_t>(row) * page.cols + rect.x;
        for (ptrdiff_t i = first; i < first + rect.width; ++i) {
            if (binary.data[i] == 0) continue;
            const unsigned char* const bgr = page.data + 3 * i;
            sum += bgr[2] - std::max(bgr[0], bgr[1]);
            ++n;
        }
    }
    return sum >= kRed * n;
}

}  // namespace

void drop_red_ink(const Image& page, const Image& binary, TextComponents& text) {
    if (page.channels != 3) return;
    Rects others;
    for (int k = 0; k < text.kept.size; ++k)
        if (!is_red(page, binary, text.kept[k])) others.push_back(text.kept[k]);
    const int red = text.kept.size - others.size;
    if (3 * static_cast<int64_t>(red) > text.kept.size) return;
    text.red = red;
    text.kept = std::move(others);
}

}  // namespace docprep
