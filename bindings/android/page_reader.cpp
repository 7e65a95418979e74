#include "page_reader.h"

#include <algorithm>
#include <cstring>

namespace orvex_android {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;

namespace {

// The window in which a pixel's surroundings are taken: some lines of text.
constexpr int kBlocksAcrossPage = 15;
constexpr int kLeastBlock = 31;
// How much darker than its surroundings print is: a share of the page's deviation, but more than a camera's noise.
constexpr double kContrastInDeviations = 0.6;
constexpr double kLeastContrast = 10;

Image gray_of(const uint8_t* data, PixelFormat format, int rows, int cols) {
    Image bgr, gray;
    if (format == PixelFormat::kNv21) {
        CImgproc::yuv2bgr(data, rows, cols, bgr);
    } else {
        bgr.mat_create(rows, cols, 3, 0);
        std::memcpy(bgr.data, data, static_cast<size_t>(rows) * static_cast<size_t>(bgr.step));
    }
    CImgproc::bgr2gray(bgr, gray);
    return gray;
}

Image dark_print(const Image& gray) {
    Image binary;
    float mean = 0, deviation_f = 0;
    CImgproc::meanStdDev(gray, mean, deviation_f);
    const double deviation = static_cast<double>(deviation_f);
    // So written, a deviation that is not a number, as nearly constant images can have, counts as none.
    if (!(deviation > 0)) {
        binary.mat_create(gray.rows, gray.cols, 1, 0);
        return binary;
    }
    const int block = std::max(std::min(gray.rows, gray.cols) / kBlocksAcrossPage, kLeastBlock) | 1;
    const double contrast = std::max(kContrastInDeviations * deviation, kLeastContrast);
    CImgproc::adaptiveThreshold(gray, binary, block, -contrast / deviation, true);
    return binary;
}

bool touches_border(const Rect& rect, const Image& image) {
    return rect.x == 0 || rect.y == 0 || rect.x + rect.width == image.cols ||
           rect.y + rect.height == image.rows;
}

Rects letters_of(const Image& binary, Heights heights) {
    Rects all, letters;
    CImgproc::connectdComponent(binary, all, nullptr);
    for (int k = 0; k < all.size; ++k)
        if (all[k].height >= heights.least && all[k].height <= heights.most &&
            !touches_border(all[k], binary))
            letters.push_back(all[k]);
    return letters;
}

}  // namespace

Page read_page(const uint8_t* data, PixelFormat format, int rows, int cols, PageKind kind, Heights letters) {
    Image gray = gray_of(data, format, rows, cols);
    Page page;
    page.sharpness = CImgproc::getSharpness(gray);
    Image binary = dark_print(gray);
    page.components = letters_of(binary, letters);
    CImgproc::divideComponentsToRows(page.components, page.rows);
    page.pixels.swap(kind == PageKind::kGray ? gray : binary);
    return page;
}

}  // namespace orvex_android
