#include "pipeline/binarise.h"

#include <algorithm>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;

namespace {

// Chosen by the character error rates of tools/ocr_check, which are alike for 10 to 20 blocks and 0.5 to 0.7
// deviations, and rise beyond.
constexpr int kBlocksAcrossPage = 15;
constexpr int kLeastBlock = 31;
constexpr double kContrastInDeviations = 0.6;
// A camera's noise on blank paper stays below this many levels.
constexpr double kLeastContrast = 10;

float deviation_of(const Image& gray) {
    float mean = 0, deviation = 0;
    CImgproc::meanStdDev(gray, mean, deviation);
    return deviation;
}

void binarise_by_level(const Image& gray, int threshold, Image& binary) {
    // thresholdSeg turns the level itself bright; one more makes it dark, as Otsu counted it. Otherwise a
    // picture of two levels, such as a black and white scan, would lose all its text.
    CImgproc::thresholdSeg(gray, binary, std::min(threshold + 1, 255));
    ~binary;
}

void binarise_by_surroundings(const Image& gray, const Binarisation& how, Image& binary) {
    const double deviation = deviation_of(gray);
    // So written, a deviation that is not a number, as nearly constant pictures can have, counts as none.
    if (!(deviation > 0))
        binary.mat_create(gray.rows, gray.cols, 1, 0);
    else
        CImgproc::adaptiveThreshold(gray, binary, how.block, -how.contrast / deviation, true);
}

}  // namespace

std::vector<std::string> binarise_method_names() {
    return {"otsu", "adaptive"};
}

Binarisation measure_for(BinariseMethod method, const Image& gray) {
    Binarisation how;
    how.method = method;
    if (method == BinariseMethod::kOtsu) {
        how.threshold = CImgproc::otsu(gray);
    } else {
        how.block = std::max(std::min(gray.rows, gray.cols) / kBlocksAcrossPage, kLeastBlock) | 1;
        const double contrast = kContrastInDeviations * static_cast<double>(deviation_of(gray));
        how.contrast = contrast > kLeastContrast ? contrast : kLeastContrast;  // also for not a number
    }
    return how;
}

void binarise(const Image& gray, const Binarisation& how, Image& binary) {
    if (how.method == BinariseMethod::kOtsu)
        binarise_by_level(gray, how.threshold, binary);
    else
        binarise_by_surroundings(gray, how, binary);
}

}  // namespace docprep
