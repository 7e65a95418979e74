// Internal: what a matrix's block really holds, and blocks without the fill.
#ifndef ORVEX_991_BASE_BLOCK_H
#define ORVEX_991_BASE_BLOCK_H

#include <cstdint>

#include "cv_mat.h"
#include "base/numeric.h"

namespace orvex_cv_991 {

/// rows * cols * channels as mat_create counts it: in wrapping signed 32 bits.
inline int wrapped_count(int rows, int cols, int channels) {
    return wrap_mul(wrap_mul(cols, rows), channels);
}

/// mat_create without the fill, for outputs that are wholly overwritten: elements are indeterminate.
/// @throws CException code 3 as mat_create
template <class T>
void create_unfilled(Mat<T>& mat, int rows, int cols, int channels);

/// Elements in the block, or -1 when there is none or the true count is not the one that mat_create
/// allocated.
template <class T>
int64_t held_elements(const Mat<T>& mat);

/// Mat::init for an output that is wholly written next, hence without the fill.
/// @param readable whether the operation can go on, which it also cannot when the output's true size is not
/// the
///        one allocated
/// @throws CException code 3 if it cannot; the output then has its new shape and is zero
template <class T>
void init_output(Mat<T>& dst, int rows, int cols, int channels, bool readable);

/// Gives the same answer for every way in which a matrix can be too small for the loop that follows.
/// @throws CException code 3 unless the block of `mat` holds at least `n` elements
template <class T>
void require_elements(const Mat<T>& mat, int64_t n) {
    if (held_elements(mat) < n) throw orvex_991::CException(3);
}

/// rows * cols, once it is certain that so many elements can be read from the block.
/// @throws CException code 3 otherwise
template <class T>
int require_pixels(const Mat<T>& mat) {
    const int64_t n = static_cast<int64_t>(mat.rows) * mat.cols;
    require_elements(mat, n > 0 ? n : 0);
    return static_cast<int>(n);
}

extern template void create_unfilled(Mat<unsigned char>&, int, int, int);
extern template void create_unfilled(Mat<float>&, int, int, int);
extern template void create_unfilled(Mat<int>&, int, int, int);
extern template void init_output(Mat<unsigned char>&, int, int, int, bool);
extern template void init_output(Mat<int>&, int, int, int, bool);
extern template int64_t held_elements(const Mat<unsigned char>&);
extern template int64_t held_elements(const Mat<float>&);
extern template int64_t held_elements(const Mat<int>&);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_BASE_BLOCK_H
