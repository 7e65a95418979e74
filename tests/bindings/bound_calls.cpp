// Every operation once through a binding; what is the language's own stands in binding.h of the binding's tests.
#define ORVEX_BOUND_CALLS_OF_BOTH
#include "bound_calls.h"

#include <cstdio>
#include <optional>
#include <vector>

#include "binding.h"

namespace orvex_cv_991 {

using binding::expressible;
using binding::given;
using binding::part;
using binding::take;
using binding::Value;
using orvex_991::vector;
using U8 = CImgproc::U8;

namespace {

/// Calls of the program by whether the language can express their arguments: matrices whose block is what their shape
/// says, of a kind that operations take; extents that are not negative; no image without pixels as its own output.
struct Counts {
    int made = 0;
    int beyond = 0;
    ~Counts() { std::fprintf(stderr, "%d calls through the binding, %d beyond it\n", made, beyond); }
} counts;

template <class Library>
void quietly(const Library& library) {
    const binding::Quiet quiet;
    library();
}

/// One call of a function of the package.
///
/// @param can      whether the language can express it; otherwise the library does it
/// @param arguments  makes them
/// @param library  the same call of the library. After an error it is made, too, since what an exception leaves in
///                 outputs is C++'s alone
/// @param dst      what the output holds before, where that matters
/// @return what the package returned; nothing when the library has done it
template <class Arguments, class Library>
std::optional<Value> through(bool can, const char* name, const Arguments& arguments, const Library& library,
                             const U8* dst = nullptr) {
    if (!can) {
        ++counts.beyond;
        library();
        return {};
    }
    ++counts.made;
    binding::load();
    try {
        return binding::call(name, arguments(), dst);
    } catch (...) {
        try {
            quietly(library);
        } catch (...) {
        }
        throw;
    }
}

template <class Library, class... Arguments>
std::optional<Value> through(const char* name, const Library& library, const Arguments&... arguments) {
    return through((expressible(arguments) && ...), name,
                   [&] { return std::vector<Value>{given(arguments)...}; }, library);
}

template <class T>
bool has_no_pixels(const T&) {
    return false;
}
bool has_no_pixels(const U8& mat) {
    return mat.empty();
}

/// A call with one output, which the package returns.
template <class Library, class Output, class... Arguments>
void fill(const char* name, Output& output, const Library& library, const Arguments&... arguments) {
    const void* const place = &output;
    const bool in_place = ((static_cast<const void*>(&arguments) == place) || ...);
    if (in_place && has_no_pixels(output)) {  // which C++ tells from an output of its own
        ++counts.beyond;
        library();
        return;
    }
    if (const auto result = through(name, library, arguments...)) take(*result, output);
}

/// A call that returns a value.
template <class Library, class... Arguments>
auto value_of(const char* name, const Library& library, const Arguments&... arguments) {
    decltype(library()) value{};
    const auto call = [&] { value = library(); };
    if (const auto result = through(name, call, arguments...)) take(*result, value);
    return value;
}

}  // namespace

using P = BoundCalls;

void P::bgr2gray(const U8& src, U8& dst) {
    fill(
        "bgr2gray", dst, [&] { CImgproc::bgr2gray(src, dst); }, src);
}

void P::yuv2bgr(const unsigned char* yuv, int rows, int cols, U8& dst) {
    const int bytes = rows > 0 && cols > 0 ? ((rows - 1) / 2 + rows) * cols + (cols + 1) / 2 * 2 : 0;
    const auto result = through(
        rows >= 0 && cols >= 0, "yuv2bgr",
        [&] {
            return std::vector<Value>{binding::bytes_from(yuv, bytes), given(rows), given(cols)};
        },
        [&] { CImgproc::yuv2bgr(yuv, rows, cols, dst); });
    if (result) take(*result, dst);
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
    const auto result = through("hist", library, src);
    if (!result) return;
    quietly(library);
    take(*result, h);
}

void P::meanStdDev(const U8& src, float& mean, float& stddev) {
    const auto result = through(
        "meanStdDev", [&] { CImgproc::meanStdDev(src, mean, stddev); }, src);
    if (!result) return;
    take(part(*result, 0, "mean"), mean);
    take(part(*result, 1, "stddev"), stddev);
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
    const auto result = through(
        expressible(src) && binding::can_start_from(dst, src, false), "thresholdSeg",
        [&] {
            return std::vector<Value>{given(src), given(threshold)};
        },
        [&] { CImgproc::thresholdSeg(src, dst, threshold); }, &dst);
    if (result) take(*result, dst);
}

int P::threshold(const U8& src, U8& dst, int low_th, int high_th, int type, const U8& mask) {
    int level = 0;
    const auto result = through(
        expressible(src) && expressible(mask) && binding::can_start_from(dst, src, !mask.empty()),
        "threshold",
        [&] {
            return std::vector<Value>{given(src), given(low_th), given(high_th), given(type), given(mask)};
        },
        [&] { level = CImgproc::threshold(src, dst, low_th, high_th, type, mask); }, &dst);
    if (!result) return level;
    take(part(*result, 0, "threshold"), level);
    take(part(*result, 1, "dst"), dst);
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
    const auto result = through(
        expressible(src) && expressible(trans_matrix) && (!mask || expressible(*mask)) &&
            out_size.width >= 0 && out_size.height >= 0,
        "warpAffine",
        [&] {
            std::vector<Value> arguments = {given(src), given(trans_matrix), given(out_size),
                                            given(static_cast<int>(interp))};
            if (mask) arguments.push_back(given(*mask));
            return arguments;
        },
        [&] { CImgproc::warpAffine(src, dst, trans_matrix, out_size, interp, mask); });
    if (!result) return;
    take(mask ? part(*result, 0, "dst") : *result, dst);
    if (mask) take(part(*result, 1, "mask"), *mask);
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
    const auto result = through(
        "bwlabel", [&] { CImgproc::bwlabel(src, dst, num); }, src);
    if (!result) return;
    take(part(*result, 0, "dst"), dst);
    take(part(*result, 1, "num"), num);
}

void P::connectdComponent(const U8& src, vector<Rect>& rects, vector<vector<Point>>* points) {
    const auto library = [&] { CImgproc::connectdComponent(src, rects, points); };
    const auto result = through("connectdComponent", library, src, points != nullptr);
    if (!result) return;
    quietly(library);
    take(points ? part(*result, 0, "rects") : *result, rects);
    if (points) take(part(*result, 1, "points"), *points);
}

void P::divideComponentsToRows(vector<Rect> rects, vector<vector<Rect>>& row_groups) {
    const auto library = [&] { CImgproc::divideComponentsToRows(rects, row_groups); };
    const auto result = through("divideComponentsToRows", library, rects);
    if (!result) return;
    quietly(library);
    take(*result, row_groups);
}

void P::convexHull(const vector<Point>& points, vector<Point>& hull) {
    const auto library = [&] { CImgproc::convexHull(points, hull); };
    const auto result = through("convexHull", library, points);
    if (!result) return;
    quietly(library);
    take(*result, hull);
}

RotatedRect P::minAreaRect(const U8& mat) {
    RotatedRect rect;
    const auto library = [&] { rect = CImgproc::minAreaRect(mat); };
    const auto result = through("minAreaRect", library, mat);
    if (!result) return rect;
    quietly(library);
    take(*result, rect);
    return rect;
}

RotatedRect P::minAreaRect(const vector<Point>& points) {
    RotatedRect rect;
    const auto library = [&] { rect = CImgproc::minAreaRect(points); };
    const auto result = through("minAreaRect", library, points);
    if (!result) return rect;
    quietly(library);
    take(*result, rect);
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
    const auto result = through("saliencyDetect", library, src, mask);
    if (!result) return;
    quietly([&] { CImgproc::saliencyDetect(src, of_library, mask, level_saliency); });
    take(part(*result, 0, "dst"), dst);
    take(part(*result, 1, "level_saliency"), level_saliency);
}

void P::redColorDetect(const U8& src, U8& dst, bool relaxed) {
    fill(
        "redColorDetect", dst, [&] { CImgproc::redColorDetect(src, dst, relaxed); }, src, relaxed);
}

}  // namespace orvex_cv_991
