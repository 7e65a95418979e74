#include "arrays.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "call.h"
#include "util_exception.h"

namespace orvex_python {

using orvex_991::vector;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;

namespace {

// Borrowed for good: the package's modules stay loaded as long as this one.
struct Tuples {
    py::handle point, point32f, rect, rotated_rect;
} tuples;

std::string type_of(const py::handle& value) {
    return Py_TYPE(value.ptr())->tp_name;
}

[[noreturn]] void wrong_type(const char* name, const std::string& wanted, const std::string& given) {
    throw py::type_error(std::string(name) + ": " + wanted + " wanted, " + given + " given");
}

[[noreturn]] void wrong_value(const char* name, const std::string& wanted, const std::string& given) {
    throw py::value_error(std::string(name) + ": " + wanted + " wanted, " + given + " given");
}

std::string dimensions_of(const py::array& array) {
    const py::ssize_t n = array.ndim();
    return n == 1 ? "1 dimension" : std::to_string(n) + " dimensions";
}

/// The array itself when it is dense, else a dense copy.
template <class T>
py::array_t<T> dense(const py::handle& value, const char* name, const char* type) {
    if (!py::isinstance<py::array>(value))
        wrong_type(name, std::string("a numpy array of ") + type, type_of(value));
    if (!py::isinstance<py::array_t<T>>(value))
        wrong_type(name, type, py::str(value.attr("dtype")).cast<std::string>());
    const auto given = py::reinterpret_borrow<py::array>(value);
    if (given.size() > INT_MAX)  // before it is copied
        wrong_value(name, "at most 2147483647 elements", std::to_string(given.size()));
    for (py::ssize_t k = 0; k < given.ndim(); ++k)  // of no elements, extents may be larger
        if (given.shape(k) > INT_MAX)
            wrong_value(name, "extents of at most 2147483647", std::to_string(given.shape(k)));
    auto array = py::array_t<T, py::array::c_style>::ensure(given);
    if (!array) throw py::error_already_set();
    return array;
}

template <class T>
void set_shape(Mat<T>& mat, const py::array& array) {
    mat.rows = mat.dims_rows = static_cast<int>(array.shape(0));
    mat.cols = mat.dims_cols = static_cast<int>(array.shape(1));
    mat.channels = array.ndim() == 3 ? static_cast<int>(array.shape(2)) : 1;
    mat.elem_size = mat.channels * static_cast<int>(sizeof(T));
    mat.step = mat.cols * mat.elem_size;
}

/// The items of a sequence of so many.
py::object items_of(const py::handle& value, const char* name, py::ssize_t count, const char* wanted) {
    if (!PySequence_Check(value.ptr())) wrong_type(name, wanted, type_of(value));
    auto items = py::reinterpret_steal<py::object>(PySequence_Fast(value.ptr(), wanted));
    if (!items) throw py::error_already_set();
    const py::ssize_t given = PySequence_Fast_GET_SIZE(items.ptr());
    if (count >= 0 && given != count) wrong_value(name, wanted, std::to_string(given));
    return items;
}

py::handle item(const py::object& items, py::ssize_t at) {
    return PySequence_Fast_GET_ITEM(items.ptr(), at);
}

/// A list of rows of so many integers, from an array or from a sequence of tuples.
template <class T>
vector<T> rows_of(const py::handle& value, const char* name, T (*one)(const py::handle&, const char*)) {
    constexpr py::ssize_t kWidth = sizeof(T) / sizeof(int);
    static_assert(sizeof(T) == kWidth * sizeof(int));
    vector<T> list;
    if (!py::isinstance<py::array>(value)) {
        const py::object items = items_of(value, name, -1, "an int32 array or a sequence of tuples");
        const py::ssize_t count = PySequence_Fast_GET_SIZE(items.ptr());
        for (py::ssize_t k = 0; k < count; ++k) list.push_back(one(item(items, k), name));
        return list;
    }
    const auto array = dense<int>(value, name, "int32");
    if (array.ndim() != 2 || array.shape(1) != kWidth)
        wrong_value(name, "N x " + std::to_string(kWidth), py::str(array.attr("shape")).cast<std::string>());
    const int count = static_cast<int>(array.shape(0));
    list = vector<T>(count);
    if (count > 0) std::memcpy(static_cast<void*>(list.data), array.data(), sizeof(T) * count);
    return list;
}

/// An array on a block of array new, which it ends.
template <class T, class Element>
py::array owning(std::unique_ptr<T[]> block, std::vector<py::ssize_t> shape) {
    const py::capsule owner(block.get(), [](void* data) { delete[] static_cast<T*>(data); });
    T* const data = block.release();
    return py::array_t<Element>(std::move(shape), reinterpret_cast<Element*>(data), owner);
}

template <class T>
py::array from_mat(Mat<T>&& mat) {
    const int64_t area = static_cast<int64_t>(mat.rows) * mat.cols;
    const bool negative = mat.rows < 0 || mat.cols < 0 || mat.channels < 0;
    // A count that wraps makes a block smaller than its shape.
    if (negative || area > INT_MAX || area * mat.channels > INT_MAX)
        raise_error(orvex_991::CException(3), {});
    std::vector<py::ssize_t> shape = {mat.rows, mat.cols};
    if (mat.channels != 1) shape.push_back(mat.channels);
    if (!mat.data) return py::array_t<T>(shape);  // an image without pixels
    return owning<T, T>(std::unique_ptr<T[]>(std::exchange(mat.data, nullptr)), std::move(shape));
}

template <class Element, class T>
py::array from_vector(vector<T>&& list, py::ssize_t width) {
    std::vector<py::ssize_t> shape = {list.size()};
    if (width > 0) shape.push_back(width);
    if (!list.data) return py::array_t<Element>(shape);
    list.size = list.capacity = 0;
    return owning<T, Element>(std::unique_ptr<T[]>(std::exchange(list.data, nullptr)), std::move(shape));
}

}  // namespace

void init_arrays() {
    const py::object types = py::module_::import("orvex_991._types");
    tuples.point = py::getattr(types, "Point").release();
    tuples.point32f = py::getattr(types, "Point32f").release();
    tuples.rect = py::getattr(types, "Rect").release();
    tuples.rotated_rect = py::getattr(types, "RotatedRect").release();
}

Image::Image(const py::handle& value, const char* name) : Image(value, name, false) {}

Image::Image(const py::handle& value, const char* name, bool or_none) {
    if (or_none && value.is_none()) return;
    auto array = dense<unsigned char>(value, name, "uint8");
    if (array.ndim() != 2 && array.ndim() != 3) wrong_value(name, "2 or 3 dimensions", dimensions_of(array));
    set_shape(mat_, array);
    mat_.data = const_cast<unsigned char*>(array.data());
    kept_ = std::move(array);
}

py::array_t<unsigned char> bytes_of(const py::handle& value, const char* name) {
    auto array = dense<unsigned char>(value, name, "uint8");
    if (array.ndim() != 1 && array.ndim() != 2) wrong_value(name, "1 or 2 dimensions", dimensions_of(array));
    return array;
}

Mat<float> matrix_of(const py::handle& value, const char* name) {
    const auto array = dense<float>(value, name, "float32");
    if (array.ndim() != 2) wrong_value(name, "2 dimensions", dimensions_of(array));
    Mat<float> mat;
    mat.mat_create(static_cast<int>(array.shape(0)), static_cast<int>(array.shape(1)), 1, 0);
    if (array.size() > 0) std::memcpy(mat.data, array.data(), sizeof(float) * array.size());
    return mat;
}

int int_of(const py::handle& value, const char* name) {
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!index) {
        PyErr_Clear();
        wrong_type(name, "an integer", type_of(value));
    }
    int overflow = 0;
    const long number = PyLong_AsLongAndOverflow(index.ptr(), &overflow);
    if (overflow != 0 || number < INT_MIN || number > INT_MAX)
        wrong_value(name, "an integer of 32 bits", py::str(index).cast<std::string>());
    return static_cast<int>(number);
}

double double_of(const py::handle& value, const char* name) {
    const double number = PyFloat_AsDouble(value.ptr());
    if (number == -1 && PyErr_Occurred()) {
        PyErr_Clear();
        wrong_type(name, "a number", type_of(value));
    }
    return number;
}

float float_of(const py::handle& value, const char* name) {
    return static_cast<float>(double_of(value, name));
}

Point point_of(const py::handle& value, const char* name) {
    const py::object items = items_of(value, name, 2, "(x, y)");
    return Point(int_of(item(items, 0), name), int_of(item(items, 1), name));
}

Point32f point32f_of(const py::handle& value, const char* name) {
    const py::object items = items_of(value, name, 2, "(x, y)");
    return Point32f(float_of(item(items, 0), name), float_of(item(items, 1), name));
}

Size size_of(const py::handle& value, const char* name) {
    const py::object items = items_of(value, name, 2, "(width, height)");
    return Size(int_of(item(items, 0), name), int_of(item(items, 1), name));
}

Rect rect_of(const py::handle& value, const char* name) {
    const py::object items = items_of(value, name, 4, "(x, y, width, height)");
    return Rect(int_of(item(items, 0), name), int_of(item(items, 1), name), int_of(item(items, 2), name),
                int_of(item(items, 3), name));
}

RotatedRect rotated_rect_of(const py::handle& value, const char* name) {
    const py::object items = items_of(value, name, 5, "(pts, center, width, height, angle)");
    const py::object corners = items_of(item(items, 0), name, -1, "corners (x, y)");
    RotatedRect rect;
    for (py::ssize_t k = 0; k < PySequence_Fast_GET_SIZE(corners.ptr()); ++k)
        rect.pts.push_back(point32f_of(item(corners, k), name));
    rect.center = point32f_of(item(items, 1), name);
    rect.width = int_of(item(items, 2), name);
    rect.height = int_of(item(items, 3), name);
    rect.angle = float_of(item(items, 4), name);
    return rect;
}

vector<Point> points_of(const py::handle& value, const char* name) {
    return rows_of<Point>(value, name, point_of);
}

vector<Rect> rects_of(const py::handle& value, const char* name) {
    return rows_of<Rect>(value, name, rect_of);
}

py::array to_python(U8&& mat) {
    return from_mat(std::move(mat));
}

py::array to_python(Mat<float>&& mat) {
    return from_mat(std::move(mat));
}

py::array to_python(Mat<int>&& mat) {
    return from_mat(std::move(mat));
}

py::array to_python(vector<unsigned char>&& list) {
    return from_vector<unsigned char>(std::move(list), 0);
}

py::array to_python(vector<float>&& list) {
    return from_vector<float>(std::move(list), 0);
}

py::array to_python(vector<Point>&& points) {
    return from_vector<int>(std::move(points), 2);
}

py::array to_python(vector<Rect>&& rects) {
    return from_vector<int>(std::move(rects), 4);
}

py::object to_python(const Point& point) {
    return tuples.point(point.x, point.y);
}

py::object to_python(const Rect& rect) {
    return tuples.rect(rect.x, rect.y, rect.width, rect.height);
}

py::object to_python(const RotatedRect& rect) {
    py::list corners;
    for (int k = 0; k < rect.pts.size; ++k)
        corners.append(tuples.point32f(rect.pts.data[k].x, rect.pts.data[k].y));
    const py::object center = tuples.point32f(rect.center.x, rect.center.y);
    return tuples.rotated_rect(py::tuple(corners), center, rect.width, rect.height, rect.angle);
}

}  // namespace orvex_python
