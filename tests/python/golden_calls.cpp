#define ORVEX_GOLDEN_CALLS_OF_BOTH
#include "golden_calls.h"

#include <fcntl.h>
#include <pybind11/embed.h>
#include <pybind11/numpy.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace orvex_cv_991 {

namespace py = pybind11;
using orvex_991::CException;
using orvex_991::vector;
using U8 = CImgproc::U8;

namespace {

/// Calls of the program by whether Python can express their arguments: matrices whose block is what their shape
/// says, of a kind that operations take; extents that are not negative; no image without pixels as its own output.
struct Counts {
    int made = 0;
    int beyond_python = 0;
    ~Counts() { std::fprintf(stderr, "%d calls through Python, %d beyond it\n", made, beyond_python); }
} counts;

const py::object& package() {
    static const py::object* const loaded = [] {
        new py::scoped_interpreter;  // to the end of the program, since modules of C do not all end well
        return new py::object(py::module_::import("orvex_991"));
    }();
    return *loaded;
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

// Arguments in Python's terms.
template <class T>
py::object given(const Mat<T>& mat) {
    std::vector<py::ssize_t> shape = {mat.rows, mat.cols};
    if (mat.channels != 1) shape.push_back(mat.channels);
    py::array_t<T> array(shape);
    if (array.size() > 0) std::memcpy(array.mutable_data(), mat.data, sizeof(T) * array.size());
    return std::move(array);
}
py::object given(int value) {
    return py::int_(value);
}
py::object given(double value) {
    return py::float_(value);
}
py::object given(bool value) {
    return py::bool_(value);
}
py::object given(const Point& p) {
    return package().attr("Point")(p.x, p.y);
}
py::object given(const Point32f& p) {
    return package().attr("Point32f")(p.x, p.y);
}
py::object given(const Size& size) {
    return package().attr("Size")(size.width, size.height);
}
py::object given(const Rect& r) {
    return package().attr("Rect")(r.x, r.y, r.width, r.height);
}
template <class T>
py::object given(const vector<T>& list) {
    py::list items;
    for (int k = 0; k < list.size; ++k) items.append(given(list[k]));
    return std::move(items);
}
py::object given(const RotatedRect& rect) {
    return package().attr("RotatedRect")(py::tuple(given(rect.pts)), given(rect.center), rect.width,
                                         rect.height, rect.angle);
}

/// Prints the lines of a log as the library would have.
void print(const py::object& lines) {
    for (const py::handle line : lines)
        std::puts(PyBytes_AsString(py::bytes(line.attr("encode")("utf-8", "surrogateescape")).ptr()));
}

/// Throws what the library throws where Python has raised `error`; ends the program for other exceptions.
[[noreturn]] void throw_in_cpp(const py::error_already_set& error) {
    if (error.matches(PyExc_MemoryError)) throw std::bad_alloc();
    if (!error.matches(package().attr("Error"))) {
        std::fprintf(stderr, "%s\n", error.what());
        std::abort();
    }
    const std::string message = error.value().attr("message").cast<std::string>();
    throw CException(error.value().attr("code").cast<int>(), message.c_str());
}

/// One call of a function of the package.
///
/// @param can      whether Python can express it; otherwise the library does it
/// @param library  the same call of the library. After an error it is made, too, since what an exception leaves in
///                 outputs is C++'s alone
/// @return what Python returned; null when the library has done it
template <class Library>
py::object through_python(bool can, const char* name, const py::tuple& arguments, const py::dict& keywords,
                          const Library& library) {
    if (!can) {
        ++counts.beyond_python;
        library();
        return {};
    }
    ++counts.made;
    const py::object log = package().attr("log")();
    const py::object lines = log.attr("__enter__")();
    const auto end_log = [&] {
        log.attr("__exit__")(py::none(), py::none(), py::none());
        print(lines);
    };
    py::object result;
    try {
        result = package().attr(name)(*arguments, **keywords);
    } catch (const py::error_already_set& error) {
        end_log();
        try {
            const Quiet quiet;
            library();
        } catch (...) {
        }
        throw_in_cpp(error);
    }
    end_log();
    return result;
}

template <class Library, class... Arguments>
py::object through_python(const char* name, const Library& library, const Arguments&... arguments) {
    const bool can = (expressible(arguments) && ...);
    package();
    return through_python(can, name, can ? py::make_tuple(given(arguments)...) : py::tuple(), py::dict(),
                          library);
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
void take(const py::object& result, vector<float>& list) {
    take_elements<float, float>(result, list);
}
void take(const py::object& result, vector<unsigned char>& list) {
    take_elements<unsigned char, unsigned char>(result, list);
}
void take(const py::object& result, vector<Point>& list) {
    take_elements<Point, int>(result, list);
}
void take(const py::object& result, vector<Rect>& list) {
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
void take(const py::object& result, int& value) {
    value = result.cast<int>();
}
void take(const py::object& result, unsigned char& value) {
    value = static_cast<unsigned char>(result.cast<int>());
}
void take(const py::object& result, float& value) {
    value = static_cast<float>(result.cast<double>());
}
void take(const py::object& result, Point& p) {
    p = Point(result.attr("x").cast<int>(), result.attr("y").cast<int>());
}
void take(const py::object& result, Point32f& p) {
    p = Point32f(result.attr("x").cast<float>(), result.attr("y").cast<float>());
}
void take(const py::object& result, Rect& r) {
    const auto side = [&](const char* name) { return result.attr(name).cast<int>(); };
    r = Rect(side("x"), side("y"), side("width"), side("height"));
}
void take(const py::object& result, RotatedRect& rect) {
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

template <class Library>
void quietly(const Library& library) {
    const Quiet quiet;
    library();
}

template <class T>
bool has_no_pixels(const T&) {
    return false;
}
bool has_no_pixels(const U8& mat) {
    return mat.empty();
}

/// A call with one output, which Python returns.
template <class Library, class Output, class... Arguments>
void fill(const char* name, Output& output, const Library& library, const Arguments&... arguments) {
    const void* const place = &output;
    const bool in_place = ((static_cast<const void*>(&arguments) == place) || ...);
    if (in_place && has_no_pixels(output)) {  // which C++ tells from an output of its own
        ++counts.beyond_python;
        library();
        return;
    }
    const py::object result = through_python(name, library, arguments...);
    if (result) take(result, output);
}

/// A call that returns a value.
template <class Library, class... Arguments>
auto value_of(const char* name, const Library& library, const Arguments&... arguments) {
    decltype(library()) value{};
    const auto call = [&] { value = library(); };
    const py::object result = through_python(name, call, arguments...);
    if (result) take(result, value);
    return value;
}

py::object part(const py::object& result, int at) {
    return result[py::int_(at)];
}

}  // namespace

using P = PythonCalls;

void P::bgr2gray(const U8& src, U8& dst) {
    fill(
        "bgr2gray", dst, [&] { CImgproc::bgr2gray(src, dst); }, src);
}

void P::yuv2bgr(const unsigned char* yuv, int rows, int cols, U8& dst) {
    const auto library = [&] { CImgproc::yuv2bgr(yuv, rows, cols, dst); };
    const bool can = rows >= 0 && cols >= 0;
    const int bytes = rows > 0 && cols > 0 ? ((rows - 1) / 2 + rows) * cols + (cols + 1) / 2 * 2 : 0;
    package();
    py::array_t<unsigned char> frame(bytes);
    if (bytes > 0) std::memcpy(frame.mutable_data(), yuv, static_cast<size_t>(bytes));
    const py::object result =
        through_python(can, "yuv2bgr", py::make_tuple(frame, rows, cols), py::dict(), library);
    if (result) take(result, dst);
}

void P::bgr2hsv(const U8& src, U8& dst) {
    fill(
        "bgr2hsv", dst, [&] { CImgproc::bgr2hsv(src, dst); }, src);
}

void P::equalizeHist(const U8& src, U8& dst) {
    fill(
        "equalizeHist", dst, [&] { CImgproc::equalizeHist(src, dst); }, src);
}

void P::hist(const U8& src, vector<float>& h) {
    const auto library = [&] { CImgproc::hist(src, h); };
    const py::object result = through_python("hist", library, src);
    if (!result) return;
    quietly(library);
    take(result, h);
}

void P::meanStdDev(const U8& src, float& mean, float& stddev) {
    const py::object result = through_python(
        "meanStdDev", [&] { CImgproc::meanStdDev(src, mean, stddev); }, src);
    if (!result) return;
    take(part(result, 0), mean);
    take(part(result, 1), stddev);
}

unsigned char P::minVal(const U8& src) {
    return value_of(
        "minVal", [&] { return CImgproc::minVal(src); }, src);
}

unsigned char P::maxVal(const U8& src) {
    return value_of(
        "maxVal", [&] { return CImgproc::maxVal(src); }, src);
}

int P::countNonZero(const U8& src) {
    return value_of(
        "countNonZero", [&] { return CImgproc::countNonZero(src); }, src);
}

float P::countNonZeroRate(const U8& src) {
    return value_of(
        "countNonZeroRate", [&] { return CImgproc::countNonZeroRate(src); }, src);
}

int P::otsu(const U8& src) {
    return value_of(
        "otsu", [&] { return CImgproc::otsu(src); }, src);
}

int P::otsu(const U8& src, const U8& mask) {
    return value_of(
        "otsu", [&] { return CImgproc::otsu(src, mask); }, src, mask);
}

// What the destination holds matters to the two that follow.

void P::thresholdSeg(const U8& src, U8& dst, int threshold) {
    const auto library = [&] { CImgproc::thresholdSeg(src, dst, threshold); };
    const bool can = expressible(src) && expressible(dst);
    package();
    py::dict keywords;
    if (can) keywords["dst"] = given(dst);
    const py::object result = through_python(
        can, "thresholdSeg", can ? py::make_tuple(given(src), threshold) : py::tuple(), keywords, library);
    if (result) take(result, dst);
}

int P::threshold(const U8& src, U8& dst, int low_th, int high_th, int type, const U8& mask) {
    int level = 0;
    const auto library = [&] { level = CImgproc::threshold(src, dst, low_th, high_th, type, mask); };
    const bool can = expressible(src) && expressible(dst) && expressible(mask);
    package();
    py::dict keywords;
    if (can) keywords["dst"] = given(dst);
    const py::object result = through_python(
        can, "threshold", can ? py::make_tuple(given(src), low_th, high_th, type, given(mask)) : py::tuple(),
        keywords, library);
    if (!result) return level;
    take(part(result, 0), level);
    take(part(result, 1), dst);
    return level;
}

void P::adaptiveThreshold(const U8& src, U8& dst, int block_size, double std_ratio, bool inverse) {
    fill(
        "adaptiveThreshold", dst,
        [&] { CImgproc::adaptiveThreshold(src, dst, block_size, std_ratio, inverse); }, src, block_size,
        std_ratio, inverse);
}

void P::rot90ClockWise_FlipLR(const U8& src, U8& dst, int n, int f) {
    fill(
        "rot90ClockWise_FlipLR", dst, [&] { CImgproc::rot90ClockWise_FlipLR(src, dst, n, f); }, src, n, f);
}

void P::flipLR(const U8& src, U8& dst) {
    fill(
        "flipLR", dst, [&] { CImgproc::flipLR(src, dst); }, src);
}

void P::rot90ClockWise(const U8& src, U8& dst, int n) {
    fill(
        "rot90ClockWise", dst, [&] { CImgproc::rot90ClockWise(src, dst, n); }, src, n);
}

void P::rot90AntiClockWise(const U8& src, U8& dst, int n) {
    fill(
        "rot90AntiClockWise", dst, [&] { CImgproc::rot90AntiClockWise(src, dst, n); }, src, n);
}

Point P::rot90ClockWise(const Point& pt, const Size& size, int n) {
    return value_of(
        "rot90ClockWise", [&] { return CImgproc::rot90ClockWise(pt, size, n); }, pt, size, n);
}

Point P::rot90AntiClockWise(const Point& pt, const Size& size, int n) {
    return value_of(
        "rot90AntiClockWise", [&] { return CImgproc::rot90AntiClockWise(pt, size, n); }, pt, size, n);
}

Rect P::rot90ClockWise(const Rect& src, const Size& img_size, int n) {
    return value_of(
        "rot90ClockWise", [&] { return CImgproc::rot90ClockWise(src, img_size, n); }, src, img_size, n);
}

Rect P::rot90AntiClockWise(const Rect& src, const Size& img_size, int n) {
    return value_of(
        "rot90AntiClockWise", [&] { return CImgproc::rot90AntiClockWise(src, img_size, n); }, src, img_size,
        n);
}

void P::resize(const U8& src, U8& dst, const Size& out_size, INTERP_TYPE interp) {
    fill(
        "resize", dst, [&] { CImgproc::resize(src, dst, out_size, interp); }, src, out_size,
        static_cast<int>(interp));
}

void P::resize(const U8& src, U8& dst, float scale, INTERP_TYPE interp) {
    fill(
        "resize", dst, [&] { CImgproc::resize(src, dst, scale, interp); }, src, static_cast<double>(scale),
        static_cast<int>(interp));
}

Mat<float> P::getRotationMatrix2D(Point32f center, float angle, float scale) {
    Mat<float> matrix;
    fill(
        "getRotationMatrix2D", matrix, [&] { matrix = CImgproc::getRotationMatrix2D(center, angle, scale); },
        center, static_cast<double>(angle), static_cast<double>(scale));
    return matrix;
}

void P::warpAffine(const U8& src, U8& dst, const Mat<float>& trans_matrix, const Size& out_size,
                   INTERP_TYPE interp, U8* mask) {
    const auto library = [&] { CImgproc::warpAffine(src, dst, trans_matrix, out_size, interp, mask); };
    const bool can = expressible(src) && expressible(trans_matrix) && (!mask || expressible(*mask)) &&
                     out_size.width >= 0 && out_size.height >= 0;
    package();
    py::tuple arguments;
    if (can)
        arguments = py::make_tuple(given(src), given(trans_matrix), given(out_size), static_cast<int>(interp),
                                   mask ? given(*mask) : py::object(py::none()));
    const py::object result = through_python(can, "warpAffine", arguments, py::dict(), library);
    if (!result) return;
    take(mask ? part(result, 0) : result, dst);
    if (mask) take(part(result, 1), *mask);
}

Point P::pointAffine(const Point& pt, const Mat<float>& trans_mat, float scale, const Point& origin) {
    return value_of(
        "pointAffine", [&] { return CImgproc::pointAffine(pt, trans_mat, scale, origin); }, pt, trans_mat,
        static_cast<double>(scale), origin);
}

Rect P::rectAffine(const Rect& src, const Mat<float>& trans_mat) {
    return value_of(
        "rectAffine", [&] { return CImgproc::rectAffine(src, trans_mat); }, src, trans_mat);
}

Rect P::checkRectInMat(const Size& size, const Rect& rect) {
    return value_of(
        "checkRectInMat", [&] { return CImgproc::checkRectInMat(size, rect); }, size, rect);
}

void P::dilateBinary(const U8& src, U8& dst, const Size& size) {
    fill(
        "dilateBinary", dst, [&] { CImgproc::dilateBinary(src, dst, size); }, src, size);
}

void P::erodeBinary(const U8& src, U8& dst, const Size& size) {
    fill(
        "erodeBinary", dst, [&] { CImgproc::erodeBinary(src, dst, size); }, src, size);
}

void P::openBinary(const U8& src, U8& dst, const Size& size) {
    fill(
        "openBinary", dst, [&] { CImgproc::openBinary(src, dst, size); }, src, size);
}

void P::closeBinary(const U8& src, U8& dst, const Size& size) {
    fill(
        "closeBinary", dst, [&] { CImgproc::closeBinary(src, dst, size); }, src, size);
}

void P::morphologyBinary(const U8& src, U8& dst, const Size& size, MORPH_TYPE type) {
    fill(
        "morphologyBinary", dst, [&] { CImgproc::morphologyBinary(src, dst, size, type); }, src, size,
        static_cast<int>(type));
}

void P::dilateRect(const Rect& src, Rect& dst, const Size& size) {
    fill(
        "dilateRect", dst, [&] { CImgproc::dilateRect(src, dst, size); }, src, size);
}

void P::dilateGray(const U8& src, U8& dst, const Size& size) {
    fill(
        "dilateGray", dst, [&] { CImgproc::dilateGray(src, dst, size); }, src, size);
}

void P::erodeGray(const U8& src, U8& dst, const Size& size) {
    fill(
        "erodeGray", dst, [&] { CImgproc::erodeGray(src, dst, size); }, src, size);
}

void P::morphGradient(const U8& src, U8& dst, const Size& size) {
    fill(
        "morphGradient", dst, [&] { CImgproc::morphGradient(src, dst, size); }, src, size);
}

void P::bwlabel(const U8& src, Mat<int>& dst, int& num) {
    const py::object result = through_python(
        "bwlabel", [&] { CImgproc::bwlabel(src, dst, num); }, src);
    if (!result) return;
    take(part(result, 0), dst);
    take(part(result, 1), num);
}

void P::connectdComponent(const U8& src, vector<Rect>& rects, vector<vector<Point>>* points) {
    const auto library = [&] { CImgproc::connectdComponent(src, rects, points); };
    const py::object result = through_python("connectdComponent", library, src, points != nullptr);
    if (!result) return;
    quietly(library);
    take(points ? part(result, 0) : result, rects);
    if (points) take(part(result, 1), *points);
}

void P::divideComponentsToRows(vector<Rect> rects, vector<vector<Rect>>& row_groups) {
    const auto library = [&] { CImgproc::divideComponentsToRows(rects, row_groups); };
    const py::object result = through_python("divideComponentsToRows", library, rects);
    if (!result) return;
    quietly(library);
    take(result, row_groups);
}

void P::convexHull(const vector<Point>& points, vector<Point>& hull) {
    const auto library = [&] { CImgproc::convexHull(points, hull); };
    const py::object result = through_python("convexHull", library, points);
    if (!result) return;
    quietly(library);
    take(result, hull);
}

RotatedRect P::minAreaRect(const U8& mat) {
    RotatedRect rect;
    const auto library = [&] { rect = CImgproc::minAreaRect(mat); };
    const py::object result = through_python("minAreaRect", library, mat);
    if (!result) return rect;
    quietly(library);
    take(result, rect);
    return rect;
}

RotatedRect P::minAreaRect(const vector<Point>& points) {
    RotatedRect rect;
    const auto library = [&] { rect = CImgproc::minAreaRect(points); };
    const py::object result = through_python("minAreaRect", library, points);
    if (!result) return rect;
    quietly(library);
    take(result, rect);
    return rect;
}

float P::getRotatedRectAngle(const RotatedRect& rotate_rect) {
    return value_of(
        "getRotatedRectAngle", [&] { return CImgproc::getRotatedRectAngle(rotate_rect); }, rotate_rect);
}

float P::calcLineDegree(const Point32f& p1, const Point32f& p2) {
    return value_of(
        "calcLineDegree", [&] { return CImgproc::calcLineDegree(p1, p2); }, p1, p2);
}

float P::getSharpness(const U8& src) {
    return value_of(
        "getSharpness", [&] { return CImgproc::getSharpness(src); }, src);
}

float P::getSharpness(const U8& src, const U8& mask) {
    return value_of(
        "getSharpness", [&] { return CImgproc::getSharpness(src, mask); }, src, mask);
}

void P::saliencyDetect(const U8& src, U8& dst, const U8& mask, vector<unsigned char>& level_saliency) {
    U8 of_library;
    const auto library = [&] { CImgproc::saliencyDetect(src, dst, mask, level_saliency); };
    const py::object result = through_python("saliencyDetect", library, src, mask);
    if (!result) return;
    quietly([&] { CImgproc::saliencyDetect(src, of_library, mask, level_saliency); });
    take(part(result, 0), dst);
    take(part(result, 1), level_saliency);
}

void P::redColorDetect(const U8& src, U8& dst, bool relaxed) {
    fill(
        "redColorDetect", dst, [&] { CImgproc::redColorDetect(src, dst, relaxed); }, src, relaxed);
}

}  // namespace orvex_cv_991
