// Operations from an image to an image or a number.
#include "call.h"

namespace orvex_wasm {

using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::MORPH_TYPE;

namespace {

template <class Operation>
int number_from(const Operation& operation) {
    return code_of([&] { results[0].number = operation(); });
}

template <class Operation>
int real_from(const Operation& operation) {
    return code_of([&] { results[0].real = operation(); });
}

}  // namespace

// ---- Colour conversion ----

ORVEX_EXPORT(int) bgr2gray(const U8* src, U8* dst) {
    return code_of([=] { CImgproc::bgr2gray(*src, *dst); });
}

ORVEX_EXPORT(int) yuv2bgr(const unsigned char* yuv, int rows, int cols, U8* dst) {
    return code_of([=] { CImgproc::yuv2bgr(yuv, rows, cols, *dst); });
}

ORVEX_EXPORT(int) bgr2hsv(const U8* src, U8* dst) {
    return code_of([=] { CImgproc::bgr2hsv(*src, *dst); });
}

// ---- Statistics ----

ORVEX_EXPORT(int) equalizeHist(const U8* src, U8* dst) {
    return code_of([=] { CImgproc::equalizeHist(*src, *dst); });
}

ORVEX_EXPORT(int) hist(const U8* src) {
    return code_of([=] {
        vector<float> h;
        CImgproc::hist(*src, h);
        give(results, h);
    });
}

ORVEX_EXPORT(int) meanStdDev(const U8* src) {
    return code_of([=] {
        float mean = 0, stddev = 0;
        CImgproc::meanStdDev(*src, mean, stddev);
        results[0].real = mean;
        results[1].real = stddev;
    });
}

ORVEX_EXPORT(int) minVal(const U8* src) {
    return number_from([=] { return CImgproc::minVal(*src); });
}

ORVEX_EXPORT(int) maxVal(const U8* src) {
    return number_from([=] { return CImgproc::maxVal(*src); });
}

ORVEX_EXPORT(int) countNonZero(const U8* src) {
    return number_from([=] { return CImgproc::countNonZero(*src); });
}

ORVEX_EXPORT(int) countNonZeroRate(const U8* src) {
    return real_from([=] { return CImgproc::countNonZeroRate(*src); });
}

// ---- Thresholds; a mask may be null where the library has a form without ----

ORVEX_EXPORT(int) otsu(const U8* src, const U8* mask) {
    return number_from([=] { return mask ? CImgproc::otsu(*src, *mask) : CImgproc::otsu(*src); });
}

ORVEX_EXPORT(int) thresholdSeg(const U8* src, U8* dst, int threshold) {
    return code_of([=] { CImgproc::thresholdSeg(*src, *dst, threshold); });
}

ORVEX_EXPORT(int) threshold(const U8* src, U8* dst, int low_th, int high_th, int type, const U8* mask) {
    return number_from([=] {
        // The form with a mask wants a destination with room.
        if (mask && !mask->empty()) dst->mat_create(src->rows, src->cols, 1, 0);
        return CImgproc::threshold(*src, *dst, low_th, high_th, type, mask ? *mask : U8());
    });
}

ORVEX_EXPORT(int) adaptiveThreshold(const U8* src, U8* dst, int block_size, double std_ratio, bool inverse) {
    return code_of([=] { CImgproc::adaptiveThreshold(*src, *dst, block_size, std_ratio, inverse); });
}

// ---- Quarter turns and mirroring ----

ORVEX_EXPORT(int) rot90ClockWise_FlipLR(const U8* src, U8* dst, int n, int f) {
    return code_of([=] { CImgproc::rot90ClockWise_FlipLR(*src, *dst, n, f); });
}

ORVEX_EXPORT(int) flipLR(const U8* src, U8* dst) {
    return code_of([=] { CImgproc::flipLR(*src, *dst); });
}

ORVEX_EXPORT(int) rot90ClockWise(const U8* src, U8* dst, int n) {
    return code_of([=] { CImgproc::rot90ClockWise(*src, *dst, n); });
}

ORVEX_EXPORT(int) rot90AntiClockWise(const U8* src, U8* dst, int n) {
    return code_of([=] { CImgproc::rot90AntiClockWise(*src, *dst, n); });
}

// ---- Resize and affine transforms ----

ORVEX_EXPORT(int) resize_to(const U8* src, U8* dst, int width, int height, int interp) {
    return code_of(
        [=] { CImgproc::resize(*src, *dst, Size(width, height), static_cast<INTERP_TYPE>(interp)); });
}

ORVEX_EXPORT(int) resize_by(const U8* src, U8* dst, float scale, int interp) {
    return code_of([=] { CImgproc::resize(*src, *dst, scale, static_cast<INTERP_TYPE>(interp)); });
}

ORVEX_EXPORT(int)
warpAffine(const U8* src, U8* dst, const float* trans_matrix, int width, int height, int interp, U8* mask) {
    return code_of([=] {
        CImgproc::warpAffine(*src, *dst, matrix_from(trans_matrix), Size(width, height),
                             static_cast<INTERP_TYPE>(interp), mask);
    });
}

// ---- Morphology ----

ORVEX_EXPORT(int) dilateBinary(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::dilateBinary(*src, *dst, Size(width, height)); });
}

ORVEX_EXPORT(int) erodeBinary(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::erodeBinary(*src, *dst, Size(width, height)); });
}

ORVEX_EXPORT(int) openBinary(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::openBinary(*src, *dst, Size(width, height)); });
}

ORVEX_EXPORT(int) closeBinary(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::closeBinary(*src, *dst, Size(width, height)); });
}

ORVEX_EXPORT(int) morphologyBinary(const U8* src, U8* dst, int width, int height, int type) {
    return code_of(
        [=] { CImgproc::morphologyBinary(*src, *dst, Size(width, height), static_cast<MORPH_TYPE>(type)); });
}

ORVEX_EXPORT(int) dilateGray(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::dilateGray(*src, *dst, Size(width, height)); });
}

ORVEX_EXPORT(int) erodeGray(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::erodeGray(*src, *dst, Size(width, height)); });
}

ORVEX_EXPORT(int) morphGradient(const U8* src, U8* dst, int width, int height) {
    return code_of([=] { CImgproc::morphGradient(*src, *dst, Size(width, height)); });
}

// ---- Detectors ----

ORVEX_EXPORT(int) getSharpness(const U8* src, const U8* mask) {
    return real_from(
        [=] { return mask ? CImgproc::getSharpness(*src, *mask) : CImgproc::getSharpness(*src); });
}

ORVEX_EXPORT(int) saliencyDetect(const U8* src, U8* dst, const U8* mask) {
    return code_of([=] {
        vector<unsigned char> level_saliency;
        CImgproc::saliencyDetect(*src, *dst, *mask, level_saliency);
        give(results, level_saliency);
    });
}

ORVEX_EXPORT(int) redColorDetect(const U8* src, U8* dst, bool relaxed) {
    return code_of([=] { CImgproc::redColorDetect(*src, *dst, relaxed); });
}

}  // namespace orvex_wasm
