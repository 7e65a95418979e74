#include "algorithms/bit_morphology.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/row_spans.h"

namespace orvex_cv_991 {

namespace {

using Words = Scratch<uint64_t>;

/// Ors of `length` neighbours along one packed row: bit c of the result is the or of the bits
/// c - before .. c - before + length - 1 of the row. Bits beyond the row's last column may be set.
class HorizontalOr {
 public:
    HorizontalOr(int length, int before, int cols)
        : length_(length),
          before_(before),
          words_((static_cast<size_t>(cols) + 63) / 64),
          spans_((static_cast<size_t>(cols) + static_cast<size_t>(length) + 63) / 64) {}

    void apply(uint64_t* row) {
        if (length_ == 1) return;
        // With the row moved up by `before`, the window of c begins at c. Ors of 1, 2, 4 .. bits by doubling;
        // the window is the union of two spans.
        move_up(row);
        int span = 1;
        for (; 2 * span <= length_; span *= 2)
            for (size_t w = 0; w < spans_.size(); ++w) spans_[w] |= bits_above(w, span);
        for (size_t w = 0; w < words_; ++w) row[w] = spans_[w] | bits_above(w, length_ - span);
    }

 private:
    void move_up(const uint64_t* row) {
        const size_t whole = static_cast<size_t>(before_) / 64;
        const int bits = before_ % 64;
        for (size_t w = 0; w < spans_.size(); ++w) {
            const size_t from = w - whole;  // wraps, and then lies outside, for the words below the row
            uint64_t word = from < words_ ? row[from] << bits : 0;
            if (bits && from - 1 < words_) word |= row[from - 1] >> (64 - bits);
            spans_[w] = word;
        }
    }

    // Word w of the spans moved down by `shift` bits.
    uint64_t bits_above(size_t w, int shift) const {
        const size_t from = w + static_cast<size_t>(shift) / 64;
        const int bits = shift % 64;
        uint64_t word = from < spans_.size() ? spans_[from] >> bits : 0;
        if (bits && from + 1 < spans_.size()) word |= spans_[from + 1] << (64 - bits);
        return word;
    }

    const int length_, before_;
    const size_t words_;
    Words spans_;
};

using Pack = void (*)(Isa, const uint8_t*, uint64_t*, int);

void or_window(const Mat<unsigned char>& src, const Size& size, Isa isa, Pack pack, uint8_t invert,
               unsigned char* out) {
    const int words = static_cast<int>((static_cast<int64_t>(src.cols) + 63) / 64);
    const int highest = floor_log2(size.height);
    const int below = size.height - 1 - size.height / 2;  // rows of the window under its anchor
    HorizontalOr along(size.width, size.width / 2, src.cols);
    const auto unite = [isa, words](const uint64_t* a, const uint64_t* b, uint64_t* to) {
        kernels::or_words(isa, a, b, to, words);
    };
    RowSpans<uint64_t, decltype(unite)> down(overlapping_reach(size.height), static_cast<size_t>(words), 0,
                                             unite);
    Words result(static_cast<size_t>(words));
    for (int64_t row = 0; row < static_cast<int64_t>(src.rows) + below; ++row) {
        uint64_t* const next = down.next();
        if (row < src.rows) {
            pack(isa, src.data + row * src.cols, next, src.cols);
            along.apply(next);
        } else {
            std::fill_n(next, words, 0);
        }
        down.push();
        if (row < below) continue;
        unite(down.span(highest, 0), down.span(highest, size.height - (1 << highest)), result.data());
        kernels::unpack_bits(isa, result.data(), out + (row - below) * src.cols, src.cols, invert);
    }
}

}  // namespace

void dilate_binary(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    or_window(src, size, isa, kernels::pack_nonzero, 0, out);
}

// A pixel survives where no pixel of its window is background: the complement of a
// dilation of the background.
void erode_binary(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out) {
    or_window(src, size, isa, kernels::pack_below_128, 255, out);
}

}  // namespace orvex_cv_991
