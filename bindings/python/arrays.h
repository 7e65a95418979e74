// Arguments and results: numpy arrays, tuples and numbers on Python's side, the library's values on the other.
//
// Every error names the argument: TypeError for what is of another type, ValueError for what does not fit. What the
// library can be told, it is told: which extents and channels an operation takes is its own check.
#ifndef ORVEX_BINDINGS_PYTHON_ARRAYS_H
#define ORVEX_BINDINGS_PYTHON_ARRAYS_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <vector>

#include "cv_imgproc.h"

namespace orvex_python {

namespace py = pybind11;

using U8 = orvex_cv_991::CImgproc::U8;

/// Finds the package's tuples; once a module, before its first call.
void init_arrays();

/// An image argument, H x W or H x W x C bytes of any strides, as a matrix of the library. A dense array is borrowed,
/// others are copied. Made and ended with the interpreter's lock.
class Image {
 public:
    /// @param value  the argument
    /// @param name   what errors call it
    Image(const py::handle& value, const char* name);
    ~Image() { mat_.data = nullptr; }  // the array's
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// None stands for an image without pixels.
    static Image or_empty(const py::handle& value, const char* name) { return Image(value, name, true); }

    /// Never written.
    const U8& operator*() const { return mat_; }
    const U8* operator->() const { return &mat_; }

 private:
    py::object kept_;
    U8 mat_;

    Image(const py::handle& value, const char* name, bool or_none);
};

/// A contiguous uint8 array of 1 or 2 dimensions: itself if it is dense, else a copy.
py::array_t<unsigned char> bytes_of(const py::handle& value, const char* name);

/// A copy of a two-dimensional float32 array.
orvex_cv_991::Mat<float> matrix_of(const py::handle& value, const char* name);

// Numbers and tuples. Whole numbers are what has __index__, in int's range; others what has __float__.
int int_of(const py::handle& value, const char* name);
double double_of(const py::handle& value, const char* name);
float float_of(const py::handle& value, const char* name);
orvex_cv_991::Point point_of(const py::handle& value, const char* name);
orvex_cv_991::Point32f point32f_of(const py::handle& value, const char* name);
orvex_cv_991::Size size_of(const py::handle& value, const char* name);
orvex_cv_991::Rect rect_of(const py::handle& value, const char* name);
orvex_cv_991::RotatedRect rotated_rect_of(const py::handle& value, const char* name);

/// An N x 2 int32 array, or a sequence of pairs.
orvex_991::vector<orvex_cv_991::Point> points_of(const py::handle& value, const char* name);
/// An N x 4 int32 array, or a sequence of quadruples.
orvex_991::vector<orvex_cv_991::Rect> rects_of(const py::handle& value, const char* name);

// Results. Arrays own the block that the library has made; nothing is copied.

/// H x W for 1 channel, otherwise H x W x C.
/// Raises orvex_991.Error of code 3 for a matrix that does not hold what its shape says
py::array to_python(U8&& mat);
py::array to_python(orvex_cv_991::Mat<float>&& mat);
py::array to_python(orvex_cv_991::Mat<int>&& mat);
py::array to_python(orvex_991::vector<unsigned char>&& list);
py::array to_python(orvex_991::vector<float>&& list);
/// N x 2
py::array to_python(orvex_991::vector<orvex_cv_991::Point>&& points);
/// N x 4
py::array to_python(orvex_991::vector<orvex_cv_991::Rect>&& rects);
/// A list of arrays.
template <class T>
py::list to_python(orvex_991::vector<orvex_991::vector<T>>&& lists) {
    py::list all;
    for (int k = 0; k < lists.size; ++k) all.append(to_python(std::move(lists.data[k])));
    return all;
}
// The package's named tuples.
py::object to_python(const orvex_cv_991::Point& point);
py::object to_python(const orvex_cv_991::Rect& rect);
py::object to_python(const orvex_cv_991::RotatedRect& rect);

}  // namespace orvex_python

#endif  // ORVEX_BINDINGS_PYTHON_ARRAYS_H
