#include "base/block.h"

#include <algorithm>
#include <limits>
#include <new>

namespace orvex_cv_991 {

using orvex_991::CException;

template <class T>
void create_unfilled(Mat<T>& mat, int rows, int cols, int channels) {
    delete[] mat.data;
    mat.data = nullptr;
    mat.rows = mat.dims_rows = rows;
    mat.cols = mat.dims_cols = cols;
    mat.channels = channels;
    mat.step = wrap_mul(wrap_mul(cols, channels), static_cast<int>(sizeof(T)));
    mat.elem_size = wrap_mul(channels, static_cast<int>(sizeof(T)));
    const int n = wrapped_count(rows, cols, channels);
    if (n >= 0) mat.data = new (std::nothrow) T[static_cast<std::size_t>(n)];
    if (!mat.data) throw CException(3);
}

template <class T>
void init_output(Mat<T>& dst, int rows, int cols, int channels) {
    create_unfilled(dst, rows, cols, channels);
    if (held_elements(dst) >= 0) return;
    std::fill_n(dst.data, block_length(dst), T());
    throw CException(3);
}

template <class T>
void init_output_then_throw(Mat<T>& dst, int rows, int cols, int channels) {
    create_unfilled(dst, rows, cols, channels);
    std::fill_n(dst.data, block_length(dst), T());
    throw CException(3);
}

template <class T>
int64_t held_elements(const Mat<T>& mat) {
    const int64_t area = static_cast<int64_t>(mat.rows) * mat.cols;
    if (area == 0 || mat.channels == 0) return 0;
    if (!mat.data) return -1;
    constexpr int64_t kMost = std::numeric_limits<int>::max();
    if (area > kMost || area < -kMost) return -1;  // with it, area * channels fits 64 bits
    const int64_t count = area * mat.channels;
    return count >= 0 && count <= kMost ? count : -1;
}

template <class T>
void require_elements(const Mat<T>& mat, int64_t n) {
    if (held_elements(mat) < n) throw CException(3);
}

template <class T>
int require_pixels(const Mat<T>& mat) {
    const int64_t n = static_cast<int64_t>(mat.rows) * mat.cols;
    require_elements(mat, std::max<int64_t>(n, 0));
    // Without channels, a block of no elements may have a product that int does not hold.
    if (n < std::numeric_limits<int>::min()) throw CException(3);
    return static_cast<int>(n);
}

template <class T>
int require_counted_pixels(const Mat<T>& mat) {
    const int n = wrapped_count(mat.rows, mat.cols, 1);
    if (n >= 1) require_elements(mat, n);
    return n;
}

template void create_unfilled(Mat<unsigned char>&, int, int, int);
template void create_unfilled(Mat<float>&, int, int, int);
template void create_unfilled(Mat<int>&, int, int, int);
template void init_output(Mat<unsigned char>&, int, int, int);
template void init_output(Mat<int>&, int, int, int);
template void init_output_then_throw(Mat<unsigned char>&, int, int, int);
template void init_output_then_throw(Mat<int>&, int, int, int);
template int64_t held_elements(const Mat<unsigned char>&);
template void require_elements(const Mat<unsigned char>&, int64_t);
template void require_elements(const Mat<float>&, int64_t);
template int require_pixels(const Mat<unsigned char>&);
template int require_counted_pixels(const Mat<unsigned char>&);

}  // namespace orvex_cv_991
