#include "pipeline/seal_ink.h"

#include <algorithm>
#include <cstdlib>

#include "cv_imgproc.h"
#include "pipeline/histogram.h"
#include "pipeline/reduced.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// Ink runs, and hulls of a reduced copy are a pixel off: this share of a seal's longer side belongs to it, too.
constexpr int kMarginShare = 40;
constexpr int kLeastMargin = 2;
// Quantiles of redness over a seal: half of it is paper at least, a twentieth solid ink.
constexpr double kPaper = 0.5;
constexpr double kInk = 0.95;
/// What ink has more of than paper, at least.
constexpr int kLeastRedness = 10;

/// A part of the photograph, and which of its pixels belong to a seal.
struct Part {
    Rect area;
    Image mask;

    /// Calls `visit` with the photograph's index of each of those pixels.
    template <class Visit>
    void for_each_pixel(const Image& photo, const Visit& visit) const {
        const unsigned char* on_seal = mask.data;
        for (int row = area.y; row < area.y + area.height; ++row)
            for (int col = area.x; col < area.x + area.width; ++col)
                if (*on_seal++ != 0) visit(static_cast<ptrdiff_t>(row) * photo.cols + col);
    }
};

/// The seal with a margin, as far as the photograph reaches.
Part part_around(const Seal& seal, const Image& mask) {
    const int margin = std::max(std::max(seal.rect.width, seal.rect.height) / kMarginShare, kLeastMargin);
    const int left = std::max(seal.rect.x - margin, 0), top = std::max(seal.rect.y - margin, 0);
    Part part;
    part.area = Rect(left, top, std::min(seal.rect.x + seal.rect.width + margin, mask.cols) - left,
                     std::min(seal.rect.y + seal.rect.height + margin, mask.rows) - top);
    part.mask = cut_out(mask, part.area);
    const int window = 2 * margin + 1;
    CImgproc::dilateBinary(part.mask, part.mask,
                           Size(std::min(window, part.area.width), std::min(window, part.area.height)));
    return part;
}

void wipe(const Image& photo, const Image& gray, const Part& part, Image& result) {
    Histogram reds;
    part.for_each_pixel(photo, [&](ptrdiff_t pixel) { reds.add(redness(photo.data + 3 * pixel)); });
    if (reds.empty()) return;
    const int paper = reds.quantile(kPaper), ink = reds.quantile(kInk);
    if (ink - paper < kLeastRedness) return;
    // Black print has no more red than white paper: medians, so that neither level is a mixture.
    Histogram paper_levels, ink_levels;
    part.for_each_pixel(photo, [&](ptrdiff_t pixel) {
        const int red = redness(photo.data + 3 * pixel);
        if (std::abs(red - paper) <= 3) paper_levels.add(gray.data[pixel]);
        if (red >= ink) ink_levels.add(gray.data[pixel]);
    });
    const double paper_gray = paper_levels.quantile(0.5), ink_gray = ink_levels.quantile(0.5);
    const double lift = std::max(paper_gray - ink_gray, 0.0) / (ink - paper);
    part.for_each_pixel(photo, [&](ptrdiff_t pixel) {
        const int covered = redness(photo.data + 3 * pixel) - paper;
        if (covered <= 0) return;
        const double brighter = gray.data[pixel] + lift * covered;
        result.data[pixel] = static_cast<unsigned char>(std::min(brighter + 0.5, 255.0));
    });
}

}  // namespace

Image without_seals(const Image& photo, const Image& gray, const Seals& seals, const Image& mask) {
    Image result = gray;
    for (const Seal& seal : seals.seals) wipe(photo, gray, part_around(seal, mask), result);
    return result;
}

}  // namespace docprep
