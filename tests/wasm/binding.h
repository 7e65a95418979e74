// What tests/bindings/bound_calls.cpp needs of JavaScript: arguments become objects and typed arrays, and results, errors
// and printed lines come back from the npm package, which golden.test.mjs has loaded.
#ifndef ORVEX_TESTS_WASM_BINDING_H
#define ORVEX_TESTS_WASM_BINDING_H

#include <emscripten.h>
#include <emscripten/val.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "cv_imgproc.h"

namespace binding {

using emscripten::typed_memory_view;
using emscripten::val;
using orvex_991::CException;
using orvex_991::vector;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;
using U8 = Mat<unsigned char>;

using Value = val;

inline void load() {}

/// Drops what the library prints. The terminal is the one that support/capture.cpp exchanges, too.
class Quiet {
 public:
    Quiet() {
        std::fflush(stdout);
        EM_ASM({
            const terminal = FS.getStream(1).tty;
            Module.loud = terminal.ops;
            terminal.ops = ({});
            terminal.ops.put_char = function(){};
        });
    }
    ~Quiet() {
        std::fflush(stdout);
        EM_ASM({ FS.getStream(1).tty.ops = Module.loud; });
    }
};

// Whether JavaScript has an argument of that kind.
template <class T>
bool expressible(const T&) {
    return true;
}
inline bool expressible(const U8& mat) {
    if (mat.rows < 0 || mat.cols < 0 || mat.channels < 0) return false;
    const int64_t area = static_cast<int64_t>(mat.rows) * mat.cols;
    if (area > INT_MAX || area * mat.channels > INT_MAX) return false;
    return mat.data || area * mat.channels == 0;
}
inline bool expressible(const Mat<float>& mat) {
    return mat.rows == 2 && mat.cols == 3 && mat.channels == 1 && mat.data;
}

/// Outputs are always new ones: whether that is seen in the result.
inline bool can_start_from(const U8& dst, const U8& src, bool masked) {
    const bool of_that_size = dst.rows == src.rows && dst.cols == src.cols;
    if (of_that_size) return dst.channels == 1 && expressible(dst);
    return !masked;
}

// Arguments in JavaScript's terms.
template <class T>
val array_of(const char* type, const T* data, int n) {
    return val::global(type).new_(val(typed_memory_view(static_cast<size_t>(n), data)));
}
inline val bytes_from(const unsigned char* data, int n) {
    return array_of("Uint8Array", data, n);
}
inline val given(const U8& mat) {
    val image = val::object();
    image.set("rows", mat.rows);
    image.set("cols", mat.cols);
    image.set("channels", mat.channels);
    image.set("data", bytes_from(mat.data, mat.rows * mat.cols * mat.channels));
    return image;
}
inline val given(const Mat<float>& mat) {
    return array_of("Float32Array", mat.data, 6);
}
inline val given(int value) {
    return val(value);
}
inline val given(double value) {
    return val(value);
}
inline val given(bool value) {
    return val(value);
}
template <class P>
val point_of(const P& p) {
    val point = val::object();
    point.set("x", p.x);
    point.set("y", p.y);
    return point;
}
inline val given(const Point& p) {
    return point_of(p);
}
inline val given(const Point32f& p) {
    return point_of(p);
}
inline val given(const Size& extents) {
    val size = val::object();
    size.set("width", extents.width);
    size.set("height", extents.height);
    return size;
}
inline val given(const Rect& r) {
    val rect = point_of(r);
    rect.set("width", r.width);
    rect.set("height", r.height);
    return rect;
}
template <class T>
val given(const vector<T>& list) {
    val items = val::array();
    for (int k = 0; k < list.size; ++k) items.call<void>("push", given(list[k]));
    return items;
}
inline val given(const RotatedRect& r) {
    val rect = val::object();
    rect.set("pts", given(r.pts));
    rect.set("center", given(r.center));
    rect.set("width", r.width);
    rect.set("height", r.height);
    rect.set("angle", r.angle);
    return rect;
}

/// Calls a method of the package and prints its lines.
/// @throws what the library throws
inline val call(const char* name, const std::vector<val>& arguments, const U8*) {
    val list = val::array();
    for (const val& argument : arguments) list.call<void>("push", argument);
    const val did = val::global("callOrvex")(std::string(name), list);
    for (const std::string& line : emscripten::vecFromJSArray<std::string>(did["lines"]))
        std::puts(line.c_str());
    const int code = did["code"].as<int>();
    if (code != 0) throw CException(code, did["reason"].as<std::string>().c_str());
    return did["result"];
}

// Results in C++'s terms.
template <class T>
void copy_elements(const val& array, int n, T* to) {
    val(typed_memory_view(static_cast<size_t>(n), to)).call<void>("set", array);
}
template <class T>
void take(const val& result, Mat<T>& mat) {
    mat.init(result["rows"].as<int>(), result["cols"].as<int>(), result["channels"].as<int>(), 0);
    copy_elements(result["data"], mat.rows * mat.cols * mat.channels, mat.data);
}
inline void take(const val& result, Mat<float>& mat) {
    mat.init(2, 3, 1, 0);
    copy_elements(result, 6, mat.data);
}
inline void take(const val& result, int& value) {
    value = result.as<int>();
}
inline void take(const val& result, unsigned char& value) {
    value = static_cast<unsigned char>(result.as<int>());
}
inline void take(const val& result, float& value) {
    value = static_cast<float>(result.as<double>());
}
inline void take(const val& result, Point& p) {
    p = Point(result["x"].as<int>(), result["y"].as<int>());
}
inline void take(const val& result, Point32f& p) {
    p = Point32f(result["x"].as<float>(), result["y"].as<float>());
}
inline void take(const val& result, Rect& r) {
    r = Rect(result["x"].as<int>(), result["y"].as<int>(), result["width"].as<int>(),
             result["height"].as<int>());
}
/// The capacity is what the library gives a list, which JavaScript does not have; the elements are JavaScript's.
template <class T>
void take(const val& result, vector<T>& list) {
    const int n = result["length"].as<int>();
    while (list.size < n) list.push_back(T());
    list.size = n;
    for (int k = 0; k < n; ++k) take(result[k], list[k]);
}
inline void take(const val& result, RotatedRect& rect) {
    take(result["pts"], rect.pts);
    take(result["center"], rect.center);
    take(result["width"], rect.width);
    take(result["height"], rect.height);
    take(result["angle"], rect.angle);
}

/// One of several results.
inline val part(const val& result, int, const char* name) {
    return result[name];
}

}  // namespace binding

#endif  // ORVEX_TESTS_WASM_BINDING_H
