#include "shapes.h"

#include <algorithm>
#include <cmath>

#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::RotatingCalipers;
using reference::List;

vector<Point> to_library(const List<reference::Point>& points) {
    vector<Point> list;
    for (const reference::Point& point : points.items) list.push_back(Point(point.x, point.y));
    return list;
}

List<reference::Point> any_points(Random& random, int most) {
    List<reference::Point> points;
    const int spread = random.pick({1, 3, 20, 1000, 23170, 23171, 40000, 1000000, INT32_MAX});
    for (int n = random.range(0, most); n > 0; --n)
        points.push_back({random.range(-spread, spread), random.range(-spread, spread)});
    if (random.chance(20))  // on a line
        for (reference::Point& point : points.items) point.y = reference::wrapping(int64_t{2} * point.x + 1);
    return points;
}

void compare_hull(const List<reference::Point>& points, bool in_place) {
    vector<Point> list = to_library(points);
    vector<Point> hull(4, Point(7, 7));
    List<reference::Point> expected;
    expected.resize(4);
    auto got = of_library([&] { CImgproc::convexHull(list, in_place ? list : hull); });
    auto want = of_reference([&] { reference::convexHull(points, expected); });
    ASSERT_TRUE(same(got.with("hull", in_place ? list : hull), want.with("hull", expected)))
        << points.size() << " points";
}

TEST(Differential, convexHull_equals_the_reference) {
    Random random(121);
    for (int round = 0; round < 6000; ++round) {
        compare_hull(any_points(random, round % 10 ? 30 : 600), random.chance(20));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

// A cluster, and one point so far out that products wrap: it may come first, last or in between.
TEST(Differential, convexHull_with_one_point_far_out_equals_the_reference) {
    Random random(126);
    for (int round = 0; round < 3000; ++round) {
        List<reference::Point> points;
        const int spread = random.pick({3, 20, 300}), far = random.pick({60000, 5000000, INT32_MAX});
        for (int n = random.range(3, 30); n > 0; --n)
            points.push_back({random.range(-spread, spread), random.range(-spread, spread)});
        const int at = random.pick({0, points.size() - 1, random.range(0, points.size() - 1)});
        points[at] = {random.pick({-far, far}), random.pick({-far, far, 0})};
        if (random.chance(50)) points[at] = {points[at].y, points[at].x};
        compare_hull(points, random.chance(20));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

// Every set of up to 9 points of a 3 x 3 grid.
TEST(Differential, convexHull_of_every_small_set_equals_the_reference) {
    for (int bits = 0; bits < 512; ++bits) {
        List<reference::Point> points;
        for (int k = 0; k < 9; ++k)
            if (bits >> k & 1) points.push_back({k % 3 - 1, k / 3 - 1});
        compare_hull(points, false);
    }
}

// Further out than the plain calipers reach, the corners come from the library's own; what is made
// of them is compared.
List<reference::Point32f> calipers(const List<reference::Point>& points) {
    const auto is_near = [](int x) { return -(1 << 30) < x && x < 1 << 30; };
    if (std::all_of(points.items.begin(), points.items.end(),
                    [&](const reference::Point& point) { return is_near(point.x) && is_near(point.y); }))
        return reference::calipers(points);
    const vector<Point32f> corners = RotatingCalipers::getMinimumBoundingRectangle(to_library(points));
    List<reference::Point32f> list;
    for (int k = 0; k < corners.size; ++k) list.push_back({corners[k].x, corners[k].y});
    return list;
}

template <class Rect, class Size>
Outcome& with_rect(Outcome& outcome, const Rect& rect, Size size) {
    for (int k = 0; k < size; ++k) outcome.with("corner x", rect.pts[k].x).with("corner y", rect.pts[k].y);
    return outcome.with("corners", static_cast<int>(size))
        .with("x", rect.center.x)
        .with("y", rect.center.y)
        .with("width", rect.width)
        .with("height", rect.height)
        .with("angle", rect.angle);
}

TEST(Differential, minAreaRect_of_points_equals_the_reference) {
    Random random(122);
    for (int round = 0; round < 4000; ++round) {
        const List<reference::Point> points = any_points(random, 30);
        RotatedRect rect;
        reference::RotatedRect expected;
        auto got = of_library([&] { rect = CImgproc::minAreaRect(to_library(points)); });
        auto want = of_reference([&] { expected = reference::minAreaRect(points, calipers); });
        ASSERT_TRUE(
            same(with_rect(got, rect, rect.pts.size()), with_rect(want, expected, expected.pts.size())));
    }
}

void compare_mask(const U8& mask) {
    RotatedRect rect;
    reference::RotatedRect expected;
    auto got = of_library([&] { rect = CImgproc::minAreaRect(mask); });
    auto want = of_reference([&] { expected = reference::minAreaRect(to_reference(mask), calipers); });
    ASSERT_TRUE(same(with_rect(got, rect, rect.pts.size()), with_rect(want, expected, expected.pts.size())))
        << shape_of(mask);
}

TEST(Differential, minAreaRect_of_masks_equals_the_reference) {
    Random random(123);
    for (int round = 0; round < 3000; ++round) {
        U8 mask = any_image(random, random.chance(5) ? 3 : 1);
        if (random.chance(50)) {  // a blob in a dark mask
            mask = filled(random.range(1, 90), random.range(1, 150), 1, 0);
            const int x = random.range(0, mask.cols - 1), y = random.range(0, mask.rows - 1);
            for (int k = random.range(1, 60); k > 0; --k) {
                const int col = x + random.range(-20, 20), row = y + random.range(-9, 9);
                if (col >= 0 && row >= 0 && col < mask.cols && row < mask.rows)
                    mask.data[row * mask.cols + col] = 1;
            }
        }
        compare_mask(mask);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, minAreaRect_of_odd_matrices_equals_the_reference) {
    for (const U8& mask : odd_matrices()) compare_mask(mask);
}

float any_float(Random& random) {
    if (random.chance(5)) return random.pick({0.0f, -0.0f, 1e38f, -1e38f, std::nanf(""), HUGE_VALF, 1e-40f});
    if (random.chance(50)) return static_cast<float>(random.range(-5, 5));
    return static_cast<float>(random.range(-1000000, 1000000)) / 977.0f;
}

TEST(Differential, angles_equal_the_reference) {
    Random random(124);
    for (int round = 0; round < 50000; ++round) {
        RotatedRect rect;
        List<reference::Point32f> points;
        const int corners = random.chance(96) ? 4 : random.range(0, 6);
        for (int k = 0; k < corners; ++k) {
            points.push_back({any_float(random), any_float(random)});
            rect.pts.push_back(Point32f(points[k].x, points[k].y));
        }
        float angle = -1, expected = -1;
        auto got = of_library([&] { angle = CImgproc::getRotatedRectAngle(rect); });
        auto want = of_reference([&] { expected = reference::getRotatedRectAngle(points); });
        if (std::isnan(angle) && std::isnan(expected)) angle = expected = 0;
        ASSERT_TRUE(same(got.with("angle", angle), want.with("angle", expected))) << "round " << round;
        if (corners < 2) continue;
        float degrees = CImgproc::calcLineDegree(rect.pts[0], rect.pts[1]);
        float expected_degrees = reference::calcLineDegree(points[0], points[1]);
        if (std::isnan(degrees) && std::isnan(expected_degrees)) continue;
        ASSERT_EQ(std::signbit(degrees), std::signbit(expected_degrees));
        ASSERT_EQ(degrees, expected_degrees) << "round " << round;
    }
}

TEST(Differential, point_helpers_equal_the_reference) {
    Random random(125);
    for (int round = 0; round < 20000; ++round) {
        const List<reference::Point> points = any_points(random, 3);
        if (points.size() < 3) continue;
        const Point a(points[0].x, points[0].y), b(points[1].x, points[1].y), c(points[2].x, points[2].y);
        ASSERT_EQ(orvex_cv_991::cross(a, b, c), reference::cross(points[0], points[1], points[2]));
        ASSERT_EQ(orvex_cv_991::pointCmp(a, b), a.x < b.x || (a.x == b.x && a.y < b.y));
        ASSERT_EQ(orvex_cv_991::pointCmp2(a, b), a.x > b.x || (a.x == b.x && a.y > b.y));
        ASSERT_EQ(orvex_cv_991::PosComp(a, b), orvex_cv_991::pointCmp(a, b));
    }
}

}  // namespace
}  // namespace testing_support
