#include "cv_mat.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "base/block.h"
#include "base/numeric.h"
#include "util_exception.h"

namespace orvex_cv_991 {

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
    if (!mat.data) throw orvex_991::CException(3);
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

namespace {

// Elements that may be copied or filled: the block's own length, whatever the shape says about it.
template <class T>
std::size_t block_length(const Mat<T>& mat) {
    const int n = wrapped_count(mat.rows, mat.cols, mat.channels);
    return mat.data && n > 0 ? static_cast<std::size_t>(n) : 0;
}

template <class T>
void copy_pixels(const Mat<T>& from, Mat<T>& to) {
    create_unfilled(to, from.rows, from.cols, from.channels);
    const std::size_t n = block_length(to);
    if (n == 0) return;
    if (!from.data) {
        delete[] std::exchange(to.data, nullptr);
        throw orvex_991::CException(3);
    }
    std::memcpy(to.data, from.data, n * sizeof(T));
}

}  // namespace

template <class T>
void init_output(Mat<T>& dst, int rows, int cols, int channels, bool readable) {
    create_unfilled(dst, rows, cols, channels);
    if (readable && held_elements(dst) >= 0) return;
    std::fill_n(dst.data, block_length(dst), T());
    throw orvex_991::CException(3);
}

template <class T>
Mat<T>::Mat(const Mat& other) : Mat() {
    copy_pixels(other, *this);
}

template <class T>
Mat<T>::Mat(Mat&& other) noexcept {
    swap(other);
}

template <class T>
Mat<T>::~Mat() {
    delete[] data;
}

template <class T>
void Mat<T>::mat_create(int rows_, int cols_, int channels_, int fill) {
    create_unfilled(*this, rows_, cols_, channels_);
    std::fill_n(data, block_length(*this), static_cast<T>(fill));
}

template <class T>
void Mat<T>::init(int rows_, int cols_, int channels_, int fill) {
    mat_create(rows_, cols_, channels_, fill);
}

template <class T>
Mat<T> Mat<T>::clone() const {
    return Mat(*this);
}

template <class T>
Mat<T>& Mat<T>::operator=(const Mat& other) {
    if (this != &other) copy_pixels(other, *this);
    return *this;
}

template <class T>
Mat<T>& Mat<T>::operator=(Mat&& other) noexcept {
    if (this != &other) {
        Mat taken(std::move(other));
        swap(taken);
    }
    return *this;
}

template <class T>
Mat<T>& Mat<T>::operator=(const T& value) {
    ORVEX_CHECK(1 == channels);
    const T kept = value;  // `value` may be one of the elements
    std::fill_n(data, block_length(*this), kept);
    return *this;
}

template <class T>
Mat<T>& Mat<T>::operator~() {
    ORVEX_CHECK(1 == channels);
    unsigned char* const bytes = reinterpret_cast<unsigned char*>(data);
    const std::size_t n = block_length(*this) * sizeof(T);
    for (std::size_t i = 0; i < n; ++i) bytes[i] = static_cast<unsigned char>(~bytes[i]);
    return *this;
}

template <class T>
void Mat<T>::swap(Mat& other) noexcept {
    std::swap(rows, other.rows);
    std::swap(cols, other.cols);
    std::swap(channels, other.channels);
    std::swap(data, other.data);
    std::swap(dims_rows, other.dims_rows);
    std::swap(dims_cols, other.dims_cols);
    std::swap(step, other.step);
    std::swap(elem_size, other.elem_size);
}

template class Mat<unsigned char>;
template class Mat<float>;
template class Mat<int>;

template void create_unfilled(Mat<unsigned char>&, int, int, int);
template void create_unfilled(Mat<float>&, int, int, int);
template void create_unfilled(Mat<int>&, int, int, int);
template void init_output(Mat<unsigned char>&, int, int, int, bool);
template void init_output(Mat<int>&, int, int, int, bool);
template int64_t held_elements(const Mat<unsigned char>&);
template int64_t held_elements(const Mat<float>&);
template int64_t held_elements(const Mat<int>&);

}  // namespace orvex_cv_991
