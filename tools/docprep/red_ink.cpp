#include "red_ink.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace docprep {

using orvex_cv_991::Rect;

namespace {

// Worn seals have 40 to 110 levels more of red than of the next colour; black print on warm paper
// has up to 30.
constexpr int64_t kRed = 35;

/// The pixel of the photograph that a point of the page lies on; false when none does.
bool pixel_at(const Image& photo, const Place& place, ptrdiff_t& pixel) {
    const double x = std::round(place.x), y = std::round(place.y);
    if (!(x >= 0 && y >= 0 && x < photo.cols && y < photo.rows)) return false;
    pixel = static_cast<ptrdiff_t>(y) * photo.cols + static_cast<ptrdiff_t>(x);
    return true;
}

bool in_seal(const Image& seals, const Deskew& deskew, const Rect& rect) {
    const Place middle = {rect.x + (rect.width - 1) / 2.0, rect.y + (rect.height - 1) / 2.0};
    ptrdiff_t pixel = 0;
    return pixel_at(seals, deskew.to_photo(middle), pixel) && seals.data[pixel] != 0;
}

/// Whether the print within a rectangle is red on average.
bool is_red(const Image& photo, const Deskew& deskew, const Image& binary, const Rect& rect) {
    int64_t sum = 0;
    int64_t n = 0;
    for (int row = rect.y; row < rect.y + rect.height; ++row)
        for (int col = rect.x; col < rect.x + rect.width; ++col) {
            ptrdiff_t pixel = 0;
            if (binary.data[static_cast<ptrdiff_t>(row) * binary.cols + col] == 0) continue;
            if (!pixel_at(photo, deskew.to_photo({double(col), double(row)}), pixel)) continue;
            const unsigned char* const bgr = photo.data + 3 * pixel;
            sum += bgr[2] - std::max(bgr[0], bgr[1]);
            ++n;
        }
    return sum >= kRed * n;
}

}  // namespace

void drop_red_ink(const Image& photo, const Image& seals, const Deskew& deskew, const Image& binary,
                  TextComponents& text) {
    if (seals.empty()) return;
    Rects others;
    for (int k = 0; k < text.kept.size; ++k) {
        const Rect& rect = text.kept[k];
        if (!in_seal(seals, deskew, rect) || !is_red(photo, deskew, binary, rect)) others.push_back(rect);
    }
    text.red = text.kept.size - others.size;
    text.kept = std::move(others);
}

}  // namespace docprep
