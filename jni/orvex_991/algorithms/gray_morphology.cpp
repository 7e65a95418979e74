#include "algorithms/gray_morphology.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/row_spans.h"

namespace orvex_cv_991 {

namespace {

using Combine = void (*)(Isa, const uint8_t*, const uint8_t*, uint8_t*, ptrdiff_t);

/// The rows of a maximum or minimum filter, one after the other.
class FilteredRows {
 public:
    FilteredRows(const Mat<unsigned char>& src, const Size& size, Isa isa, Combine combine, uint8_t neutral)
        : src_(src),
          size_(size),
          combine_{isa, combine, src.cols},
          neutral_(neutral),
          down_(overlapping_reach(size.height), static_cast<size_t>(src.cols), neutral, combine_),
          padded_(static_cast<size_t>(src.cols) + static_cast<size_t>(size.width) - 1, neutral) {
        for (int below = size.height - 1 - size.height / 2; below > 0; --below) advance();
    }

    void next(uint8_t* out) {
        advance();
        const int cols = src_.cols, before = size_.width / 2;
        const ptrdiff_t length = static_cast<ptrdiff_t>(padded_.size());
        const int highest = floor_log2(size_.height);
        uint8_t* const padded = padded_.data();
        std::fill_n(padded, before, neutral_);
        combine_(down_.span(highest, 0), down_.span(highest, size_.height - (1 << highest)), padded + before);
        std::fill(padded + before + cols, padded + length, neutral_);
        int span = 1;
        for (; 2 * span <= size_.width; span *= 2) combine_(padded, padded + span, padded, length - span);
        combine_(padded, padded + size_.width - span, out, cols);
    }

 private:
    struct OnRows {
        Isa isa;
        Combine combine;
        ptrdiff_t cols;

        void operator()(const uint8_t* a, const uint8_t* b, uint8_t* out) const {
            combine(isa, a, b, out, cols);
        }
        void operator()(const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) const {
            combine(isa, a, b, out, n);
        }
    };

    void advance() {
        if (row_ < src_.rows)
            std::copy_n(src_.data + row_ * src_.cols, src_.cols, down_.next());
        else
            std::fill_n(down_.next(), src_.cols, neutral_);
        down_.push();
        ++row_;
    }

    const Mat<unsigned char>& src_;
    const Size size_;
    const OnRows combine_;
    const uint8_t neutral_;
    RowSpans<uint8_t, OnRows> down_;
    // A row with what lies outside the image on both sides: the window of column c begins at element c.
    Scratch<uint8_t> padded_;
    int64_t row_ = 0;  // the next one to read
};

}  // namespace

void dilate_gray(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    FilteredRows rows(src, size, isa, kernels::max_bytes, 0);
    for (ptrdiff_t row = 0; row < src.rows; ++row) rows.next(out + row * src.cols);
}

void erode_gray(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    FilteredRows rows(src, size, isa, kernels::min_bytes, 255);
    for (ptrdiff_t row = 0; row < src.rows; ++row) rows.next(out + row * src.cols);
}

void gray_gradient(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    FilteredRows dilated(src, size, isa, kernels::max_bytes, 0);
    FilteredRows eroded(src, size, isa, kernels::min_bytes, 255);
    Scratch<uint8_t> smallest(static_cast<size_t>(src.cols));
    for (ptrdiff_t row = 0; row < src.rows; ++row) {
        uint8_t* const to = out + row * src.cols;
        dilated.next(to);
        eroded.next(smallest.data());
        kernels::subtract_bytes(isa, to, smallest.data(), to, src.cols);
    }
}

}  // namespace orvex_cv_991
