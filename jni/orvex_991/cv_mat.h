#ifndef ORVEX_991_CV_MAT_H
#define ORVEX_991_CV_MAT_H

#include <cstddef>

#include "util_diag.h"

namespace orvex_cv_991 {

/// Dense row-major image with interleaved channels that owns its pixels; copies are deep.
///
/// Element (row, col, k) is data[(row * cols + col) * channels + k]. Instantiated for unsigned char (images,
/// masks), float (affine matrices) and int (label images).
template <class T>
class Mat {
 public:
    int rows = 0;       ///< extent downward
    int cols = 0;       ///< extent to the right
    int channels = 0;   ///< elements a pixel
    T* data = nullptr;  ///< owned; array new / array delete
    int dims_rows = 0;  ///< as rows, written by mat_create alone
    int dims_cols = 0;  ///< as cols, written by mat_create alone
    int step = 0;       ///< bytes a row
    int elem_size = 0;  ///< bytes a pixel

    Mat() = default;
    /// @throws CException code 3 when the copy cannot be allocated, or when `other` has a shape but no pixels
    Mat(const Mat& other);
    /// Takes the other's pixels and leaves it empty, all fields 0.
    Mat(Mat&& other) noexcept;
    ~Mat();

    /// Releases the old pixels, allocates rows x cols x channels elements and sets each to `fill` converted
    /// to T (to unsigned char: its low 8 bits).
    ///
    /// The element count is computed in wrapping signed 32-bit arithmetic. A negative count throws; so two
    /// negative extents make a block, and a count that wraps to 0 or above makes a block of that many
    /// elements (operations that would look beyond them refuse such a matrix with code 3).
    /// @throws CException code 3, nothing printed; the shape fields keep the new values and data is null
    void mat_create(int rows, int cols, int channels, int fill);

    /// mat_create that also zeroes rows, cols and channels first.
    void init(int rows, int cols, int channels, int fill);

    /// A deep copy.
    /// @throws CException code 3 as the copy constructor
    Mat clone() const;

    /// Deep copy; assigning a matrix to itself changes nothing.
    /// @throws CException code 3 as the copy constructor; this matrix has lost its pixels then
    Mat& operator=(const Mat& other);
    /// Takes the other's pixels and leaves it empty; assigning a matrix to itself changes nothing.
    Mat& operator=(Mat&& other) noexcept;

    /// Sets every element to `value`.
    /// @checks "1 == channels", code 1
    Mat& operator=(const T& value);

    /// Complements every bit of every element in place.
    /// @checks "1 == channels", code 1
    Mat& operator~();

    /// Element of a 1-channel matrix. Negative indices are the caller's to avoid: they are not checked.
    /// @checks "row < rows && col < cols && 1 == channels", code 1
    T& at(int row, int col) {
        ORVEX_CHECK(row < rows && col < cols && 1 == channels);
        return data[static_cast<std::ptrdiff_t>(row) * cols + col];
    }
    /// As above, to read.
    const T& at(int row, int col) const {
        ORVEX_CHECK(row < rows && col < cols && 1 == channels);
        return data[static_cast<std::ptrdiff_t>(row) * cols + col];
    }

    /// True when there are no rows or no columns.
    bool empty() const { return rows == 0 || cols == 0; }

    /// Exchanges all eight fields.
    void swap(Mat& other) noexcept;
};

extern template class Mat<unsigned char>;
extern template class Mat<float>;
extern template class Mat<int>;

}  // namespace orvex_cv_991

#endif  // ORVEX_991_CV_MAT_H
