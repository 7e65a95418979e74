#include "html/report_pictures.h"

#include <algorithm>

#include "pipeline/reduced.h"

namespace docprep {

namespace {

/// Of the longer side, in pixels. What shows print needs more than what shows shades.
int most_pixels(Picture kind) {
    switch (kind) {
        case Picture::kLight:
            return 480;
        case Picture::kUpright:
        case Picture::kGray:
        case Picture::kPaper:
        case Picture::kSaliency:
        case Picture::kSeal:
            return 720;
        default:
            return 1000;
    }
}

}  // namespace

void ReportPictures::take(Picture kind, Image picture, int) {
    if (kind == Picture::kGray && report_.binarisation)
        levels_ = decisive_levels(picture, *report_.binarisation);
    const double scale = static_cast<double>(most_pixels(kind)) / std::max(picture.rows, picture.cols);
    copies_[kind] = {reduced(picture, scale), picture.cols, picture.rows};
}

const ReportPictures::Copy* ReportPictures::find(Picture kind) const {
    const auto copy = copies_.find(kind);
    return copy == copies_.end() ? nullptr : &copy->second;
}

Histogram decisive_levels(const Image& gray, const Binarisation& how) {
    const bool adaptive = how.method == BinariseMethod::kAdaptive;
    const Image surroundings = adaptive ? smoothed(gray, how.block) : Image();
    const ptrdiff_t n = static_cast<ptrdiff_t>(gray.rows) * gray.cols;
    Histogram levels;
    for (ptrdiff_t i = 0; i < n; ++i) levels.add(gray.data[i] - (adaptive ? surroundings.data[i] : 0));
    return levels;
}

}  // namespace docprep
