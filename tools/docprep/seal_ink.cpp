#include "seal_ink.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// Ink runs, and hulls of a reduced copy are a pixel off: this share of a seal's longer side belongs to it, too.
constexpr int kMarginShare = 40;
constexpr int kLeastMargin = 2;
// Quantiles of redness over a seal: less than a quarter of it is ink, a tenth is solid.
constexpr double kPaper = 0.5;
constexpr double kInk = 0.95;
/// A levels' difference that means something.
constexpr int kLeastRedness = 10;

int redness(const unsigned char* bgr) {
    return bgr[2] - std::max(bgr[0], bgr[1]);
}

/// Pixels counted by a value of -255 .. 255.
struct Histogram {
    std::array<int64_t, 511> counts{};
    int64_t all = 0;

    void add(int value) {
        ++counts[static_cast<size_t>(value + 255)];
        ++all;
    }
    /// The value that this share of the pixels is not above.
    int quantile(double share) const {
        int64_t n = 0;
        for (size_t at = 0; at < counts.size(); ++at) {
            n += counts[at];
            if (static_cast<double>(n) >= share * static_cast<double>(all)) return static_cast<int>(at) - 255;
        }
        return 255;
    }
};

template <class Visit>
void for_each_pixel(const Rect& area, const Image& mask, const Visit& visit) {
    const int right = std::min(area.x + area.width, mask.cols),
              bottom = std::min(area.y + area.height, mask.rows);
    for (int row = std::max(area.y, 0); row < bottom; ++row)
        for (int col = std::max(area.x, 0); col < right; ++col) {
            const ptrdiff_t pixel = static_cast<ptrdiff_t>(row) * mask.cols + col;
            if (mask.data[pixel] != 0) visit(pixel);
        }
}

void wipe(const Image& photo, const Image& gray, const Rect& area, const Image& mask, Image& result) {
    Histogram reds;
    for_each_pixel(area, mask, [&](ptrdiff_t pixel) { reds.add(redness(photo.data + 3 * pixel)); });
    if (reds.all == 0) return;
    const int paper = reds.quantile(kPaper), ink = reds.quantile(kInk);
    if (ink - paper < kLeastRedness) return;
    // Black print has no more red than white paper: medians, so that neither level is a mixture.
    Histogram paper_levels, ink_levels;
    for_each_pixel(area, mask, [&](ptrdiff_t pixel) {
        const int red = redness(photo.data + 3 * pixel);
        if (std::abs(red - paper) <= 3) paper_levels.add(gray.data[pixel]);
        if (red >= ink) ink_levels.add(gray.data[pixel]);
    });
    const double paper_gray = paper_levels.quantile(0.5), ink_gray = ink_levels.quantile(0.5);
    const double lift = std::max(paper_gray - ink_gray, 0.0) / (ink - paper);
    for_each_pixel(area, mask, [&](ptrdiff_t pixel) {
        const int covered = redness(photo.data + 3 * pixel) - paper;
        if (covered <= 0) return;
        const double brighter = gray.data[pixel] + lift * covered;
        result.data[pixel] = static_cast<unsigned char>(std::min(brighter + 0.5, 255.0));
    });
}

}  // namespace

Image without_seals(const Image& photo, const Image& gray, const Seals& seals, const Image& mask) {
    Image result = gray;
    for (const Seal& seal : seals.seals) {
        const int margin = std::max(std::max(seal.rect.width, seal.rect.height) / kMarginShare, kLeastMargin);
        Image grown;
        const Size window(std::min(2 * margin + 1, mask.cols), std::min(2 * margin + 1, mask.rows));
        CImgproc::dilateBinary(mask, grown, window);
        const Rect area(seal.rect.x - margin, seal.rect.y - margin, seal.rect.width + 2 * margin,
                        seal.rect.height + 2 * margin);
        wipe(photo, gray, area, grown, result);
    }
    return result;
}

}  // namespace docprep
