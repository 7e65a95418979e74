#include "base/fp_strict.h"
//
#include "cv_imgproc.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

#include "algorithms/adaptive_threshold.h"
#include "algorithms/affine_warp.h"
#include "algorithms/bit_morphology.h"
#include "algorithms/component_order.h"
#include "algorithms/convex_hull.h"
#include "algorithms/equalization.h"
#include "algorithms/forest_limit.h"
#include "algorithms/gray_morphology.h"
#include "algorithms/labelling.h"
#include "algorithms/mask_profile.h"
#include "algorithms/otsu.h"
#include "algorithms/quarter_turn.h"
#include "algorithms/red_mask.h"
#include "algorithms/saliency.h"
#include "algorithms/seal_rules.h"
#include "algorithms/sharpness.h"
#include "algorithms/text_rows.h"
#include "base/block.h"
#include "base/numeric.h"
#include "kernels/kernels.h"
#include "util_diag.h"

namespace orvex_cv_991 {

using orvex_991::CException;
using orvex_991::Clock;
using orvex_991::String;
using orvex_991::vector;

using U8 = CImgproc::U8;

namespace {

/// The source of an operation that initialises its output first: where both are one object, it takes the
/// pixels over, so that the result is that of a separate destination.
class Source {
 public:
    Source(const U8& src, U8& dst) : same_(&src == &dst), src_(src), taken_(same_ ? std::move(dst) : U8()) {}
    const U8& operator*() const { return same_ ? taken_ : src_; }

 private:
    const bool same_;
    const U8& src_;
    const U8 taken_;
};

/// Runs the body of an operation of which nothing but CException may come: any other failure, which is
/// one of memory, becomes code 2 with `message`.
template <class Body>
auto guarded(Body body, const String& message = String()) {
    try {
        return body();
    } catch (const CException&) {
        throw;
    } catch (...) {
        throw CException(2, message);
    }
}

/// Deliberate: callers of some operations see code 2 for every failure inside, CException included
/// (test: a_three_channel_image_is_code_2).
template <class Body>
void relabelled(Body body) {
    try {
        body();
    } catch (...) {
        throw CException(2);
    }
}

}  // namespace

// ---- Colour conversion ----

void CImgproc::bgr2gray(const U8& src, U8& dst) {
    Clock clock;
    clock.start();
    U8 gray;
    if (src.empty()) {
        gray.mat_create(src.rows, src.cols, 1, 0);
        ORVEX_DEBUG_PREFIX();
        std::puts("bgr2gray - source image is empty");
    } else if (src.channels == 3) {
        create_unfilled(gray, src.rows, src.cols, 1);
        const int n = require_pixels(src);
        kernels::gray_from_bgr(fastest_isa(), src.data, gray.data, n);
    } else if (src.channels == 1) {
        create_unfilled(gray, src.rows, src.cols, 1);
        const int n = require_pixels(src);
        std::memcpy(gray.data, src.data, static_cast<size_t>(n));
        ORVEX_DEBUG_PREFIX();
        std::puts("bgr2gray - source image is 1-channel");
    } else {
        gray.mat_create(src.rows, src.cols, 1, 0);
    }
    dst.swap(gray);
    ORVEX_REPORT_TIME(clock, "bgr2gray cost time: %fms\n");
}

void CImgproc::yuv2bgr(const unsigned char* yuv, int rows, int cols, U8& dst) {
    Clock clock;
    clock.start();
    if (rows > 0)
        init_output(dst, rows, cols, 3);
    else
        dst.init(rows, cols, 3, 0);
    const Isa isa = fastest_isa();
    // Without columns there may be any number of rows, and nothing to do.
    for (ptrdiff_t row = 0; cols > 0 && row < rows; row += 2) {
        const ptrdiff_t luma = row * cols;
        const ptrdiff_t chroma = ((row >> 1) + rows) * cols;
        kernels::bgr_from_nv21_rows(isa, yuv + luma, yuv + chroma, dst.data + 3 * luma, cols,
                                    row + 1 < rows ? 2 : 1);
    }
    ORVEX_REPORT_TIME(clock, "yuv to bgr done (%fms)\n");
}

void CImgproc::bgr2hsv(const U8& src, U8& dst) {
    const Source source(src, dst);
    const U8& from = *source;
    if (from.rows < 1) return dst.init(from.rows, from.cols, 3, 0);
    const int64_t bytes = held_elements(from);
    if (bytes < 0) init_output_then_throw(dst, from.rows, from.cols, 3);
    init_output(dst, from.rows, from.cols, 3);
    const ptrdiff_t n = static_cast<ptrdiff_t>(from.rows) * from.cols;
    const Isa isa = fastest_isa();
    if (from.channels == 3)
        kernels::hsv_from_bgr(isa, from.data, dst.data, n);
    else
        kernels::hsv_from_strided(isa, from.data, static_cast<ptrdiff_t>(bytes), std::max(from.channels, 3),
                                  dst.data, n);
}

// ---- Statistics ----

void CImgproc::equalizeHist(const U8& src, U8& dst) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    const Source source(src, dst);
    const U8& from = *source;
    if (held_elements(from) < 0) init_output_then_throw(dst, from.rows, from.cols, 1);
    init_output(dst, from.rows, from.cols, 1);
    const int n = require_pixels(from);
    const Isa isa = fastest_isa();
    uint32_t counts[256];
    kernels::count_bytes(isa, from.data, n, counts);
    unsigned char table[256];
    equalizing_table(counts, n, table);
    kernels::look_up_bytes(isa, from.data, table, dst.data, n);
}

void CImgproc::hist(const U8& src, vector<float>& h) {
    h.clear();
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    const int n = require_counted_pixels(src);
    uint32_t counts[256];
    kernels::count_bytes(fastest_isa(), src.data, n, counts);
    const float scale = 1.0f / (static_cast<float>(n) + kFloatEpsilon);
    for (const uint32_t count : counts) h.push_back(static_cast<float>(count) * scale);
}

void CImgproc::meanStdDev(const U8& src, float& mean, float& stddev) {
    mean = 0;
    stddev = 0;
    if (src.empty()) return;
    const int n = require_counted_pixels(src);
    // Sums of bytes and of their squares are integers below 2^53, exact in double in any order.
    uint64_t sum = 0, sum_of_squares = 0;
    kernels::sum_bytes(fastest_isa(), src.data, n, &sum, &sum_of_squares);
    const double count = static_cast<double>(n);
    const float mean_of_all = static_cast<float>(static_cast<double>(sum) / count);
    const float square_of_mean = mean_of_all * mean_of_all;
    const double variance = static_cast<double>(sum_of_squares) / count - static_cast<double>(square_of_mean);
    mean = mean_of_all;
    stddev = std::sqrt(static_cast<float>(variance));
}

unsigned char CImgproc::minVal(const U8& src) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    return require_counted_pixels(src) < 1 ? 255 : src.data[0];
}

unsigned char CImgproc::maxVal(const U8& src) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    require_counted_pixels(src);
    return 255;
}

int CImgproc::countNonZero(const U8& src) {
    const int n = require_counted_pixels(src);
    return static_cast<int>(kernels::count_nonzero_bytes(fastest_isa(), src.data, n));
}

float CImgproc::countNonZeroRate(const U8& src) {
    return static_cast<float>(countNonZero(src)) / static_cast<float>(require_counted_pixels(src));
}

// ---- Thresholds ----

int CImgproc::otsu(const U8& src) {
    // The result is that of a mask of src's shape with every pixel selected; one that could not be made is
    // reported before the channels are looked at.
    if (wrapped_count(src.rows, src.cols, 1) < 0) throw CException(3);
    ORVEX_CHECK(1 == src.channels);
    const int n = require_counted_pixels(src);
    uint32_t counts[256];
    kernels::count_bytes(fastest_isa(), src.data, n, counts);
    return otsu_threshold(counts, n);
}

int CImgproc::otsu(const U8& src, const U8& mask) {
    ORVEX_CHECK(1 == src.channels);
    ORVEX_CHECK(src.rows == mask.rows);
    ORVEX_CHECK(src.cols == mask.cols);
    const int n = require_counted_pixels(src);
    require_counted_pixels(mask);
    uint32_t counts[256];
    kernels::count_masked_bytes(fastest_isa(), src.data, mask.data, n, counts);
    uint32_t selected = 0;
    for (const uint32_t count : counts) selected += count;
    return otsu_threshold(counts, static_cast<int>(selected));
}

void CImgproc::thresholdSeg(const U8& src, U8& dst, int threshold) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    ORVEX_CHECK(threshold >= 0 && threshold < 256);
    Clock clock;
    clock.start();
    if (Size(dst.cols, dst.rows) != Size(src.cols, src.rows) || !dst.data) {
        if (held_elements(src) < 0) init_output_then_throw(dst, src.rows, src.cols, 1);
        init_output(dst, src.rows, src.cols, 1);
    }
    const int n = require_pixels(src);
    require_pixels(dst);
    kernels::threshold_bytes(fastest_isa(), src.data, dst.data, n, threshold);
    ORVEX_REPORT_TIME(clock, "thresholdSeg cost time: %fms\n");
}

int CImgproc::threshold(const U8& src, U8& dst, int low_th, int high_th, int type, const U8& mask) {
    constexpr int kOtsu = 8;
    constexpr int kInvert = 1;
    if (!(type & kOtsu)) throw CException(1, String::literal("only support otsu binary mode"));
    if (low_th != 0 || high_th != 255)
        throw CException(1, String::literal("currently low_th must be 0  and high_th must be 255"));
    const bool invert = type & kInvert;
    if (mask.empty()) {
        const int t = otsu(src);
        thresholdSeg(src, dst, t);
        if (invert) ~dst;
        return t;
    }
    const int t = otsu(src, mask);
    const int n = require_counted_pixels(src);
    if (n < 1) return t;
    require_elements(dst, n);
    kernels::threshold_masked_bytes(fastest_isa(), src.data, mask.data, dst.data, n, t, invert ? 255 : 0);
    return t;
}

void CImgproc::adaptiveThreshold(const U8& src, U8& dst, int block_size, double std_ratio, bool inverse) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    float mean = 0, stddev = 0;
    meanStdDev(src, mean, stddev);
    const double offset = static_cast<double>(stddev) * std_ratio;
    require_pixels(src);
    U8 out;
    if (src.rows < 0) {
        out = src;  // two negative extents: no rows to compare
    } else {
        create_unfilled(out, src.rows, src.cols, 1);
        threshold_by_window(src, block_size / 2, offset, inverse, fastest_isa(), out.data);
    }
    dst.swap(out);
}

// ---- Quarter turns and mirroring ----

void CImgproc::rot90ClockWise_FlipLR(const U8& src, U8& dst, int n, int f) {
    if (src.empty()) dst = U8();
    const int turns = n % 4;
    const bool swapped = turns % 2 == 1;
    const int rows = swapped ? src.cols : src.rows;
    const int cols = swapped ? src.rows : src.cols;
    U8 out;
    create_unfilled(out, rows, cols, src.channels);
    Clock clock;
    clock.start();
    if (turns >= 0 && rows > 0 && cols > 0) {
        require_elements(src, 0);
        if (src.channels > 0) turn_image(src, turns, f % 2 != 0, fastest_isa(), out);
    } else {
        // Nothing is copied for a negative count, which is deliberate
        // (test: a_negative_clockwise_count_gives_zeros_and_a_negative_anticlockwise_one_turns).
        std::fill_n(out.data, wrapped_count(rows, cols, src.channels), static_cast<unsigned char>(0));
    }
    ORVEX_REPORT_TIME(clock, "image rotation (including flip) cost time: %fms\n");
    dst.swap(out);
}

void CImgproc::flipLR(const U8& src, U8& dst) {
    rot90ClockWise_FlipLR(src, dst, 0, 1);
}

void CImgproc::rot90ClockWise(const U8& src, U8& dst, int n) {
    rot90ClockWise_FlipLR(src, dst, n, 0);
}

void CImgproc::rot90AntiClockWise(const U8& src, U8& dst, int n) {
    rot90ClockWise_FlipLR(src, dst, 4 - n % 4, 0);
}

Point CImgproc::rot90ClockWise(const Point& pt, const Size& size, int n) {
    const int right = wrap_sub(size.width, 1);
    const int bottom = wrap_sub(size.height, 1);
    const int x = std::min(std::max(pt.x, 0), right);
    const int y = std::min(std::max(pt.y, 0), bottom);
    switch (n % 4) {
        case 0:
            return Point(x, y);
        case 1:
            return Point(y, wrap_sub(right, x));
        case 2:
            return Point(wrap_sub(right, x), wrap_sub(bottom, y));
        default:
            return Point(wrap_sub(bottom, y), x);
    }
}

Point CImgproc::rot90AntiClockWise(const Point& pt, const Size& size, int n) {
    return rot90ClockWise(pt, size, n % 4);
}

Rect CImgproc::rot90ClockWise(const Rect& src, const Size& img_size, int n) {
    ORVEX_CHECK_TEXT(img_size.width >= wrap_add(src.x, src.width), "img_size.width >= src.x + src.width");
    ORVEX_CHECK_TEXT(img_size.height >= wrap_add(src.y, src.height), "img_size.height >= src.y + src.height");
    const int from_right = wrap_sub(wrap_sub(wrap_sub(img_size.width, 1), src.x), src.width);
    const int from_bottom = wrap_sub(wrap_sub(wrap_sub(img_size.height, 1), src.y), src.height);
    switch (n % 4) {
        case 0:
            return src;
        case 1:
            return Rect(src.y, from_right, src.height, src.width);
        case 2:
            return Rect(from_right, from_bottom, src.width, src.height);
        default:
            return Rect(from_bottom, src.x, src.height, src.width);
    }
}

Rect CImgproc::rot90AntiClockWise(const Rect& src, const Size& img_size, int n) {
    return rot90ClockWise(src, img_size, n % 4);
}

// ---- Resize and affine transforms ----

void CImgproc::resize(const U8& src, U8& dst, const Size& out_size, INTERP_TYPE interp) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(out_size.width > 0);
    ORVEX_CHECK(out_size.height > 0);
    Clock clock;
    clock.start();
    const float fx = static_cast<float>(out_size.width) / static_cast<float>(src.cols);
    const float fy = static_cast<float>(out_size.height) / static_cast<float>(src.rows);
    Mat<float> matrix;
    matrix.mat_create(2, 3, 1, 0);
    matrix.at(0, 0) = fx;
    matrix.at(0, 2) = fx * 0.5f + -0.5f;
    matrix.at(1, 1) = fy;
    matrix.at(1, 2) = fy * 0.5f + -0.5f;
    warpAffine(src, dst, matrix, out_size, interp, nullptr);
    ORVEX_REPORT_TIME(clock, "image resize cost time: %fms\n");
}

void CImgproc::resize(const U8& src, U8& dst, float scale, INTERP_TYPE interp) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(scale > 0.f);
    ORVEX_CHECK(src.rows * scale >= 1);
    ORVEX_CHECK(src.cols * scale >= 1);
    const Size out_size(saturate_to_int(src.cols * scale), saturate_to_int(src.rows * scale));
    resize(src, dst, out_size, interp);
}

Mat<float> CImgproc::getRotationMatrix2D(Point32f center, float angle, float scale) {
    ORVEX_CHECK(scale > 0);
    const float radians = angle * 0.017453279f;  // just below pi / 180
    const float alpha = std::cos(radians) * scale;
    const float beta = std::sin(radians) * scale;
    Mat<float> matrix;
    matrix.mat_create(2, 3, 1, 0);
    matrix.at(0, 0) = alpha;
    matrix.at(0, 1) = beta;
    matrix.at(0, 2) = center.x * (1.0f - alpha) - center.y * beta;
    matrix.at(1, 0) = -beta;
    matrix.at(1, 1) = alpha;
    matrix.at(1, 2) = (1.0f - alpha) * center.y + beta * center.x;
    return matrix;
}

void CImgproc::warpAffine(const U8& src, U8& dst, const Mat<float>& trans_matrix, const Size& out_size,
                          INTERP_TYPE interp, U8* mask) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(!trans_matrix.empty());
    ORVEX_CHECK(2 == trans_matrix.rows);
    ORVEX_CHECK(3 == trans_matrix.cols);
    Clock clock;
    clock.start();
    require_elements(trans_matrix, 6);
    Affine forward;
    std::copy_n(trans_matrix.data, 6, forward.m);
    // An output of no pixels touches no memory, whatever its shape. Deliberate: linear is the only sampling
    // there is (test: other_interpolation_gives_zeros_without_the_linear_line).
    const bool samples = interp == INTERP_LINEAR && out_size.width > 0 && out_size.height > 0;
    U8 out;
    if (samples)
        init_output(out, out_size.height, out_size.width, src.channels);
    else
        out.mat_create(out_size.height, out_size.width, src.channels, 0);
    if (interp == INTERP_LINEAR) {
        ORVEX_DEBUG_PREFIX();
        std::puts("linear");
    }
    if (samples) {
        require_elements(src, 0);
        if (mask) require_elements(*mask, static_cast<int64_t>(out.rows) * out.cols);
        const U8 copy = mask == &src ? src.clone() : U8();
        warp_linear(mask == &src ? copy : src, out, inverse(forward), fastest_isa(),
                    mask ? mask->data : nullptr);
    }
    dst.swap(out);
    ORVEX_REPORT_TIME(clock, "warpaffine cost time: %fms\n");
}

Point CImgproc::pointAffine(const Point& pt, const Mat<float>& trans_mat, float scale, const Point& origin) {
    ORVEX_CHECK(trans_mat.rows == 2 && trans_mat.cols == 3);
    const auto mapped = [&](int row, int from) {
        const float on_row = static_cast<float>(pt.y) * trans_mat.at(row, 1);
        const float on_col = static_cast<float>(pt.x) * trans_mat.at(row, 0);
        const float shift = ((on_row + on_col) + trans_mat.at(row, 2)) * scale;
        return saturate_to_int(static_cast<float>(from) + shift);
    };
    return Point(mapped(0, origin.x), mapped(1, origin.y));
}

Rect CImgproc::rectAffine(const Rect& src, const Mat<float>& trans_mat) {
    const Point last = src.right_bottom();
    const auto mapped = [&](int x, int y) { return pointAffine(Point(x, y), trans_mat, 1.0f, Point(0, 0)); };
    const Point top_left = mapped(src.x, src.y);
    const Point bottom_left = mapped(src.x, last.y);
    const Point top_right = mapped(last.x, src.y);
    const Point bottom_right = mapped(last.x, last.y);
    const int x = std::min(top_left.x, bottom_left.x);
    const int y = std::min(top_left.y, top_right.y);
    return Rect(x, y, wrap_add(wrap_sub(std::max(top_right.x, bottom_right.x), x), 1),
                wrap_add(wrap_sub(std::max(bottom_left.y, bottom_right.y), y), 1));
}

Rect CImgproc::checkRectInMat(const Size& size, const Rect& rect) {
    const Point first = rect.left_top();
    const Point last = rect.right_bottom();
    const int right = wrap_sub(size.width, 1);
    const int bottom = wrap_sub(size.height, 1);
    const int x0 = std::min(std::max(first.x, 0), right);
    const int y0 = std::min(std::max(first.y, 0), bottom);
    const int x1 = std::max(std::min(last.x, right), 0);
    const int y1 = std::max(std::min(last.y, bottom), 0);
    return Rect(x0, y0, wrap_add(wrap_sub(x1, x0), 1), wrap_add(wrap_sub(y1, y0), 1));
}

// ---- Binary morphology ----

void CImgproc::dilateBinary(const U8& src, U8& dst, const Size& size) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(size.width > 0);
    ORVEX_CHECK(size.height > 0);
    ORVEX_CHECK(src.rows >= size.height);
    ORVEX_CHECK(src.cols >= size.width);
    Clock clock;
    clock.start();
    U8 out;
    init_output(out, src.rows, src.cols, 1);
    require_pixels(src);
    dilate_binary(src, size, fastest_isa(), out.data);
    dst.swap(out);
    ORVEX_REPORT_TIME(clock, "binary image dilate cost time: %fms\n");
}

void CImgproc::erodeBinary(const U8& src, U8& dst, const Size& size) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    ORVEX_CHECK(size.width > 0);
    ORVEX_CHECK(size.height > 0);
    ORVEX_CHECK(src.rows >= size.height);
    ORVEX_CHECK(src.cols >= size.width);
    U8 out;
    init_output(out, src.rows, src.cols, 1);
    require_pixels(src);
    erode_binary(src, size, fastest_isa(), out.data);
    dst.swap(out);
}

void CImgproc::openBinary(const U8& src, U8& dst, const Size& size) {
    U8 eroded;
    erodeBinary(src, eroded, size);
    dilateBinary(eroded, dst, size);
}

void CImgproc::closeBinary(const U8& src, U8& dst, const Size& size) {
    U8 dilated;
    dilateBinary(src, dilated, size);
    erodeBinary(dilated, dst, size);
}

void CImgproc::morphologyBinary(const U8& src, U8& dst, const Size& size, MORPH_TYPE type) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    switch (type) {
        case MORPH_DILATE:
            return dilateBinary(src, dst, size);
        case MORPH_ERODE:
            return erodeBinary(src, dst, size);
        case MORPH_OPEN:
            return openBinary(src, dst, size);
        case MORPH_CLOSE:
            return closeBinary(src, dst, size);
    }
    throw CException(1);
}

void CImgproc::dilateRect(const Rect& src, Rect& dst, const Size& size) {
    dst = Rect(std::max(wrap_sub(src.x, size.width), 0), std::max(wrap_sub(src.y, size.height), 0),
               wrap_add(src.width, wrap_mul(2, size.width)), wrap_add(src.height, wrap_mul(2, size.height)));
}

// ---- Grey morphology ----

namespace {

void check_gray_window(const char* function, const U8& src, const Size& size) {
    ORVEX_CHECK_AS(function, !src.empty());
    ORVEX_CHECK_AS(function, 1 == src.channels);
    ORVEX_CHECK_AS(function, size.width > 0);
    ORVEX_CHECK_AS(function, size.height > 0);
    ORVEX_CHECK_AS(function, src.rows >= size.height);
    ORVEX_CHECK_AS(function, src.cols >= size.width);
}

}  // namespace

void CImgproc::dilateGray(const U8& src, U8& dst, const Size& size) {
    check_gray_window(__func__, src, size);
    U8 out;
    init_output(out, src.rows, src.cols, 1);
    require_pixels(src);
    dilate_gray(src, size, fastest_isa(), out.data);
    dst.swap(out);
}

void CImgproc::erodeGray(const U8& src, U8& dst, const Size& size) {
    check_gray_window(__func__, src, size);
    U8 out;
    init_output(out, src.rows, src.cols, 1);
    require_pixels(src);
    erode_gray(src, size, fastest_isa(), out.data);
    dst.swap(out);
}

void CImgproc::morphGradient(const U8& src, U8& dst, const Size& size) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    Clock clock;
    clock.start();
    const Source source(src, dst);
    const U8& from = *source;
    relabelled([&] {
        dst.init(from.rows, from.cols, 1, 0);
        check_gray_window("dilateGray", from, size);
        require_pixels(from);
        gray_gradient(from, size, fastest_isa(), dst.data);
        thresholdSeg(dst, dst, otsu(dst));
    });
    ORVEX_REPORT_TIME(clock, "morph gradient cost time: %fms\n");
}

// ---- Components ----

namespace {

// The output comes first in bwlabel: it is initialised even where there is no memory for the runs.
Labelling label_runs(const U8& src, Mat<int>& dst) {
    try {
        return Labelling(src, fastest_isa(), Runs::kKeep);
    } catch (...) {
        dst.init(src.rows, src.cols, 1, 0);
        throw;
    }
}

}  // namespace

void CImgproc::bwlabel(const U8& src, Mat<int>& dst, int& num) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    Clock clock;
    clock.start();
    if (held_elements(src) < 0) init_output_then_throw(dst, src.rows, src.cols, 1);
    const Labelling labelling = label_runs(src, dst);
    if (may_exceed_forest(src, labelling.provisional_labels())) {
        dst.init(src.rows, src.cols, 1, 0);
        scan_within_forest(src, dst);
    }
    create_unfilled(dst, src.rows, src.cols, 1);
    int* next = dst.data;
    labelling.for_each_run([&](int row, int begin, int end, int label) {
        int* const first = dst.data + static_cast<ptrdiff_t>(row) * src.cols + begin;
        next = std::fill_n(std::fill_n(next, first - next, 0), end - begin, label);
    });
    std::fill(next, dst.data + block_length(dst), 0);
    num = labelling.components();
    // Two negative extents leave no rows to walk; the first pixel is labelled all the same.
    if (src.rows < 0) dst.data[0] = num;
    ORVEX_REPORT_TIME(clock, "bwlabel cost time: %fms\n");
}

void CImgproc::connectdComponent(const U8& src, vector<Rect>& rects, vector<vector<Point>>* points) {
    ORVEX_CHECK(!src.empty());
    Clock clock;
    clock.start();
    rects.clear();
    relabelled([&] {
        ORVEX_CHECK_AS("bwlabel", 1 == src.channels);
        Clock label_clock;
        label_clock.start();
        require_pixels(src);
        const Labelling labelling(src, fastest_isa(), points ? Runs::kKeep : Runs::kForget);
        if (may_exceed_forest(src, labelling.provisional_labels())) {
            Mat<int> labels;
            labels.init(src.rows, src.cols, 1, 0);
            scan_within_forest(src, labels);
        }
        ORVEX_REPORT_TIME(label_clock, "bwlabel cost time: %fms\n");

        const int count = labelling.components();
        std::vector<int> areas;
        areas.reserve(static_cast<size_t>(count));
        for (int k = 0; k < count; ++k) {
            const Rect rect = labelling.rect(k + 1);
            areas.push_back(wrap_mul(rect.width, rect.height));
        }
        const std::vector<int> order = points ? partition_order(areas) : exchange_order(areas);
        vector<Rect> ordered(count);
        for (int k = 0; k < count; ++k) ordered[k] = labelling.rect(order[k] + 1);

        if (points) {
            vector<vector<Point>> lists(count);
            std::vector<Point*> next(static_cast<size_t>(count));  // by component
            for (int k = 0; k < count; ++k) {
                const int component = order[k];
                lists[k].reserve(labelling.pixels(component + 1));
                lists[k].size = labelling.pixels(component + 1);
                next[component] = lists[k].data;
            }
            labelling.for_each_run([&](int row, int begin, int end, int label) {
                Point*& at = next[label - 1];
                for (int col = begin; col < end; ++col) *at++ = Point(col, row);
            });
            points->swap(lists);
        }
        rects.swap(ordered);
    });
    if (points) ORVEX_REPORT_TIME(clock, "connect component got cost time: %fms\n");
}

void CImgproc::divideComponentsToRows(vector<Rect> rects, vector<vector<Rect>>& row_groups) {
    row_groups.clear();
    guarded([&] {
        const Bands bands = find_bands(rects);
        vector<vector<Rect>> groups(bands.count);
        row_groups.swap(groups);
        const auto stray = std::find(bands.of.begin(), bands.of.end(), -1);
        if (stray != bands.of.end()) {
            // Those before it are in their bands by then, not yet sorted.
            for (int k = 0; k <= stray - bands.of.begin(); ++k) row_groups[bands.of[k]].push_back(rects[k]);
        }
        for (const int k : order_by_x(rects)) row_groups[bands.of[k]].push_back(rects.data[k]);
    });
}

// ---- Shapes ----

int cross(const Point& a, const Point& b, const Point& c) {
    return wrap_sub(wrap_mul(wrap_sub(c.y, a.y), wrap_sub(b.x, a.x)),
                    wrap_mul(wrap_sub(c.x, a.x), wrap_sub(b.y, a.y)));
}

bool pointCmp(const Point& a, const Point& b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

bool pointCmp2(const Point& a, const Point& b) {
    return a.x > b.x || (a.x == b.x && a.y > b.y);
}

bool PosComp(const Point& a, const Point& b) {
    return pointCmp(a, b);
}

void CImgproc::convexHull(const vector<Point>& points, vector<Point>& hull) {
    Clock clock;
    clock.start();
    if (&hull != &points) hull.clear();
    const std::vector<Point> corners = wrapping_convex_hull(points);
    hull.clear();
    for (const Point& corner : corners) hull.push_back(corner);
    ORVEX_REPORT_TIME(clock, "convexhull done (%fms)\n");
}

RotatedRect CImgproc::minAreaRect(const U8& mat) {
    ORVEX_CHECK(!mat.empty());
    Clock clock;
    clock.start();
    require_counted_pixels(mat);
    vector<Point> hull;
    convexHull(outline_points(mat, fastest_isa()), hull);
    RotatedRect rect = minAreaRect(hull);
    ORVEX_REPORT_TIME(clock, "min area done (%fms)\n");
    return rect;
}

namespace {

float distance(const Point32f& a, const Point32f& b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
}

}  // namespace

RotatedRect CImgproc::minAreaRect(const vector<Point>& points) {
    RotatedRect rect;
    vector<Point32f> corners = RotatingCalipers::getMinimumBoundingRectangle(points);
    if (corners.size != 4) return rect;
    const Point32f &c0 = corners[0], &c1 = corners[1], &c2 = corners[2], &c3 = corners[3];
    rect.center = Point32f((((c0.x + c1.x) + c2.x) + c3.x) * 0.25f, (((c0.y + c1.y) + c2.y) + c3.y) * 0.25f);
    rect.width = saturate_to_int(distance(c0, c1));
    rect.height = saturate_to_int(distance(c1, c2));
    rect.angle = std::atan2(c0.y - c1.y, c1.x - c0.x);
    rect.pts = std::move(corners);
    return rect;
}

float CImgproc::getRotatedRectAngle(const RotatedRect& rotate_rect) {
    ORVEX_CHECK(4 == rotate_rect.pts.size());
    const Point32f &p0 = rotate_rect.pts[0], &p1 = rotate_rect.pts[1], &p2 = rotate_rect.pts[2];
    const float d01 = (p1.y - p0.y) * (p1.y - p0.y) + (p1.x - p0.x) * (p1.x - p0.x);
    const float d12 = (p2.y - p1.y) * (p2.y - p1.y) + (p2.x - p1.x) * (p2.x - p1.x);
    const float degrees = d01 > d12 ? calcLineDegree(p0, p1) : calcLineDegree(p2, p1);
    float folded = 90.0f;
    if (degrees > 90.0f) folded = 270.0f - degrees;
    if (degrees < 90.0f) folded = 90.0f - degrees;
    return folded / 180.0f * 3.14159f;
}

float CImgproc::calcLineDegree(const Point32f& p1, const Point32f& p2) {
    constexpr double kPi = static_cast<double>(3.14159f);  // 3.141590118408203
    const float dx = p2.x - p1.x;
    if (dx == 0.0f) return 90.0f;
    double radians = std::atan(static_cast<double>(p1.y - p2.y) / static_cast<double>(dx));
    if (radians < 0) radians += kPi;
    return static_cast<float>(radians * 180.0 / kPi);
}

// ---- Detectors ----

namespace {

// The lines that bgr2gray prints for a grey image, where its copy is not needed.
void report_gray_source() {
    Clock clock;
    clock.start();
    ORVEX_DEBUG_PREFIX();
    std::puts("bgr2gray - source image is 1-channel");
    ORVEX_REPORT_TIME(clock, "bgr2gray cost time: %fms\n");
}

// The score of a grey image within a mask, or, without one, within all of it: then one pixel of 255,
// enlarged, stands for a mask of the image's size, reduced.
float sharpness_within(const U8& gray, const U8* mask) {
    report_gray_source();
    constexpr int kRows = 15;
    const float scale = static_cast<float>(kRows) / static_cast<float>(gray.rows);
    const Size size(saturate_to_int(static_cast<float>(gray.cols) * scale), kRows);
    U8 small, small_mask, contrast, equalised, everything;
    CImgproc::resize(gray, small, size, INTERP_LINEAR);
    everything.mat_create(1, 1, 1, 255);
    CImgproc::resize(mask ? *mask : everything, small_mask, size, INTERP_LINEAR);

    CImgproc::dilateGray(small, contrast, Size(3, 3));
    const int n = require_pixels(small);
    kernels::subtract_bytes(fastest_isa(), contrast.data, small.data, contrast.data, n);
    const int largest = *std::max_element(contrast.data, contrast.data + n);
    ORVEX_DEBUG_PREFIX();
    std::printf("max diff: %d\n", largest);
    CImgproc::thresholdSeg(contrast, contrast, std::max(largest / 4, 8));
    CImgproc::equalizeHist(small, equalised);

    const float sharpness = sharpness_of(equalised, contrast, small_mask.data);
    ORVEX_DEBUG_PREFIX();
    std::printf("sharpness: %f\n", static_cast<double>(sharpness));
    return sharpness;
}

}  // namespace

float CImgproc::getSharpness(const U8& src) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels || 3 == src.channels);
    return guarded([&] {
        if (src.channels == 3) {
            U8 gray;
            bgr2gray(src, gray);
            return sharpness_within(gray, nullptr);
        }
        require_pixels(src);
        report_gray_source();
        return sharpness_within(src, nullptr);
    });
}

float CImgproc::getSharpness(const U8& src, const U8& mask) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(1 == src.channels);
    ORVEX_CHECK(!mask.empty());
    ORVEX_CHECK(1 == mask.channels);
    ORVEX_CHECK(src.rows == mask.rows);
    ORVEX_CHECK(src.cols == mask.cols);
    return guarded([&] {
        require_pixels(src);
        return sharpness_within(src, &mask);
    });
}

void CImgproc::saliencyDetect(const U8& src, U8& dst, const U8& mask, vector<unsigned char>& level_saliency) {
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(!mask.empty());
    if (src.rows != mask.rows || src.cols != mask.cols || src.channels != 1 || mask.channels != 1)
        throw CException(1, String::literal("saliency detection input format error"));
    const auto detect = [&] {
        const U8 copy = &mask == &dst ? mask.clone() : U8();
        const U8& selection = &mask == &dst ? copy : mask;
        if (held_elements(src) < 0 || held_elements(selection) < 0) {
            dst = src;
            throw CException(3);
        }
        const int n = require_pixels(src);
        if (&src != &dst) create_unfilled(dst, src.rows, src.cols, 1);
        const Isa isa = fastest_isa();
        uint32_t counts[256];
        kernels::count_masked_bytes(isa, src.data, selection.data, n, counts);
        int64_t selected = 0;
        for (const uint32_t count : counts) selected += count;
        unsigned char table[256];
        level_saliency_of(counts, selected, table);
        level_saliency.clear();
        for (const unsigned char level : table) level_saliency.push_back(level);
        kernels::look_up_bytes(isa, src.data, table, dst.data, n);
    };
    guarded(detect, String::literal("saliency detection algorithm error"));
}

void CImgproc::redColorDetect(const U8& src, U8& dst, bool relaxed) {
    ORVEX_DEBUG_PREFIX();
    std::puts("begin to red color detection");
    Clock clock;
    clock.start();
    ORVEX_CHECK(!src.empty());
    ORVEX_CHECK(3 == src.channels);
    const Source source(src, dst);
    const U8& photo = *source;
    dst.init(photo.rows, photo.cols, 1, 0);

    constexpr int kMostCols = 320;
    const int width = std::min(photo.cols, kMostCols);
    const float scale = static_cast<float>(width) / static_cast<float>(photo.cols);
    const int height = saturate_to_int(static_cast<float>(photo.rows) * scale);
    U8 small;
    resize(photo, small, Size(width, height), INTERP_LINEAR);
    const Redness redness = redness_of(small);
    if (!redness.is_somewhere()) return;

    U8 hsv, mask, closed;
    bgr2hsv(small, hsv);
    create_unfilled(mask, small.rows, small.cols, 1);
    mark_red(redness, hsv, mask);
    closeBinary(mask, closed, Size(3, 3));
    vector<Rect> rects;
    vector<vector<Point>> pixels;
    connectdComponent(closed, rects, &pixels);

    const SealSelection seals = select_seals(rects, pixels, Size(small.cols, small.rows), relaxed);
    if (seals.candidates.empty()) {
        ORVEX_ERROR_PREFIX();
        std::puts("could not find any valid red circle");
        throw CException(2, String::literal("could not find any valid red circle"));
    }
    for (const SealRescue& rescue : seals.rescued) {
        ORVEX_DEBUG_PREFIX();
        std::printf("set %d near %d to be true \n", rescue.component, rescue.candidate);
    }
    for (int k = 0; k < pixels.size; ++k) {
        if (seals.keep[k]) continue;
        for (int i = 0; i < pixels[k].size; ++i) closed.at(pixels[k][i].y, pixels[k][i].x) = 0;
    }

    closeBinary(closed, closed, Size(6, 6));
    U8 enlarged;
    resize(closed, enlarged, Size(photo.cols, photo.rows), INTERP_LINEAR);
    thresholdSeg(enlarged, dst, 128);
    ORVEX_REPORT_TIME(clock, "red color detection done (%fms)\n");
}

}  // namespace orvex_cv_991
