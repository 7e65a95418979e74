// Hulls and rectangles of least area; angles have a file of their own.
#include "shapes.h"

#include "driver.h"
#include "shape_angles.h"

namespace fuzzing {
namespace {

using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::RotatingCalipers;

List<reference::Point> any_points(Reader& reader, int most) {
    List<reference::Point> points;
    const int kind = reader.range(0, 3), n = reader.range(0, most);
    for (int k = 0; k < n; ++k) {
        Point at(reader.byte(), 0);
        at.y = reader.byte();
        if (kind == 1) at = Point(at.x % 4, at.y % 4);
        if (kind == 2) at = Point(at.x * 182 - 23170, at.y * 182 - 23170);  // where products begin to wrap
        if (kind == 3 && at.x >= 192) at = reader.point();
        points.push_back({at.x, at.y});
    }
    return points;
}

vector<Point> to_library(const List<reference::Point>& points) {
    vector<Point> list;
    list.reserve(points.size());
    for (const reference::Point& point : points.items) list.push_back(Point(point.x, point.y));
    return list;
}

// The corners come from the library's own calipers; what is made of them is compared.
List<reference::Point32f> calipers(const List<reference::Point>& points) {
    const vector<Point32f> corners = RotatingCalipers::getMinimumBoundingRectangle(to_library(points));
    List<reference::Point32f> list;
    for (int k = 0; k < corners.size; ++k) list.push_back({corners[k].x, corners[k].y});
    return list;
}

template <class AnyRect>
Outcome& with_rect(Outcome& outcome, const AnyRect& rect, int corners) {
    for (int k = 0; k < corners; ++k)
        outcome.with("corner x", canonical(rect.pts[k].x)).with("corner y", canonical(rect.pts[k].y));
    outcome.with("x", canonical(rect.center.x)).with("y", canonical(rect.center.y));
    return outcome.with("width", rect.width).with("height", rect.height).with("angle", canonical(rect.angle));
}

void hull(Reader& reader) {
    const bool in_place = reader.flag();
    const List<reference::Point> points = any_points(reader, 300);
    vector<Point> list = to_library(points), out(2, Point(7, 7));
    List<reference::Point> expected;
    auto got = of_library([&] { CImgproc::convexHull(list, in_place ? list : out); });
    auto want = of_reference([&] { reference::convexHull(points, expected); });
    require_same(got.with("hull", in_place ? list : out), want.with("hull", expected),
                 call("convexHull", points.size(), in_place));
}

void rectangle(Reader& reader, bool of_mask) {
    const List<reference::Point> points = any_points(reader, of_mask ? 0 : 60);
    Shape shape = reader.shape(1, 4096);
    constexpr int kMostSide = 1 << 17;  // the reference keeps notes of every row and column
    if (shape.rows > kMostSide || shape.cols > kMostSide) shape = {5, 4, 1};
    const U8 mask = of_mask ? reader.image(shape) : U8();
    RotatedRect rect;
    reference::RotatedRect expected;
    auto got = of_library(
        [&] { rect = of_mask ? CImgproc::minAreaRect(mask) : CImgproc::minAreaRect(to_library(points)); });
    auto want = of_reference([&] {
        expected = of_mask ? reference::minAreaRect(to_reference(mask), calipers)
                           : reference::minAreaRect(points, calipers);
    });
    got.with("corners", rect.pts.size());
    want.with("corners", expected.pts.size());
    require_same(got, want, "minAreaRect");
    require_same(
        with_rect(got, rect, rect.pts.size), with_rect(want, expected, rect.pts.size),
        "minAreaRect of " + (of_mask ? testing_support::shape_of(mask) : call("points", points.size())));
}

void run(Reader& reader) {
    const int operation = reader.range(0, 7);
    if (operation < 3) return hull(reader);
    if (operation < 6) return rectangle(reader, operation == 5);
    if (operation == 6) return angles(reader);
    three_points(reader);
}

const Registration registration("shapes", run);

}  // namespace
}  // namespace fuzzing
