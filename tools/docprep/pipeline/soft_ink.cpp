#include "pipeline/soft_ink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "cv_imgproc.h"
#include "pipeline/histogram.h"
#include "pipeline/reduced.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Size;

namespace {

// Found by the character error rates of tools/ocr_check. Lengths are in text heights.
constexpr double kReducedTextHeight = 6;  // pixels of the copy
constexpr double kFilled = 3;             // wider than any stroke, narrower than a picture
constexpr double kLightSmoothed = 1.5;
constexpr double kSurroundings = 4;
constexpr int kLeastContrast = 30;  // levels
constexpr double kInkQuantile = 0.1;
// Shares of the way from ink to paper.
constexpr double kLightestPrint = 0.55;
constexpr double kDarkestPaper = 0.3;
constexpr double kSpread = 0.5;  // of the way from threshold to paper

Image enlarged(const Image& small, const Image& page) {
    Image large;
    CImgproc::resize(small, large, Size(page.cols, page.rows), INTERP_LINEAR);
    return large;
}

/// The light that falls on the paper, on a reduced copy.
Image light_of(const Image& copy, double text_height) {
    const int filled = odd_window(kFilled * text_height, copy);
    Image light;
    CImgproc::dilateGray(copy, light, Size(filled, filled));
    CImgproc::erodeGray(light, light, Size(filled, filled));
    return smoothed(light, odd_window(kLightSmoothed * text_height, copy));
}

/// page * 255 / light, at most 255.
void divide_by_light(const Image& page, Image& light) {
    std::array<uint32_t, 256> reciprocals{};  // with 16 fraction bits
    for (uint32_t level = 1; level < 256; ++level) reciprocals[level] = (255u << 16) / level;
    reciprocals[0] = 255u << 16;
    const ptrdiff_t n = static_cast<ptrdiff_t>(page.rows) * page.cols;
    for (ptrdiff_t i = 0; i < n; ++i) {
        const uint32_t quotient = (page.data[i] * reciprocals[light.data[i]] + (1u << 15)) >> 16;
        light.data[i] = static_cast<unsigned char>(std::min(quotient, 255u));
    }
}

/// The level that a tenth of the print is darker than; print is darker than its surroundings.
int ink_level(const Image& even, const Image& surroundings, const Image& paper) {
    Histogram print;
    const ptrdiff_t n = static_cast<ptrdiff_t>(even.rows) * even.cols;
    for (ptrdiff_t i = 0; i < n; ++i) {
        if (even.data[i] + kLeastContrast >= surroundings.data[i]) continue;
        if (!paper.empty() && paper.data[i] == 0) continue;
        print.add(even.data[i]);
    }
    return print.empty() ? 0 : print.quantile(kInkQuantile);
}

/// The level that the middle grey of the result stands for, where a page is so light in the mean.
std::array<int, 256> thresholds_by_surroundings(const Ink& ink) {
    const int least = static_cast<int>(std::lround(ink.level + kDarkestPaper * (255 - ink.level)));
    std::array<int, 256> thresholds{};
    for (int mean = 0; mean < 256; ++mean)
        thresholds[static_cast<size_t>(mean)] = std::clamp(mean - kLeastContrast, least, ink.threshold);
    return thresholds;
}

/// Ink becomes black and paper white; the threshold becomes 128.
void spread_contrast(Image& even, const Image& surroundings, const Ink& ink) {
    const std::array<int, 256> thresholds = thresholds_by_surroundings(ink);
    const double slope = 127 / (kSpread * std::max(255 - ink.threshold, 1));
    std::array<unsigned char, 511> spread{};  // by the distance from the threshold, -255 .. 255
    for (size_t k = 0; k < spread.size(); ++k) {
        const double value = 128 + std::floor((static_cast<double>(k) - 255) * slope);
        spread[k] = static_cast<unsigned char>(std::clamp(value, 0.0, 255.0));
    }
    const ptrdiff_t n = static_cast<ptrdiff_t>(even.rows) * even.cols;
    for (ptrdiff_t i = 0; i < n; ++i) {
        const int at = even.data[i] - thresholds[surroundings.data[i]] + 255;
        even.data[i] = spread[static_cast<size_t>(at)];
    }
}

}  // namespace

Image with_soft_ink(const Image& page, const Image& paper, int text_height, Ink& ink, Image* light) {
    // Without text, as if a page had 60 lines with as much between them.
    const double unit = text_height > 0 ? text_height : std::max(page.rows / 120.0, kReducedTextHeight);
    const double scale = std::min(kReducedTextHeight / unit, 1.0);
    const double reduced_unit = unit * scale;

    Image small_light = light_of(reduced(page, scale), reduced_unit);
    Image even = enlarged(small_light, page);
    if (light != nullptr) *light = std::move(small_light);
    divide_by_light(page, even);
    const Image copy = reduced(even, scale);
    Image surroundings = enlarged(smoothed(copy, odd_window(kSurroundings * reduced_unit, copy)), page);

    ink.level = std::min(ink_level(even, surroundings, paper), 254);
    const int to_paper = 255 - ink.level;
    ink.threshold = static_cast<int>(std::lround(ink.level + kLightestPrint * to_paper));
    spread_contrast(even, surroundings, ink);
    return even;
}

}  // namespace docprep
