#include "pipeline/seal_growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "cv_imgproc.h"
#include "drawn.h"

using docprep::Image;
using docprep::Paper;
using docprep::Rects;
using docprep::Seal;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 900;
constexpr int kCols = 1200;

Image white_photo(int rows = kRows, int cols = kCols) {
    Image photo;
    photo.mat_create(rows, cols, 3, 230);
    return photo;
}

void paint(Image& photo, int x, int y) {
    if (x < 0 || y < 0 || x >= photo.cols || y >= photo.rows) return;
    unsigned char* const bgr = photo.data + 3 * (static_cast<ptrdiff_t>(y) * photo.cols + x);
    bgr[0] = bgr[1] = 60;
    bgr[2] = 210;
}

/// Paints red what lies from `inner` to `outer` pixels from a centre.
void paint_ring(Image& photo, int x, int y, int inner, int outer) {
    for (int dy = -outer; dy <= outer; ++dy)
        for (int dx = -outer; dx <= outer; ++dx) {
            const double distance = std::hypot(dx, dy);
            if (distance >= inner && distance <= outer) paint(photo, x + dx, y + dy);
        }
}

void paint_rect(Image& photo, const Rect& rect) {
    for (int y = rect.y; y < rect.y + rect.height; ++y)
        for (int x = rect.x; x < rect.x + rect.width; ++x) paint(photo, x, y);
}

/// A rim, letters inside of it, and a disc for a star.
void stamp(Image& photo, int x, int y, int radius) {
    paint_ring(photo, x, y, radius - radius / 12, radius);
    paint_ring(photo, x, y, 0, radius / 4);
    for (int k = 0; k < 12; ++k) {
        const double angle = k * 3.14159265 / 6;
        paint_ring(photo, x + static_cast<int>(0.68 * radius * std::cos(angle)),
                   y + static_cast<int>(0.68 * radius * std::sin(angle)), 0, radius / 9);
    }
}

Rect round(int x, int y, int radius) {
    return Rect(x - radius, y - radius, 2 * radius + 1, 2 * radius + 1);
}

std::vector<Seal> seals_of(const Image& photo, const std::vector<Rect>& marks) {
    return docprep::grow_seals(photo, Paper(), rects_of(marks));
}

void expect_near(const Rect& expected, const Rect& actual, int by) {
    EXPECT_NEAR(expected.x, actual.x, by);
    EXPECT_NEAR(expected.y, actual.y, by);
    EXPECT_NEAR(expected.x + expected.width, actual.x + actual.width, by);
    EXPECT_NEAR(expected.y + expected.height, actual.y + actual.height, by);
}

}  // namespace

TEST(seal_growth, a_star_grows_to_its_ring) {
    for (const int radius : {40, 90, 130}) {
        Image photo = white_photo();
        stamp(photo, 500, 400, radius);
        const std::vector<Seal> seals = seals_of(photo, {round(500, 400, radius / 4)});
        ASSERT_EQ(1u, seals.size());
        expect_near(round(500, 400, radius), seals[0].rect, 3);
    }
}

TEST(seal_growth, the_rim_alone_is_its_seal) {
    Image photo = white_photo();
    paint_ring(photo, 500, 400, 83, 90);
    const std::vector<Seal> seals = seals_of(photo, {round(500, 400, 90)});
    ASSERT_EQ(1u, seals.size());
    expect_near(round(500, 400, 90), seals[0].rect, 3);
}

TEST(seal_growth, marks_of_one_seal_become_one) {
    Image photo = white_photo();
    stamp(photo, 500, 400, 90);
    const std::vector<Seal> seals =
        seals_of(photo, {round(500, 400, 90), round(500, 400, 22), round(561, 400, 10)});
    ASSERT_EQ(1u, seals.size());
    expect_near(round(500, 400, 90), seals[0].rect, 3);
}

TEST(seal_growth, two_seals_stay_two_and_the_larger_one_is_first) {
    Image photo = white_photo();
    stamp(photo, 250, 400, 60);
    stamp(photo, 800, 500, 110);
    const std::vector<Seal> seals = seals_of(photo, {round(250, 400, 15), round(800, 500, 27)});
    ASSERT_EQ(2u, seals.size());
    expect_near(round(800, 500, 110), seals[0].rect, 3);
    expect_near(round(250, 400, 60), seals[1].rect, 3);
}

TEST(seal_growth, a_heading_is_none) {
    Image photo = white_photo();
    for (int k = 0; k < 12; ++k) paint_rect(photo, Rect(200 + 60 * k, 100, 44, 50));
    EXPECT_TRUE(seals_of(photo, {Rect(200, 100, 704, 50)}).empty());
    stamp(photo, 600, 500, 90);
    EXPECT_EQ(1u, seals_of(photo, {Rect(200, 100, 704, 50), round(600, 500, 22)}).size());
}

TEST(seal_growth, a_mark_that_nothing_joins_is_its_own_seal) {
    // Nothing is red at all.
    const std::vector<Seal> seals = seals_of(white_photo(), {Rect(300, 200, 40, 50)});
    ASSERT_EQ(1u, seals.size());
    expect_near(Rect(300, 200, 40, 50), seals[0].rect, 0);
}

TEST(seal_growth, warm_light_is_not_red) {
    Image photo = white_photo();
    for (int i = 0; i < kRows * kCols; ++i) photo.data[3 * i] = 190, photo.data[3 * i + 1] = 205;
    stamp(photo, 500, 400, 90);
    const std::vector<Seal> seals = seals_of(photo, {round(500, 400, 22)});
    ASSERT_EQ(1u, seals.size());
    expect_near(round(500, 400, 90), seals[0].rect, 3);
}

TEST(seal_growth, red_beside_the_paper_joins_nothing) {
    Image photo = white_photo();
    stamp(photo, 500, 400, 90);
    paint_rect(photo, Rect(620, 300, 100, 200));
    Paper paper;
    paper.mask = gray_picture(kRows / 2, kCols / 2, 0);
    fill(paper.mask, Rect(50, 50, 250, 350), 255);
    const std::vector<Seal> seals = docprep::grow_seals(photo, paper, rects_of({round(500, 400, 22)}));
    ASSERT_EQ(1u, seals.size());
    expect_near(round(500, 400, 90), seals[0].rect, 3);
}

TEST(seal_growth, seals_in_the_corners_of_a_picture_are_clipped) {
    for (const int x : {0, kCols - 1})
        for (const int y : {0, kRows - 1}) {
            Image photo = white_photo();
            paint_ring(photo, x, y, 0, 60);
            const Rect mark(x == 0 ? 0 : kCols - 61, y == 0 ? 0 : kRows - 61, 61, 61);
            const std::vector<Seal> seals = seals_of(photo, {mark});
            ASSERT_EQ(1u, seals.size());
            expect_near(mark, seals[0].rect, 3);
            EXPECT_GE(seals[0].rect.x, 0);
            EXPECT_GE(seals[0].rect.y, 0);
            EXPECT_LE(seals[0].rect.x + seals[0].rect.width, kCols);
            EXPECT_LE(seals[0].rect.y + seals[0].rect.height, kRows);
        }
}

TEST(seal_growth, only_the_first_50_marks_are_grown) {
    Rects marks;
    for (int k = 0; k < 60; ++k) marks.push_back(Rect(20 + k % 10 * 100, 20 + k / 10 * 100, 20, 20));
    EXPECT_EQ(50u, docprep::grow_seals(white_photo(), Paper(), marks).size());
    EXPECT_TRUE(docprep::grow_seals(white_photo(), Paper(), Rects()).empty());
}

TEST(seal_growth, small_and_thin_pictures_are_searched_without_harm) {
    for (const auto& [rows, cols] :
         {std::pair{1, 1}, std::pair{1, 3000}, std::pair{3000, 1}, std::pair{2, 2}, std::pair{30, 2000}}) {
        Image photo = white_photo(rows, cols);
        paint_rect(photo, Rect(0, 0, cols, rows));
        SCOPED_TRACE(std::to_string(rows) + " x " + std::to_string(cols));
        for (const Rect& mark : {Rect(0, 0, 1, 1), Rect(cols - 1, rows - 1, 1, 1), Rect(0, 0, cols, rows)})
            for (const Seal& seal : seals_of(photo, {mark})) {
                EXPECT_GE(seal.rect.x, 0);
                EXPECT_GE(seal.rect.y, 0);
                EXPECT_LE(seal.rect.x + seal.rect.width, cols);
                EXPECT_LE(seal.rect.y + seal.rect.height, rows);
            }
    }
}

TEST(seal_growth, the_mask_fills_the_outlines) {
    Image photo = white_photo();
    stamp(photo, 250, 400, 60);
    stamp(photo, 800, 500, 110);
    const std::vector<Seal> seals = seals_of(photo, {round(250, 400, 15), round(800, 500, 27)});
    const Image mask = docprep::mask_of(seals, kRows, kCols);
    int wrong = 0;
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kCols; ++x) {
            const double beyond =
                std::min(std::hypot(x - 250, y - 400) - 60, std::hypot(x - 800, y - 500) - 110);
            if (beyond < -3) wrong += pixel(mask, x, y) != 255;
            if (beyond > 4) wrong += pixel(mask, x, y) != 0;
        }
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(0, CImgproc::countNonZero(docprep::mask_of({}, 10, 10)));
}
