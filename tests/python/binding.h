// What tests/bindings/bound_calls.cpp needs of Python: arguments become numpy arrays and tuples, and results, errors and
// printed lines come back from the package.
#ifndef ORVEX_TESTS_PYTHON_BINDING_H
#define ORVEX_TESTS_PYTHON_BINDING_H

#include <fcntl.h>
#include <pybind11/embed.h>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "cv_imgproc.h"

namespace binding {

namespace py = pybind11;
using orvex_991::CException;
using orvex_991::vector;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;
using U8 = Mat<unsigned char>;

using Value = py::object;

inline const py::object& package() {
    static const py::object* const loaded = [] {
        new py::scoped_interpreter;  // to the end of the program, since modules of C do not all end well
        return new py::object(py::module_::import("orvex_991"));
    }();
    return *loaded;
}

/// Before the first value is made.
inline void load() {
    package();
}

/// Keeps what the library prints off standard output.
class Quiet {
 public:
    Quiet() {
        std::fflush(stdout);
        saved_ = dup(STDOUT_FILENO);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~Quiet() {
        std::fflush(stdout);
        dup2(saved_, STDOUT_FILENO);
        close(saved_);
    }

 private:
    int saved_;
};

// Whether Python has an argument of that kind.
template <class T>
bool expressible(const T&) {
    return true;
}
template <class T>
bool expressible(const Mat<T>& mat) {
    if (mat.rows < 0 || mat.cols < 0 || mat.channels < 0) return false;
    const int64_t area = static_cast<int64_t>(mat.rows) * mat.cols;
    if (area > INT_MAX || area * mat.channels > INT_MAX) return false;
    if (sizeof(T) != 1 && mat.channels != 1) return false;  // matrices are two-dimensional
    return mat.data || area * mat.channels == 0;
}

/// Whether a call can be told what its output holds before.
inline bool can_start_from(const U8& dst, const U8&, bool) {
    return expressible(dst);
}

// Arguments in Python's terms.
template <class T>
py::object given(const Mat<T>& mat) {
    std::vector<py::ssize_t> shape = {mat.rows, mat.cols};
    if (mat.channels != 1) shape.push_back(mat.channels);
    py::array_t<T> array(shape);
    if (array.size() > 0) std::memcpy(array.mutable_data(), mat.data, sizeof(T) * array.size());
    return std::move(array);
}
inline py::object given(int value) {
    return py::int_(value);
}
inline py::object given(double value) {
    return py::float_(value);
}
inline py::object given(bool value) {
    return py::bool_(value);
}
inline py::object given(const Point& p) {
    return package().attr("Point")(p.x, p.y);
}
inline py::object given(const Point32f& p) {
    return package().attr("Point32f")(p.x, p.y);
}
inline py::object given(const Size& size) {
    return package().attr("Size")(size.width, size.height);
}
inline py::object given(const Rect& r) {
    return package().attr("Rect")(r.x, r.y, r.width, r.height);
}
template <class T>
py::object given(const vector<T>& list) {
    py::list items;
    for (int k = 0; k < list.size; ++k) items.append(given(list[k]));
    return std::move(items);
}
inline py::object given(const RotatedRect& rect) {
    return package().attr("RotatedRect")(py::tuple(given(rect.pts)), given(rect.center), rect.width,
                                         rect.height, rect.angle);
}

inline py::object bytes_from(const unsigned char* data, int n) {
    py::array_t<unsigned char> array(n);
    if (n > 0) std::memcpy(array.mutable_data(), data, static_cast<size_t>(n));
    return std::move(array);
}

/// Prints the lines of a log as the library would have.
inline void print(const py::object& lines) {
    for (const py::handle line : lines)
        std::puts(PyBytes_AsString(py::bytes(line.attr("encode")("utf-8", "surrogateescape")).ptr()));
}

/// Throws what the library throws where Python has raised `error`; ends the program for other exceptions.
[[noreturn]] inline void throw_in_cpp(const py::error_already_set& error) {
    if (error.matches(PyExc_MemoryError)) throw std::bad_alloc();
    if (!error.matches(package().attr("Error"))) {
        std::fprintf(stderr, "%s\n", error.what());
        std::abort();
    }
    const std::string message = error.value().attr("message").cast<std::string>();
    throw CException(error.value().attr("code").cast<int>(), message.c_str());
}

/// Calls a function of the package and prints its lines.
/// @throws what the library throws
inline py::object call(const char* name, const std::vector<py::object>& given_arguments, const U8* dst) {
    const py::tuple arguments = py::tuple(py::cast(given_arguments));
    py::dict keywords;
    if (dst) keywords["dst"] = given(*dst);
    const py::object log = package().attr("log")();
    const py::object lines = log.attr("__enter__")();
    const auto end_log = [&] {
        log.attr("__exit__")(py::none(), py::none(), py::none());
        print(lines);
    };
    try {
        const py::object result = package().attr(name)(*arguments, **keywords);
        end_log();
        return result;
    } catch (const py::error_already_set& error) {
        end_log();
        throw_in_cpp(error);
    }
}

// Results in C++'s terms.

template <class T>
void take(const py::object& result, Mat<T>& mat) {
    const auto array = py::array_t<T>::ensure(result);
    const int channels = array.ndim() == 3 ? static_cast<int>(array.shape(2)) : 1;
    mat.init(static_cast<int>(array.shape(0)), static_cast<int>(array.shape(1)), channels, 0);
    if (array.size() > 0) std::memcpy(mat.data, array.data(), sizeof(T) * array.size());
}

/// The capacity is what the library gives a list, which Python does not have; the elements are Python's.
template <class T, class Element>
void take_elements(const py::object& result, vector<T>& list) {
    const auto array = py::array_t<Element>::ensure(result);
    const int n = static_cast<int>(array.shape(0));
    list.reserve(n);
    list.size = n;
    if (array.size() > 0)
        std::memcpy(static_cast<void*>(list.data), array.data(), sizeof(Element) * array.size());
}
inline void take(const py::object& result, vector<float>& list) {
    take_elements<float, float>(result, list);
}
inline void take(const py::object& result, vector<unsigned char>& list) {
    take_elements<unsigned char, unsigned char>(result, list);
}
inline void take(const py::object& result, vector<Point>& list) {
    take_elements<Point, int>(result, list);
}
inline void take(const py::object& result, vector<Rect>& list) {
    take_elements<Rect, int>(result, list);
}
template <class T>
void take(const py::object& result, vector<vector<T>>& lists) {
    const auto items = result.cast<py::list>();
    const int n = static_cast<int>(items.size());
    while (lists.size < n) lists.push_back(vector<T>());
    lists.size = n;
    for (int k = 0; k < n; ++k) take(items[static_cast<size_t>(k)], lists[k]);
}
inline void take(const py::object& result, int& value) {
    value = result.cast<int>();
}
inline void take(const py::object& result, unsigned char& value) {
    value = static_cast<unsigned char>(result.cast<int>());
}
inline void take(const py::object& result, float& value) {
    value = static_cast<float>(result.cast<double>());
}
inline void take(const py::object& result, Point& p) {
    p = Point(result.attr("x").cast<int>(), result.attr("y").cast<int>());
}
inline void take(const py::object& result, Point32f& p) {
    p = Point32f(result.attr("x").cast<float>(), result.attr("y").cast<float>());
}
inline void take(const py::object& result, Rect& r) {
    const auto side = [&](const char* name) { return result.attr(name).cast<int>(); };
    r = Rect(side("x"), side("y"), side("width"), side("height"));
}
inline void take(const py::object& result, RotatedRect& rect) {
    const auto corners = result.attr("pts").cast<py::tuple>();
    const int n = static_cast<int>(corners.size());
    rect.pts.reserve(n);
    rect.pts.size = n;
    for (int k = 0; k < n; ++k) take(corners[static_cast<size_t>(k)], rect.pts[k]);
    take(result.attr("center"), rect.center);
    take(result.attr("width"), rect.width);
    take(result.attr("height"), rect.height);
    take(result.attr("angle"), rect.angle);
}

/// One of several results.
inline py::object part(const py::object& result, int at, const char*) {
    return result[py::int_(at)];
}

}  // namespace binding

#endif  // ORVEX_TESTS_PYTHON_BINDING_H
