#include "pipeline/seals.h"

#include <algorithm>
#include <cstdlib>

#include "cv_imgproc.h"

namespace docprep {

using orvex_991::CException;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;

namespace {

// The detector's copy has 320 columns, however many rows that makes, and lists the pixels of what is red in
// it. Up to this ratio of rows to columns it has 10 million pixels at most.
constexpr int64_t kTallest = 100;

// The detector looks for what is redder than the rest, so that in a picture without red it finds shades of
// paper or wood. Of real seals, pale and worn ones included, 12 in 100 pixels and more are red by themselves,
// of such shades 1 at most.
constexpr int64_t kLeastRedPercent = 5;

/// Within 20 degrees of red on the colour circle, and with a quarter of full saturation.
bool is_red(const unsigned char* bgr) {
    const int b = bgr[0], g = bgr[1], r = bgr[2];
    const int chroma = r - std::min(b, g);
    return r >= std::max(b, g) && 3 * std::abs(g - b) <= chroma && 4 * chroma >= r && chroma > 0;
}

Seals none(const std::string& reason) {
    Seals seals;
    seals.reason = reason;
    return seals;
}

/// What the detector marks on the paper, less shades that are only redder than the rest.
Seals red_marks(const Image& photo, const Paper& paper, const Image& mask) {
    Rects marks;
    orvex_991::vector<orvex_991::vector<Point>> pixels;
    CImgproc::connectdComponent(mask, marks, &pixels);
    Seals seals;
    for (int k = 0; k < marks.size; ++k) {
        const orvex_991::vector<Point>& mark = pixels[k];
        int64_t red = 0;
        for (int i = 0; i < mark.size; ++i)
            red += is_red(photo.data + 3 * (static_cast<ptrdiff_t>(mark[i].y) * mask.cols + mark[i].x));
        if (100 * red < kLeastRedPercent * mark.size || !paper.holds(marks[k], photo)) continue;
        seals.marks.push_back(marks[k]);
        seals.mark_pixels += mark.size;
    }
    return seals;
}

}  // namespace

Seals find_seals(const Image& photo, const Paper& paper, Image& mask) {
    mask = Image();
    if (photo.channels == 1) return none("gray picture");
    if (photo.rows > kTallest * photo.cols) return none("too narrow");
    Image marked;
    try {
        CImgproc::redColorDetect(photo, marked, false);
    } catch (const CException& exception) {
        constexpr int kCheck =
            1;  // nothing else is wrong with the photo: the copy has too few rows or columns
        constexpr int kNothing = 2;
        if (exception.code == kCheck) return none("too narrow");
        if (exception.code == kNothing && exception.message == "could not find any valid red circle")
            return none("");
        throw;
    }
    Seals seals = red_marks(photo, paper, marked);
    if (seals.marks.size == 0) return seals;
    seals.seals = grow_seals(photo, paper, seals.marks);
    mask = mask_of(seals.seals, photo.rows, photo.cols);
    seals.pixels = CImgproc::countNonZero(mask);
    return seals;
}

}  // namespace docprep
