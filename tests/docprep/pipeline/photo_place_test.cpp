#include "pipeline/photo_place.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "cv_imgproc.h"

using docprep::Deskew;
using docprep::Image;
using docprep::PhotoPlace;
using docprep::WayBack;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

constexpr int kRows = 300;
constexpr int kCols = 400;

/// A dark photograph with one bright pixel, enlarged so that a warp keeps it.
Image photo_with_mark(const Point& mark) {
    Image photo;
    photo.mat_create(kRows, kCols, 1, 0);
    for (int row = mark.y - 1; row <= mark.y + 1; ++row)
        for (int col = mark.x - 1; col <= mark.x + 1; ++col) photo.data[row * kCols + col] = 255;
    return photo;
}

Point brightest(const Image& picture) {
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    // Of a patch, its middle: the mean of all bright pixels.
    double x = 0, y = 0, sum = 0;
    for (ptrdiff_t i = 0; i < n; ++i) {
        x += static_cast<double>(i % picture.cols) * picture.data[i];
        y += static_cast<double>(i / picture.cols) * picture.data[i];
        sum += picture.data[i];
    }
    return Point(static_cast<int>(std::lround(x / sum)), static_cast<int>(std::lround(y / sum)));
}

}  // namespace

TEST(photo_place, a_mark_is_mapped_back_to_where_it_was) {
    for (const int quarter_turns : {0, 1, 2, 3})
        for (const double skew : {0.0, 4.0, -13.0})
            for (const Point& mark : {Point(20, 30), Point(350, 40), Point(200, 150), Point(33, 280)}) {
                Image turned;
                CImgproc::rot90ClockWise(photo_with_mark(mark), turned, quarter_turns);
                const Deskew deskew = docprep::plan_deskew(turned, skew);
                Image inside;
                const Point on_page = brightest(docprep::deskewed(turned, deskew, inside));
                const WayBack way_back(deskew, Size(turned.cols, turned.rows), quarter_turns);
                const PhotoPlace place = way_back.of(Rect(on_page.x, on_page.y, 1, 1));
                for (const Point& corner : place.corners) {
                    EXPECT_NEAR(mark.x, corner.x, 1) << quarter_turns << " turns, " << skew;
                    EXPECT_NEAR(mark.y, corner.y, 1) << quarter_turns << " turns, " << skew;
                }
            }
}

TEST(photo_place, a_quarter_turn_is_undone_exactly) {
    Deskew level;
    level.cols = kRows;
    level.rows = kCols;
    // Clockwise, the photograph's (x, y) goes to (299 - y, x).
    const PhotoPlace place = WayBack(level, Size(kRows, kCols), 1).of(Rect(9, 20, 100, 30));
    EXPECT_TRUE(Point(20, 290) == place.corners[0]);
    EXPECT_TRUE(Point(20, 191) == place.corners[1]);
    EXPECT_TRUE(Point(49, 191) == place.corners[2]);
    EXPECT_TRUE(Point(49, 290) == place.corners[3]);
    EXPECT_EQ(20, place.rect.x);
    EXPECT_EQ(191, place.rect.y);
    EXPECT_EQ(30, place.rect.width);
    EXPECT_EQ(100, place.rect.height);
}

TEST(photo_place, the_upright_rectangle_of_straight_lines_is_that_of_the_corners) {
    Image photo;
    photo.mat_create(kRows, kCols, 1, 0);
    for (const double skew : {-12.0, 5.0, 14.0}) {
        const Deskew deskew = docprep::plan_deskew(photo, skew);
        const PhotoPlace place = WayBack(deskew, Size(kCols, kRows), 0).of(Rect(150, 120, 90, 20));
        const auto [left, right] =
            std::minmax_element(place.corners.begin(), place.corners.end(),
                                [](const Point& a, const Point& b) { return a.x < b.x; });
        const auto [top, bottom] =
            std::minmax_element(place.corners.begin(), place.corners.end(),
                                [](const Point& a, const Point& b) { return a.y < b.y; });
        EXPECT_EQ(left->x, place.rect.x);
        EXPECT_EQ(top->y, place.rect.y);
        EXPECT_EQ(right->x - left->x + 1, place.rect.width);
        EXPECT_EQ(bottom->y - top->y + 1, place.rect.height);
        EXPECT_GT(place.rect.height, 20);
    }
}

TEST(photo_place, what_lies_beyond_the_photograph_is_clipped) {
    Image photo;
    photo.mat_create(kRows, kCols, 1, 0);
    const Deskew deskew = docprep::plan_deskew(photo, 10);
    const PhotoPlace place = WayBack(deskew, Size(kCols, kRows), 0).of(Rect(0, 0, deskew.cols, deskew.rows));
    EXPECT_EQ(0, place.rect.x);
    EXPECT_EQ(0, place.rect.y);
    EXPECT_EQ(kCols, place.rect.width);
    EXPECT_EQ(kRows, place.rect.height);
    for (const Point& corner : place.corners) {
        EXPECT_TRUE(corner.x >= 0 && corner.x < kCols) << corner.x;
        EXPECT_TRUE(corner.y >= 0 && corner.y < kRows) << corner.y;
    }
}
