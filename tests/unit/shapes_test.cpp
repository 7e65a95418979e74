#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using orvex_991::vector;
using namespace orvex_cv_991;

vector<Point> list_of(std::initializer_list<Point> points) {
    vector<Point> list;
    for (const Point& point : points) list.push_back(point);
    return list;
}

std::vector<std::pair<int, int>> hull_of(const vector<Point>& points) {
    vector<Point> hull;
    EXPECT_EQ(normalised(printed_by([&] { CImgproc::convexHull(points, hull); })),
              "D cv_imgproc.cpp:#] convexhull done (#ms)\n");
    std::vector<std::pair<int, int>> corners;
    for (int k = 0; k < hull.size; ++k) corners.emplace_back(hull[k].x, hull[k].y);
    return corners;
}

using Corners = std::vector<std::pair<int, int>>;

TEST(Hull, of_nothing_is_nothing) {
    EXPECT_EQ(hull_of(vector<Point>()), Corners{});
}

TEST(Hull, of_one_point_is_that_point) {
    EXPECT_EQ(hull_of(list_of({Point(3, 4)})), (Corners{{3, 4}}));
    EXPECT_EQ(hull_of(vector<Point>(5, Point(3, 4))), (Corners{{3, 4}}));
}

TEST(Hull, of_two_points_has_the_smaller_first) {
    EXPECT_EQ(hull_of(list_of({Point(3, 4), Point(3, 1)})), (Corners{{3, 1}, {3, 4}}));
}

TEST(Hull, of_a_line_is_its_ends) {
    EXPECT_EQ(hull_of(list_of({Point(1, 1), Point(0, 0), Point(2, 2)})), (Corners{{0, 0}, {2, 2}}));
}

TEST(Hull, of_a_square_is_its_corners_from_the_least_one_on) {
    EXPECT_EQ(
        hull_of(list_of({Point(4, 4), Point(2, 0), Point(0, 4), Point(2, 2), Point(4, 0), Point(0, 0)})),
        (Corners{{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
}

TEST(Hull, products_wrap_in_32_bits) {
    // 65536 * 65536 wraps to 0, which pops a corner that exact products would keep.
    EXPECT_EQ(hull_of(list_of({Point(0, 0), Point(65536, 0), Point(65536, 65536), Point(0, 65536)})).size(),
              2u);
}

TEST(Hull, may_replace_its_own_points) {
    vector<Point> points = list_of({Point(1, 1), Point(0, 0), Point(2, 2)});
    printed_by([&] { CImgproc::convexHull(points, points); });
    EXPECT_EQ(points.size, 2);
}

TEST(Hull, hundreds_of_thousands_of_points_on_a_circle_are_no_matter) {
    vector<Point> points;
    for (int k = 0; k < 200000; ++k) {
        const double a = k * 6.283185307179586 / 200000;
        points.push_back(Point(static_cast<int>(10000 * std::cos(a)), static_cast<int>(10000 * std::sin(a))));
    }
    EXPECT_GT(hull_of(points).size(), 1000u);
}

TEST(PointHelpers, cross_and_orders) {
    EXPECT_EQ(cross(Point(0, 0), Point(2, 0), Point(0, 3)), 6);
    EXPECT_EQ(cross(Point(0, 0), Point(65536, 0), Point(0, 65536)), 0);
    EXPECT_TRUE(pointCmp(Point(1, 5), Point(2, 0)) && PosComp(Point(1, 5), Point(1, 6)));
    EXPECT_FALSE(pointCmp(Point(1, 5), Point(1, 5)) || PosComp(Point(1, 5), Point(1, 5)));
    EXPECT_TRUE(pointCmp2(Point(2, 0), Point(1, 5)) && pointCmp2(Point(1, 6), Point(1, 5)));
}

// ---- Calipers ----

using Box = vector<Point32f>;

double side(const Box& box, int k) {
    const Point32f &a = box[k % 4], &b = box[(k + 1) % 4];
    return std::hypot(static_cast<double>(b.x) - a.x, static_cast<double>(b.y) - a.y);
}

// How far a point lies outside of the side from corner k to the next, the rectangle being on the left.
double outside(const Box& box, int k, double x, double y) {
    const Point32f &a = box[k % 4], &b = box[(k + 1) % 4];
    const double dx = static_cast<double>(b.x) - a.x, dy = static_cast<double>(b.y) - a.y;
    return -(dx * (y - a.y) - dy * (x - a.x)) / std::hypot(dx, dy);
}

// The least area over all hull edges, each measured against every point.
double least_area(const vector<Point>& points, const Corners& hull) {
    double least = HUGE_VAL;
    for (size_t i = 0; i < hull.size(); ++i) {
        const auto &a = hull[i], &b = hull[(i + 1) % hull.size()];
        const double dx = static_cast<double>(b.first) - a.first,
                     dy = static_cast<double>(b.second) - a.second;
        const double length = std::hypot(dx, dy);
        double low = HUGE_VAL, high = -HUGE_VAL, far = 0;
        for (int k = 0; k < points.size; ++k) {
            const double x = static_cast<double>(points[k].x) - a.first,
                         y = static_cast<double>(points[k].y) - a.second;
            low = std::min(low, (x * dx + y * dy) / length);
            high = std::max(high, (x * dx + y * dy) / length);
            far = std::max(far, std::abs(dx * y - dy * x) / length);
        }
        least = std::min(least, (high - low) * far);
    }
    return least;
}

TEST(Calipers, the_rectangle_holds_every_point_and_has_the_least_area) {
    Random random(5);
    int boxes = 0;
    for (int round = 0; round < 4000; ++round) {
        const int spread = random.pick({2, 10, 300, 10000});
        vector<Point> points;
        for (int n = random.range(0, 25); n > 0; --n)
            points.push_back(Point(random.range(-spread, spread), random.range(-spread, spread)));
        const Corners hull = hull_of(points);  // exact: the coordinates are small
        const Box box = RotatingCalipers::getMinimumBoundingRectangle(points);
        ASSERT_EQ(box.size, hull.size() < 3 ? 0 : 4) << "round " << round;
        if (box.size == 0) continue;
        ++boxes;
        const double tolerance = 1e-6 * (1 + 4 * spread);
        for (int k = 0; k < points.size; ++k)
            for (int edge = 0; edge < 4; ++edge)
                ASSERT_LT(outside(box, edge, points[k].x, points[k].y), tolerance);
        EXPECT_NEAR(side(box, 0), side(box, 2), tolerance);
        EXPECT_NEAR(side(box, 1), side(box, 3), tolerance);
        const double area = least_area(points, hull);
        // Corners are rounded to single precision, some 2^-23 of their coordinates.
        const double rounding = (side(box, 0) + side(box, 1)) * spread * 0x1p-22;
        ASSERT_NEAR(side(box, 0) * side(box, 1), area, rounding + 1e-9 * area) << "round " << round;
    }
    EXPECT_GT(boxes, 3000);
}

TEST(Calipers, any_order_and_repetition_of_the_points_gives_the_same_rectangle) {
    Random random(6);
    for (int round = 0; round < 300; ++round) {
        vector<Point> points;
        for (int n = 0; n < 12; ++n) points.push_back(Point(random.range(-50, 50), random.range(-50, 50)));
        vector<Point> hull;
        printed_by([&] { CImgproc::convexHull(points, hull); });
        const Box box = RotatingCalipers::getMinimumBoundingRectangle(hull);
        points += points;
        std::swap(points[0], points[7]);
        const Box again = RotatingCalipers::getMinimumBoundingRectangle(points);
        ASSERT_EQ(box.size, 4);
        for (int k = 0; k < 4; ++k)
            ASSERT_TRUE(box[k].x == again[k].x && box[k].y == again[k].y) << "round " << round;
    }
}

// Polygons that turn left throughout but go round twice, and ones that start elsewhere.
TEST(Calipers, a_star_is_not_taken_for_a_hull) {
    const vector<Point> star =
        list_of({Point(0, 30), Point(20, -30), Point(-30, 10), Point(30, 10), Point(-20, -30)});
    vector<Point> reversed;
    for (int k = 4; k >= 0; --k) reversed.push_back(star[k]);
    const double area = least_area(star, hull_of(star));
    for (const vector<Point>& points : {star, reversed}) {
        const Box box = RotatingCalipers::getMinimumBoundingRectangle(points);
        EXPECT_NEAR(side(box, 0) * side(box, 1), area, 1e-3);
    }
}

TEST(Calipers, an_upright_rectangle_comes_back_exactly) {
    const Box box = RotatingCalipers::getMinimumBoundingRectangle(
        list_of({Point(7, 20), Point(3, 5), Point(7, 5), Point(3, 20), Point(5, 11)}));
    const float corners[] = {3, 5, 7, 5, 7, 20, 3, 20};
    for (int k = 0; k < 4; ++k) EXPECT_TRUE(box[k].x == corners[2 * k] && box[k].y == corners[2 * k + 1]);
}

TEST(Calipers, fewer_than_three_hull_points_give_none) {
    EXPECT_EQ(RotatingCalipers::getMinimumBoundingRectangle(vector<Point>()).size, 0);
    EXPECT_EQ(RotatingCalipers::getMinimumBoundingRectangle(list_of({Point(1, 1), Point(1, 1)})).size, 0);
    EXPECT_EQ(
        RotatingCalipers::getMinimumBoundingRectangle(list_of({Point(1, 1), Point(5, 9), Point(3, 5)})).size,
        0);
}

TEST(Calipers, coordinates_to_the_ends_of_int_are_handled) {
    const int far = 1 << 30;
    Box box = RotatingCalipers::getMinimumBoundingRectangle(
        list_of({Point(-far, -far), Point(far, -far), Point(far, far), Point(-far, far), Point(0, 0)}));
    ASSERT_EQ(box.size, 4);
    EXPECT_EQ(box[0].x, -1073741824.0f);
    EXPECT_EQ(box[2].y, 1073741824.0f);
    Random random(7);
    for (int round = 0; round < 500; ++round) {
        vector<Point> points;
        for (int n = 0; n < 9; ++n)
            points.push_back(Point(static_cast<int>(random.bits()), static_cast<int>(random.bits())));
        box = RotatingCalipers::getMinimumBoundingRectangle(points);
        ASSERT_EQ(box.size, 4);
        for (int k = 0; k < points.size; ++k)
            for (int edge = 0; edge < 4; ++edge)
                ASSERT_LT(outside(box, edge, points[k].x, points[k].y), 4096);
    }
}

// ---- Minimum-area rectangle ----

RotatedRect rect_of(const U8& mask) {
    RotatedRect rect;
    EXPECT_EQ(normalised(printed_by([&] { rect = CImgproc::minAreaRect(mask); })),
              "D cv_imgproc.cpp:#] convexhull done (#ms)\nD cv_imgproc.cpp:#] min area done (#ms)\n");
    return rect;
}

TEST(MinAreaRect, of_a_single_pixel_has_no_corners) {
    U8 mask = filled(5, 5, 1, 0);
    mask.at(2, 3) = 255;
    EXPECT_EQ(rect_of(mask).pts.size, 0);
}

TEST(MinAreaRect, of_an_empty_foreground_has_no_corners) {
    EXPECT_EQ(rect_of(filled(5, 5, 1, 0)).pts.size, 0);
}

TEST(MinAreaRect, of_a_block_is_the_distance_of_its_corner_pixels) {
    U8 mask = filled(20, 30, 1, 0);
    for (int row = 4; row < 10; ++row)
        for (int col = 7; col < 23; ++col) mask.at(row, col) = 1;
    const RotatedRect rect = rect_of(mask);
    ASSERT_EQ(rect.pts.size, 4);
    EXPECT_EQ(rect.width, 15);
    EXPECT_EQ(rect.height, 5);
    EXPECT_EQ(rect.center.x, 14.5f);
    EXPECT_EQ(rect.center.y, 6.5f);
    EXPECT_EQ(rect.angle, 0.0f);
}

TEST(MinAreaRect, of_a_turned_block_has_its_angle) {
    U8 mask = filled(200, 200, 1, 0);
    for (int u = 0; u < 1200; ++u)
        for (int v = 0; v < 300; ++v) {  // 120 x 30 pixels, turned by 20 degrees clockwise on screen
            const double x = 60 + u * 0.1 * 0.9397 - v * 0.1 * 0.3420,
                         y = 40 + u * 0.1 * 0.3420 + v * 0.1 * 0.9397;
            mask.at(static_cast<int>(y), static_cast<int>(x)) = 255;
        }
    const RotatedRect rect = rect_of(mask);
    ASSERT_EQ(rect.pts.size, 4);
    const double turned = std::fmod(rect.angle * 180 / 3.14159265 + 360, 90);
    EXPECT_NEAR(turned, 70, 1);  // -20, up to quarter turns
    EXPECT_NEAR(std::max(rect.width, rect.height), 120, 2);
}

// ---- Angles ----

uint32_t bits_of(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

TEST(LineDegree, rising_to_the_right_is_small_and_positive) {
    // With pi as 3.14159 a line at 45 degrees comes out just above.
    EXPECT_EQ(bits_of(CImgproc::calcLineDegree(Point32f(0, 0), Point32f(1, -1))), bits_of(45.0000381f));
    EXPECT_NEAR(CImgproc::calcLineDegree(Point32f(0, 0), Point32f(1, 1)), 135, 1e-3);
}

TEST(LineDegree, upright_and_equal_points_are_90) {
    EXPECT_EQ(CImgproc::calcLineDegree(Point32f(0, 0), Point32f(0, 5)), 90.0f);
    EXPECT_EQ(CImgproc::calcLineDegree(Point32f(3, 3), Point32f(3, 3)), 90.0f);
}

TEST(LineDegree, level_to_the_left_is_minus_0) {
    const float degrees = CImgproc::calcLineDegree(Point32f(2, 0), Point32f(0, 0));
    EXPECT_EQ(degrees, 0.0f);
    EXPECT_TRUE(std::signbit(degrees));
}

RotatedRect box_along(double degrees, double length) {
    RotatedRect rect;
    const double a = degrees * 3.14159265358979 / 180, x = std::cos(a), y = -std::sin(a);
    for (const auto& [u, v] : {std::pair<double, double>{0, 0}, {length, 0}, {length, 1}, {0, 1}})
        rect.pts.push_back(Point32f(static_cast<float>(u * x - v * y), static_cast<float>(u * y + v * x)));
    return rect;
}

TEST(RotatedRectAngle, of_a_level_long_side_is_half_pi) {
    EXPECT_EQ(CImgproc::getRotatedRectAngle(box_along(0, 5)), 90.0f / 180.0f * 3.14159f);
}

TEST(RotatedRectAngle, exactly_90_degrees_is_kept) {
    RotatedRect upright;
    for (const Point32f& corner : {Point32f(0, 0), Point32f(0, 5), Point32f(1, 5), Point32f(1, 0)})
        upright.pts.push_back(corner);
    EXPECT_EQ(CImgproc::getRotatedRectAngle(upright), 90.0f / 180.0f * 3.14159f);
}

TEST(RotatedRectAngle, of_89_degrees_is_1_degree) {
    EXPECT_NEAR(CImgproc::getRotatedRectAngle(box_along(89, 5)), 0.01745, 1e-4);
}

TEST(RotatedRectAngle, without_exactly_4_corners_throws) {
    for (const int corners : {3, 5}) {
        RotatedRect rect;
        rect.pts.init_to_size(corners, Point32f());
        printed_by([&] { EXPECT_THROW(CImgproc::getRotatedRectAngle(rect), CException); });
    }
}

}  // namespace
}  // namespace testing_support
