#include "gray_morphology.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "row_spans.h"

namespace orvex_cv_991 {

namespace {

using Combine = void (*)(Isa, const uint8_t*, const uint8_t*, uint8_t*, ptrdiff_t);

void extreme_of_window(const Mat<unsigned char>& src, const Size& size, Isa isa, Combine combine,
                       uint8_t neutral, unsigned char* out) {
    const int cols = src.cols;
    const int before = size.width / 2;
    const int below = size.height - 1 - size.height / 2;
    const int highest = floor_log2(size.height);
    const auto on_rows = [=](const uint8_t* a, const uint8_t* b, uint8_t* to) {
        combine(isa, a, b, to, cols);
    };
    RowSpans<uint8_t, decltype(on_rows)> down(overlapping_reach(size.height), static_cast<size_t>(cols),
                                              neutral, on_rows);
    // A row with what lies outside the image on both sides: the window of column c begins at element c.
    Scratch<uint8_t> padded(static_cast<size_t>(cols) + static_cast<size_t>(size.width) - 1, neutral);
    const ptrdiff_t length = static_cast<ptrdiff_t>(padded.size());
    for (int64_t row = 0; row < static_cast<int64_t>(src.rows) + below; ++row) {
        if (row < src.rows)
            std::copy_n(src.data + row * cols, cols, down.next());
        else
            std::fill_n(down.next(), cols, neutral);
        down.push();
        if (row < below) continue;
        std::fill_n(padded.data(), before, neutral);
        on_rows(down.span(highest, 0), down.span(highest, size.height - (1 << highest)),
                padded.data() + before);
        std::fill(padded.data() + before + cols, padded.data() + length, neutral);
        int span = 1;
        for (; 2 * span <= size.width; span *= 2)
            combine(isa, padded.data(), padded.data() + span, padded.data(), length - span);
        combine(isa, padded.data(), padded.data() + size.width - span, out + (row - below) * cols, cols);
    }
}

}  // namespace

void dilate_gray(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    extreme_of_window(src, size, isa, kernels::max_bytes, 0, out);
}

void erode_gray(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    extreme_of_window(src, size, isa, kernels::min_bytes, 255, out);
}

}  // namespace orvex_cv_991
