// Components and outlines.
#include "call.h"

namespace orvex_wasm {

namespace {

// The corners as a list, then center, width, height and angle.
void give(const RotatedRect& rect) {
    orvex_wasm::give(results, rect.pts);
    results[2].real = rect.center.x;
    results[3].real = rect.center.y;
    results[4].number = rect.width;
    results[5].number = rect.height;
    results[6].real = rect.angle;
}

}  // namespace

ORVEX_EXPORT(int) bwlabel(const U8* src, Mat<int>* dst) {
    return code_of([=] { CImgproc::bwlabel(*src, *dst, results[0].number); });
}

ORVEX_EXPORT(int) connectdComponent(const U8* src) {
    return code_of([=] {
        vector<Rect> rects;
        CImgproc::connectdComponent(*src, rects, nullptr);
        orvex_wasm::give(results, rects);
    });
}

ORVEX_EXPORT(int) connectdComponent_points(const U8* src) {
    return code_of([=] {
        vector<Rect> rects;
        vector<vector<Point>> points;
        CImgproc::connectdComponent(*src, rects, &points);
        orvex_wasm::give(results, rects);
        orvex_wasm::give(results + 2, points);
    });
}

ORVEX_EXPORT(int) divideComponentsToRows(const Rect* rects, int n) {
    return code_of([=] {
        vector<vector<Rect>> row_groups;
        CImgproc::divideComponentsToRows(list_from(rects, n), row_groups);
        orvex_wasm::give(results, row_groups);
    });
}

ORVEX_EXPORT(int) convexHull(const Point* points, int n) {
    return code_of([=] {
        vector<Point> hull;
        CImgproc::convexHull(list_from(points, n), hull);
        orvex_wasm::give(results, hull);
    });
}

ORVEX_EXPORT(int) minAreaRect(const U8* mat) {
    return code_of([=] { give(CImgproc::minAreaRect(*mat)); });
}

ORVEX_EXPORT(int) minAreaRect_points(const Point* points, int n) {
    return code_of([=] { give(CImgproc::minAreaRect(list_from(points, n))); });
}

ORVEX_EXPORT(int)
getRotatedRectAngle(const Point32f* pts, int n, float x, float y, int width, int height, float angle) {
    return code_of([=] {
        RotatedRect rect;
        rect.pts = list_from(pts, n);
        rect.center = Point32f(x, y);
        rect.width = width;
        rect.height = height;
        rect.angle = angle;
        results[0].real = CImgproc::getRotatedRectAngle(rect);
    });
}

}  // namespace orvex_wasm
