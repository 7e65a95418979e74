#include "pipeline/reduced.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

int scaled(int extent, double scale) {
    return std::max(1, static_cast<int>(std::lround(extent * scale)));
}

/// Means along rows of the picture, which is transposed on the way.
Image smoothed_across_and_transposed(const Image& gray, int reach) {
    Image result;
    result.mat_create(gray.cols, gray.rows, 1, 0);
    std::vector<int> sums(static_cast<size_t>(gray.cols) + 1);
    for (int row = 0; row < gray.rows; ++row) {
        const unsigned char* const pixels = gray.data + static_cast<ptrdiff_t>(row) * gray.cols;
        for (size_t col = 0; col + 1 < sums.size(); ++col) sums[col + 1] = sums[col] + pixels[col];
        for (int col = 0; col < gray.cols; ++col) {
            const int begin = std::max(col - reach, 0), end = std::min(col + reach + 1, gray.cols);
            const int sum = sums[static_cast<size_t>(end)] - sums[static_cast<size_t>(begin)];
            result.data[static_cast<ptrdiff_t>(col) * gray.rows + row] =
                static_cast<unsigned char>((sum + (end - begin) / 2) / (end - begin));
        }
    }
    return result;
}

}  // namespace

Image reduced(const Image& picture, double scale) {
    const Size target(scaled(picture.cols, std::min(scale, 1.0)), scaled(picture.rows, std::min(scale, 1.0)));
    Image copy = picture;
    const auto resize = [&](const Size& size) {
        if (size.width != copy.cols || size.height != copy.rows)
            CImgproc::resize(copy, copy, size, INTERP_LINEAR);
    };
    while (copy.cols >= 2 * target.width && copy.rows >= 2 * target.height)
        resize(Size(copy.cols / 2, copy.rows / 2));
    resize(target);
    return copy;
}

Image cut_out(const Image& picture, const Rect& part) {
    Image copy;
    copy.mat_create(part.height, part.width, picture.channels, 0);
    const ptrdiff_t row_bytes = ptrdiff_t{part.width} * picture.channels;
    for (int row = 0; row < part.height; ++row)
        std::memcpy(copy.data + row * row_bytes,
                    picture.data + (ptrdiff_t{part.y + row} * picture.cols + part.x) * picture.channels,
                    static_cast<size_t>(row_bytes));
    return copy;
}

Image smoothed(const Image& gray, int extent) {
    const int reach = extent / 2;
    return smoothed_across_and_transposed(smoothed_across_and_transposed(gray, reach), reach);
}

int odd_window(double length, const Image& picture) {
    const int least = std::min(picture.rows, picture.cols);
    const int fitting = least - (least % 2 == 0 ? 1 : 0);
    return std::clamp(static_cast<int>(std::lround(length)) | 1, 1, fitting);
}

}  // namespace docprep
