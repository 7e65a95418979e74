#include "cv_mat.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "base/block.h"
#include "util_exception.h"

namespace orvex_cv_991 {

namespace {

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
    std::size_t i = 0;
    for (uint64_t word; i + sizeof word <= n; i += sizeof word) {
        std::memcpy(&word, bytes + i, sizeof word);
        word = ~word;
        std::memcpy(bytes + i, &word, sizeof word);
    }
    for (; i < n; ++i) bytes[i] = static_cast<unsigned char>(~bytes[i]);
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

}  // namespace orvex_cv_991
