// Inputs of operations, made from the bytes that a fuzzer gives: shapes, contents, arguments and what outputs
// held before. Every byte string makes some input, and what is missing at its end counts as 0. Blocks are
// exactly as long as their elements, so that the address sanitizer sees every byte beyond.
#ifndef ORVEX_FUZZ_READER_H
#define ORVEX_FUZZ_READER_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "cv_imgproc.h"
#include "images.h"
#include "types.h"

namespace fuzzing {

using testing_support::U8;

struct Shape {
    int rows, cols, channels;
};

/// Whether a block of that shape, with 1, 3 or its own channels, has at most `most` elements after its count
/// has wrapped, and the plain reference has no more pixels to walk over: nothing larger is asked for.
bool affordable(const Shape& shape, int most);

/// Where more than one thing is read in an expression, braces keep the order: that of a function's arguments is
/// the compiler's, and an input must mean the same to all of them.
class Reader {
 public:
    Reader(const unsigned char* data, size_t n) : next_(data), end_(data + n) {}

    size_t left() const { return static_cast<size_t>(end_ - next_); }
    int byte() { return next_ == end_ ? 0 : *next_++; }
    uint32_t word();
    bool flag() { return byte() % 2 != 0; }
    /// One time in 16 for random bytes, never for missing ones.
    bool seldom() { return byte() >= 240; }
    /// low .. high, both inclusive.
    int range(int low, int high);
    template <class T>
    T pick(std::initializer_list<T> of) {
        return of.begin()[range(0, static_cast<int>(of.size()) - 1)];
    }
    /// Mostly small, sometimes at the ends of int.
    int integer();
    /// Mostly small with few bits; sometimes huge, tiny, infinite or not a number.
    float number();
    orvex_cv_991::Point point();
    orvex_cv_991::Rect rect();
    /// Any extents, negative ones and 0 included.
    orvex_cv_991::Size size();
    /// All that is left.
    std::vector<unsigned char> rest();

    /// An image's extent, 1 or more.
    int side();
    /// Mostly `channels` and at most `most` pixels; seldom one that no loop over rows and columns fits.
    Shape shape(int channels, int most);
    /// The matrix of a shape, exactly as long as its elements, or what mat_create leaves of it.
    U8 image(const Shape& shape);
    U8 image(int channels, int most) { return image(shape(channels, most)); }
    /// What an output may have held before: nothing, the shape of `src`, or another one.
    U8 previous(const U8& src);
    /// A mask of about the size of `src`, sometimes empty or of another shape.
    U8 mask(const U8& src);

 private:
    const unsigned char* next_;
    const unsigned char* end_;

    void fill(U8& m, size_t n);
};

/// The same elements without the room that growth left behind them: the block ends where the list does.
template <class T>
orvex_991::vector<T> without_room(const orvex_991::vector<T>& list) {
    orvex_991::vector<T> exact;
    exact.reserve(list.size);
    return exact += list;
}

}  // namespace fuzzing

#endif  // ORVEX_FUZZ_READER_H
