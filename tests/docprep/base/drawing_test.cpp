#include "base/drawing.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "cv_imgproc.h"
#include "drawn.h"

using docprep::Image;
using docprep::Points;
using orvex_cv_991::Point;

namespace {

/// What an outline fills of a picture of 5 x 5: # in rows.
std::string filled(const std::vector<Point>& corners) {
    Points outline;
    for (const Point& corner : corners) outline.push_back(corner);
    Image mask = gray_picture(5, 5, 0);
    docprep::fill_convex(mask, outline, 200);
    std::string text;
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 5; ++x) text += pixel(mask, x, y) == 200 ? '#' : '.';
        text += '/';
    }
    return text;
}

}  // namespace

TEST(drawing, a_triangle_is_filled_up_to_its_edges) {
    EXPECT_EQ("#####/####./###../##.../#..../", filled({Point(0, 0), Point(4, 0), Point(0, 4)}));
    EXPECT_EQ("..#../.###./#####/...../...../", filled({Point(2, 0), Point(4, 2), Point(0, 2)}));
}

TEST(drawing, the_direction_of_an_outline_does_not_matter) {
    EXPECT_EQ(filled({Point(2, 0), Point(4, 3), Point(1, 4)}),
              filled({Point(1, 4), Point(4, 3), Point(2, 0)}));
}

TEST(drawing, points_and_lines_are_filled) {
    EXPECT_EQ("...../...../...#./...../...../", filled({Point(3, 2)}));
    EXPECT_EQ("...../.####/...../...../...../", filled({Point(1, 1), Point(4, 1)}));
    EXPECT_EQ("..#../..#../..#../..#../..#../", filled({Point(2, 4), Point(2, 0)}));
    EXPECT_EQ("#..../.#.../..#../...#./....#/", filled({Point(0, 0), Point(4, 4)}));
}

TEST(drawing, the_whole_picture_is_filled_to_its_last_pixel) {
    EXPECT_EQ("#####/#####/#####/#####/#####/", filled({Point(0, 0), Point(4, 0), Point(4, 4), Point(0, 4)}));
}

TEST(drawing, no_outline_fills_nothing) {
    EXPECT_EQ("...../...../...../...../...../", filled({}));
}

TEST(drawing, a_hull_holds_its_points_and_little_beyond_them) {
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        Points points, hull;
        const int n = 1 + static_cast<int>(random() % 12);
        for (int k = 0; k < n; ++k)
            points.push_back(Point(static_cast<int>(random() % 40), static_cast<int>(random() % 30)));
        orvex_cv_991::CImgproc::convexHull(points, hull);
        Image mask = gray_picture(30, 40, 0);
        docprep::fill_convex(mask, hull, 255);
        for (int k = 0; k < n; ++k) ASSERT_EQ(255, pixel(mask, points[k].x, points[k].y));
        int twice_area = 0, length = 0;
        for (int k = 0; k < hull.size; ++k) {
            const Point& a = hull[k];
            const Point& b = hull[(k + 1) % hull.size];
            twice_area += a.x * b.y - a.y * b.x;
            length += std::abs(a.x - b.x) + std::abs(a.y - b.y);
        }
        // An edge adds half a pixel to each row that it passes, and a level one its whole length.
        ASSERT_LE(orvex_cv_991::CImgproc::countNonZero(mask), std::abs(twice_area) / 2 + length + 1);
    }
}

TEST(drawing, grey_becomes_colour_and_colour_stays) {
    Image gray = gray_picture(2, 3, 0);
    for (int k = 0; k < 6; ++k) gray.data[k] = static_cast<unsigned char>(40 * k);
    const Image colour = docprep::in_colour(gray);
    ASSERT_EQ(3, colour.channels);
    for (int k = 0; k < 18; ++k) ASSERT_EQ(40 * (k / 3), colour.data[k]);
    Image red;
    red.mat_create(1, 1, 3, 0);
    red.data[2] = 9;
    EXPECT_EQ(9, docprep::in_colour(red).data[2]);
    EXPECT_EQ(0, docprep::in_colour(red).data[0]);
}

TEST(drawing, lines_are_thicker_on_larger_pictures) {
    EXPECT_EQ(1, docprep::line_thickness(gray_picture(1, 1, 0)));
    EXPECT_EQ(1, docprep::line_thickness(gray_picture(699, 3000, 0)));
    EXPECT_EQ(2, docprep::line_thickness(gray_picture(700, 700, 0)));
}
