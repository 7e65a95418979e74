#include "shape_angles.h"

#include "driver.h"
#include "shapes.h"

namespace fuzzing {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::RotatedRect;

void angles(Reader& reader) {
    RotatedRect rect;
    List<reference::Point32f> points;
    for (int k = reader.seldom() ? reader.range(0, 6) : 4; k > 0; --k) {
        const float x = reader.number();
        points.push_back({x, reader.number()});
        rect.pts.push_back(Point32f(x, points.items.back().y));
    }
    rect.pts = without_room(rect.pts);
    float angle = -1, expected = -1;
    auto got = of_library([&] { angle = CImgproc::getRotatedRectAngle(rect); });
    auto want = of_reference([&] { expected = reference::getRotatedRectAngle(points); });
    require_same(got.with("angle", canonical(angle)), want.with("angle", canonical(expected)),
                 "getRotatedRectAngle");
    if (points.size() < 2) return;
    got.with("degrees", canonical(CImgproc::calcLineDegree(rect.pts[0], rect.pts[1])));
    want.with("degrees", canonical(reference::calcLineDegree(points[0], points[1])));
    require_same(got, want, call("calcLineDegree", points[0].x, points[0].y, points[1].x, points[1].y));
}

void three_points(Reader& reader) {
    const Point a = reader.point(), b = reader.point(), c = reader.point();
    if (orvex_cv_991::cross(a, b, c) != reference::cross({a.x, a.y}, {b.x, b.y}, {c.x, c.y}))
        fail(call("cross differs", a.x, a.y, b.x, b.y, c.x, c.y));
    const bool right = a.x < b.x || (a.x == b.x && a.y < b.y), left = a.x > b.x || (a.x == b.x && a.y > b.y);
    if (orvex_cv_991::pointCmp(a, b) != right || orvex_cv_991::PosComp(a, b) != right ||
        orvex_cv_991::pointCmp2(a, b) != left)
        fail(call("order of points differs", a.x, a.y, b.x, b.y));
}

}  // namespace fuzzing
