// Internal: what a matrix's block really holds, and blocks without the fill.
#ifndef ORVEX_991_BASE_BLOCK_H
#define ORVEX_991_BASE_BLOCK_H

#include <cstddef>
#include <cstdint>

#include "base/numeric.h"
#include "cv_mat.h"

namespace orvex_cv_991 {

/// rows * cols * channels as mat_create counts it: in wrapping signed 32 bits.
inline int wrapped_count(int rows, int cols, int channels) {
    return wrap_mul(wrap_mul(cols, rows), channels);
}

/// Elements that may be copied or filled: the block's own length, whatever the shape says about it.
template <class T>
std::size_t block_length(const Mat<T>& mat) {
    const int n = wrapped_count(mat.rows, mat.cols, mat.channels);
    return mat.data && n > 0 ? static_cast<std::size_t>(n) : 0;
}

/// mat_create without the fill, for outputs that are wholly overwritten: elements are indeterminate.
/// @throws CException code 3 as mat_create
template <class T>
void create_unfilled(Mat<T>& mat, int rows, int cols, int channels);

/// Mat::init for an output that is wholly written next, hence without the fill.
/// @throws CException code 3 as mat_create, or when the true size of the shape is not the one allocated;
///         the output then is zero
template <class T>
void init_output(Mat<T>& dst, int rows, int cols, int channels);

/// Mat::init for an operation that initialises its output and then finds that it cannot read its source:
/// the output takes its shape and is zero.
/// @throws CException code 3, always
template <class T>
[[noreturn]] void init_output_then_throw(Mat<T>& dst, int rows, int cols, int channels);

/// Elements in the block, or -1 when there is none or the true count is not the one
/// that mat_create allocated.
template <class T>
int64_t held_elements(const Mat<T>& mat);

/// Gives the same answer for every way in which a matrix can be too small for the loop that follows.
/// @throws CException code 3 unless the block of `mat` holds at least `n` elements
template <class T>
void require_elements(const Mat<T>& mat, int64_t n);

/// rows * cols, once it is certain that so many elements can be read from the block.
/// @throws CException code 3 otherwise, and for a shape that mat_create could not allocate
template <class T>
int require_pixels(const Mat<T>& mat);

/// rows * cols for a loop that counts in wrapping 32 bits: with a product below 1 it reads nothing, so
/// such a shape is as good as any, with or without a block.
/// @throws CException code 3 when the product is 1 or more and so many elements cannot be read
template <class T>
int require_counted_pixels(const Mat<T>& mat);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_BASE_BLOCK_H
