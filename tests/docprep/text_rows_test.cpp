#include "text_rows.h"

#include <gtest/gtest.h>

using docprep::Deskew;
using docprep::Points;
using docprep::Rects;
using docprep::TextRows;
using docprep::WayBack;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

std::vector<std::pair<int, int>> pairs(const Points& points) {
    std::vector<std::pair<int, int>> list;
    for (int k = 0; k < points.size; ++k) list.emplace_back(points[k].x, points[k].y);
    return list;
}

TextRows rows_of(const std::vector<Rect>& components) {
    Rects rects;
    for (const Rect& rect : components) rects.push_back(rect);
    Deskew level;
    level.cols = 200;
    level.rows = 100;
    return docprep::find_rows(rects, WayBack(level, Size(200, 100), 0));
}

}  // namespace

TEST(text_rows, rows_come_from_top_to_bottom_and_their_components_from_left_to_right) {
    const TextRows rows = rows_of({Rect(50, 60, 10, 12), Rect(30, 10, 10, 12), Rect(10, 62, 10, 12)});
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ(10, rows[0].rect.y);
    ASSERT_EQ(2, rows[1].components.size());
    EXPECT_EQ(10, rows[1].components[0].x);
    EXPECT_EQ(50, rows[1].components[1].x);
}

TEST(text_rows, hull_and_rectangle_of_least_area_are_those_of_the_corner_pixels) {
    const TextRows rows = rows_of({Rect(10, 20, 11, 11), Rect(40, 25, 11, 11)});
    ASSERT_EQ(1u, rows.size());
    using Corners = std::vector<std::pair<int, int>>;
    EXPECT_EQ((Corners{{10, 20}, {20, 20}, {50, 25}, {50, 35}, {40, 35}, {10, 30}}), pairs(rows[0].hull));
    EXPECT_EQ(4, rows[0].min_area.pts.size());
    // Along the edges that rise 5 in 30: less than the upright rectangle of 40 x 15.
    EXPECT_LT(rows[0].min_area.width * rows[0].min_area.height, 40 * 15);
    EXPECT_EQ(10, rows[0].rect.x);
    EXPECT_EQ(20, rows[0].rect.y);
    EXPECT_EQ(41, rows[0].rect.width);
    EXPECT_EQ(16, rows[0].rect.height);
}

TEST(text_rows, a_level_page_lies_on_the_photograph_where_it_is) {
    const TextRows rows = rows_of({Rect(10, 20, 11, 12)});
    ASSERT_EQ(1u, rows.size());
    EXPECT_TRUE(Point(10, 20) == rows[0].on_photo.corners[0]);
    EXPECT_TRUE(Point(20, 31) == rows[0].on_photo.corners[2]);
}

TEST(text_rows, no_components_give_no_rows) {
    EXPECT_TRUE(rows_of({}).empty());
}

TEST(text_rows, the_bounding_rectangle_covers_all) {
    Rects rects;
    EXPECT_EQ(0, docprep::bounding_rect(rects).width);
    rects.push_back(Rect(5, 9, 2, 2));
    rects.push_back(Rect(3, 10, 1, 8));
    const Rect all = docprep::bounding_rect(rects);
    EXPECT_EQ(3, all.x);
    EXPECT_EQ(9, all.y);
    EXPECT_EQ(4, all.width);
    EXPECT_EQ(9, all.height);
}
