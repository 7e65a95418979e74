// Operations on points, rectangles and matrices.
#include "call.h"

namespace orvex_wasm {

namespace {

void give(const Point& point) {
    results[0].number = point.x;
    results[1].number = point.y;
}

void give(const Rect& rect) {
    results[0].number = rect.x;
    results[1].number = rect.y;
    results[2].number = rect.width;
    results[3].number = rect.height;
}

template <class Operation>
int geometry_from(const Operation& operation) {
    return code_of([&] { give(operation()); });
}

}  // namespace

// ---- Quarter turns ----

ORVEX_EXPORT(int) rot90ClockWise_point(int x, int y, int width, int height, int n) {
    return geometry_from([=] { return CImgproc::rot90ClockWise(Point(x, y), Size(width, height), n); });
}

ORVEX_EXPORT(int) rot90AntiClockWise_point(int x, int y, int width, int height, int n) {
    return geometry_from([=] { return CImgproc::rot90AntiClockWise(Point(x, y), Size(width, height), n); });
}

ORVEX_EXPORT(int)
rot90ClockWise_rect(int x, int y, int width, int height, int img_width, int img_height, int n) {
    return geometry_from(
        [=] { return CImgproc::rot90ClockWise(Rect(x, y, width, height), Size(img_width, img_height), n); });
}

ORVEX_EXPORT(int)
rot90AntiClockWise_rect(int x, int y, int width, int height, int img_width, int img_height, int n) {
    return geometry_from([=] {
        return CImgproc::rot90AntiClockWise(Rect(x, y, width, height), Size(img_width, img_height), n);
    });
}

// ---- Affine transforms ----

ORVEX_EXPORT(int) getRotationMatrix2D(float x, float y, float angle, float scale) {
    return code_of([=] {
        const Mat<float> matrix = CImgproc::getRotationMatrix2D(Point32f(x, y), angle, scale);
        for (int k = 0; k < 6; ++k) results[k].real = matrix.data[k];
    });
}

ORVEX_EXPORT(int)
pointAffine(int x, int y, const float* trans_mat, float scale, int origin_x, int origin_y) {
    return geometry_from([=] {
        return CImgproc::pointAffine(Point(x, y), matrix_from(trans_mat), scale, Point(origin_x, origin_y));
    });
}

ORVEX_EXPORT(int) rectAffine(int x, int y, int width, int height, const float* trans_mat) {
    return geometry_from(
        [=] { return CImgproc::rectAffine(Rect(x, y, width, height), matrix_from(trans_mat)); });
}

ORVEX_EXPORT(int) checkRectInMat(int cols, int rows, int x, int y, int width, int height) {
    return geometry_from(
        [=] { return CImgproc::checkRectInMat(Size(cols, rows), Rect(x, y, width, height)); });
}

ORVEX_EXPORT(int) dilateRect(int x, int y, int width, int height, int by_width, int by_height) {
    return geometry_from([=] {
        Rect grown;
        CImgproc::dilateRect(Rect(x, y, width, height), grown, Size(by_width, by_height));
        return grown;
    });
}

ORVEX_EXPORT(int) calcLineDegree(float x1, float y1, float x2, float y2) {
    return code_of([=] { results[0].real = CImgproc::calcLineDegree(Point32f(x1, y1), Point32f(x2, y2)); });
}

}  // namespace orvex_wasm
