#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>

#include "drawn.h"
#include "pipeline/deskew.h"

using docprep::Bend;
using docprep::Deskew;
using docprep::Image;
using docprep::Place;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

constexpr int kRows = 300;
constexpr int kCols = 420;

Image photo() {
    return gray_picture(kRows, kCols, 0);
}

/// A bend over nearly all of the page, by factors of x, x y, x^2, x^2 y, x^3 and x^4.
Bend bend_with(const std::array<double, 6>& factors) {
    std::array<double, Bend::kTerms> terms{};
    terms[0] = factors[0];
    terms[1] = factors[1];
    terms[3] = factors[2];
    terms[4] = factors[3];
    terms[6] = factors[4];
    terms[9] = factors[5];
    return Bend({205, 160}, {190, 120}, terms);
}

/// Bends that need small tiles, large ones, and lines that converge.
std::vector<Bend> bends() {
    return {bend_with({0, 0, 1, 0, 0, 0}), bend_with({0, 0, 20, 0, 0, 0}), bend_with({4, 15, 0, 0, 0, 0}),
            bend_with({-8, 4, 9, -6, 5, 0}), bend_with({0, 0, 0, 0, 0, -12})};
}

/// Level and turned pages, bent and cropped.
std::vector<Deskew> deskews() {
    std::vector<Deskew> list;
    for (const double skew : {0.0, 4.0})
        for (const Bend& bend : bends()) {
            list.push_back(docprep::with_bend(docprep::plan_deskew(photo(), skew), bend));
            list.push_back(docprep::cropped(list.back(), Rect(37, 21, 301, 203)));
        }
    return list;
}

/// Up and down by 24 levels a pixel, so that a tenth of a pixel is seen.
double saw(int position) {
    return 24 * std::abs(position % 20 - 10);
}

double sampled(const Image& picture, const Place& place) {
    const int x = static_cast<int>(std::floor(place.x)), y = static_cast<int>(std::floor(place.y));
    const double right = place.x - x, down = place.y - y;
    const double above = pixel(picture, x, y) * (1 - right) + pixel(picture, x + 1, y) * right;
    const double below = pixel(picture, x, y + 1) * (1 - right) + pixel(picture, x + 1, y + 1) * right;
    return above * (1 - down) + below * down;
}

/// Whether a place has its four pixels, and how far from that it is at least in pixels.
bool within(const Place& place, double margin) {
    return place.x >= margin && place.y >= margin && place.x <= kCols - 1 - margin &&
           place.y <= kRows - 1 - margin;
}

void expect_round_trip(const Deskew& deskew) {
    for (double y = 0; y < deskew.rows; y += 9.7)
        for (double x = 0; x < deskew.cols; x += 9.7) {
            const Place back = deskew.to_page(deskew.to_photo({x, y}));
            ASSERT_NEAR(x, back.x, 0.01);
            ASSERT_NEAR(y, back.y, 0.01);
        }
}

/// A bend of a small block of text, whose lines converge towards the left.
Bend bend_of_small_block(double x, double steepness) {
    std::array<double, Bend::kTerms> terms{};
    terms[1] = steepness * 20;
    return Bend({x, 150}, {30, 20}, terms);
}

}  // namespace

TEST(deskew_bend, every_pixel_of_a_bent_page_shows_its_place_of_the_photograph) {
    Image down = photo(), across = photo();
    shade(down, [](int, int y) { return saw(y); });
    shade(across, [](int x, int) { return saw(x); });
    // A tenth of a pixel, and what weights of 11 bits and truncation take.
    constexpr double kTolerance = 0.1 * 24 + 1.3;
    for (const Deskew& deskew : deskews())
        for (const Image& picture : {down, across}) {
            Image inside;
            const Image page = docprep::deskewed(picture, deskew, inside);
            ASSERT_EQ(deskew.cols, page.cols);
            ASSERT_EQ(deskew.rows, page.rows);
            int compared = 0;
            for (int y = 0; y < page.rows; ++y)
                for (int x = 0; x < page.cols; ++x) {
                    const Place exact = deskew.to_photo({1.0 * x, 1.0 * y});
                    if (!within(exact, 0.1)) continue;
                    ASSERT_NEAR(sampled(picture, exact), pixel(page, x, y), kTolerance) << x << ", " << y;
                    ++compared;
                }
            EXPECT_GT(compared, page.rows * page.cols / 2);
        }
}

TEST(deskew_bend, inside_is_what_shows_the_photograph) {
    for (const Deskew& deskew : deskews()) {
        Image inside;
        const Image white = docprep::deskewed_on_white(gray_picture(kRows, kCols, 77), deskew);
        docprep::deskewed(photo(), deskew, inside);
        for (int y = 0; y < deskew.rows; ++y)
            for (int x = 0; x < deskew.cols; ++x) {
                const Place exact = deskew.to_photo({1.0 * x, 1.0 * y});
                // A tenth of a pixel from the rim it is one or the other.
                if (within(exact, 0.1) || !within(exact, -0.1)) {
                    ASSERT_EQ(within(exact, 0) ? 1 : 0, pixel(inside, x, y)) << x << ", " << y;
                }
                ASSERT_EQ(pixel(inside, x, y) == 1 ? 77 : 255, pixel(white, x, y));
            }
    }
}

TEST(deskew_bend, colours_bend_as_greys_do) {
    Image colours;
    colours.mat_create(kRows, kCols, 3, 0);
    Image gray = photo();
    shade(gray, [](int x, int y) { return (saw(x) + saw(y)) / 2; });
    for (int i = 0; i < kRows * kCols; ++i)
        for (int k = 0; k < 3; ++k)
            colours.data[3 * i + k] = static_cast<unsigned char>(gray.data[i] / (k + 1));
    const Deskew deskew = deskews()[2];
    Image inside;
    const Image bent_gray = docprep::deskewed(gray, deskew, inside);
    const Image bent = docprep::deskewed(colours, deskew, inside);
    ASSERT_EQ(3, bent.channels);
    for (int i = 0; i < deskew.rows * deskew.cols; ++i)
        for (int k = 0; k < 3; ++k) ASSERT_NEAR(bent_gray.data[i] / (k + 1), bent.data[3 * i + k], 1);
}

TEST(deskew_bend, places_go_to_the_photograph_and_back) {
    for (const Deskew& deskew : deskews()) expect_round_trip(deskew);
}

TEST(deskew_bend, nothing_of_the_photograph_is_cut_off) {
    for (const double skew : {0.0, 4.0})
        for (const Bend& bend : bends()) {
            const Deskew deskew = docprep::with_bend(docprep::plan_deskew(photo(), skew), bend);
            const auto expect_on_page = [&](double x, double y) {
                const Place place = deskew.to_page({x, y});
                EXPECT_GT(place.x, -0.1);
                EXPECT_GT(place.y, -0.1);
                EXPECT_LT(place.x, deskew.cols - 0.9);
                EXPECT_LT(place.y, deskew.rows - 0.9);
            };
            for (int x = 0; x < kCols; ++x) expect_on_page(x, 0), expect_on_page(x, kRows - 1);
            for (int y = 0; y < kRows; ++y) expect_on_page(0, y), expect_on_page(kCols - 1, y);
        }
}

TEST(deskew_bend, a_page_grows_by_what_its_bend_moves) {
    const Deskew level = docprep::plan_deskew(photo(), 0);
    // The ends of lines lie 20 pixels below their middle and move up by that much.
    const Deskew down = docprep::with_bend(level, bend_with({0, 0, 20, 0, 0, 0}));
    EXPECT_EQ(kCols, down.cols);
    EXPECT_NEAR(kRows + 20 * (1 + 2 * 25 / 190.0), down.rows, 2);
    const Deskew up = docprep::with_bend(level, bend_with({0, 0, -20, 0, 0, 0}));
    EXPECT_NEAR(down.rows, up.rows, 1);
    EXPECT_LT(up.to_page({205, 0}).y, 1);
    EXPECT_GT(down.to_page({205, 0}).y, 19);
}

TEST(deskew_bend, a_bent_page_is_not_the_photograph) {
    const Deskew level = docprep::plan_deskew(photo(), 0);
    EXPECT_TRUE(level.none());
    EXPECT_FALSE(docprep::with_bend(level, bend_with({0, 0, 1, 0, 0, 0})).none());
    EXPECT_FALSE(docprep::cropped(level, Rect(1, 0, 10, 10)).none());
}

TEST(deskew_bend, a_crop_is_that_part_of_the_page) {
    const Rect part(33, 47, 210, 150);
    Image picture = photo();
    shade(picture, [](int x, int y) { return 100 + 60 * std::sin(x / 8.0) + 60 * std::cos(y / 9.0); });
    for (const double skew : {0.0, -6.0})
        for (const bool bent : {false, true}) {
            Deskew whole = docprep::plan_deskew(picture, skew);
            if (bent) whole = docprep::with_bend(whole, bend_with({0, 0, 20, 0, 0, 0}));
            const Deskew cut = docprep::cropped(whole, part);
            ASSERT_EQ(210, cut.cols);
            ASSERT_EQ(150, cut.rows);
            Image inside, part_inside;
            const Image page = docprep::deskewed(picture, whole, inside);
            const Image page_part = docprep::deskewed(picture, cut, part_inside);
            for (int y = 0; y < part.height; ++y)
                for (int x = 0; x < part.width; ++x) {
                    const bool shown =
                        pixel(inside, x + part.x, y + part.y) == 1 && pixel(part_inside, x, y) == 1;
                    if (!shown) continue;
                    ASSERT_NEAR(pixel(page, x + part.x, y + part.y), pixel(page_part, x, y), bent ? 3 : 1);
                }
        }
}

TEST(deskew_bend, a_page_that_would_be_too_large_is_not_straightened) {
    Deskew huge = docprep::plan_deskew(photo(), 0);
    huge.cols = 1 << 14;
    huge.rows = 1 << 14;
    EXPECT_TRUE(docprep::with_bend(huge, bend_with({0, 0, 20, 0, 0, 0})).bend.none());
    EXPECT_EQ(1 << 14, docprep::with_bend(huge, bend_with({0, 0, 20, 0, 0, 0})).rows);
}

TEST(deskew_bend, lines_that_converge_too_fast_far_from_the_text_are_not_straightened) {
    // Plausible over the block, 60 pixels wide; twelve times as steep at the page's other end, where
    // lines would change their order.
    const Deskew level = docprep::plan_deskew(photo(), 0);
    EXPECT_TRUE(docprep::with_bend(level, bend_of_small_block(380, 0.3)).none());
    const Deskew gentle = docprep::with_bend(level, bend_of_small_block(380, 0.03));
    EXPECT_FALSE(gentle.none());
    expect_round_trip(gentle);
}

TEST(deskew_bend, masks_of_any_size_cover_the_same_part_of_the_page) {
    for (const int reduction : {1, 2, 5}) {
        Image mask = gray_picture(kRows / reduction, kCols / reduction, 0);
        fill(mask, Rect(100 / reduction, 60 / reduction, 200 / reduction, 150 / reduction), 255);
        for (const Deskew& deskew : {docprep::plan_deskew(photo(), 0), deskews()[2], deskews()[13]}) {
            const Image page = docprep::deskewed_mask(mask, Size(kCols, kRows), deskew);
            ASSERT_EQ(deskew.cols, page.cols);
            ASSERT_EQ(deskew.rows, page.rows);
            int covered = 0;
            for (int y = 0; y < page.rows; ++y)
                for (int x = 0; x < page.cols; ++x) {
                    const Place place = deskew.to_photo({1.0 * x, 1.0 * y});
                    // In pixels, whose edges are half a pixel from their middle.
                    const double to_edge = std::min(std::min(place.x - 99.5, 299.5 - place.x),
                                                    std::min(place.y - 59.5, 209.5 - place.y));
                    // Corners of a reduced copy become round.
                    const double margin = 0.7 + (reduction > 1 ? 0.5 * reduction : 0);
                    if (std::fabs(to_edge) > margin) {
                        ASSERT_EQ(to_edge > 0 ? 255 : 0, pixel(page, x, y)) << x << ", " << y;
                    }
                    covered += pixel(page, x, y) == 255;
                }
            EXPECT_GT(covered, 10000);
        }
    }
}

TEST(deskew_bend, pictures_of_one_row_or_column_bend_without_harm) {
    for (const auto& [rows, cols] : {std::pair{1, 1}, std::pair{1, 300}, std::pair{300, 1}}) {
        const Image picture = gray_picture(rows, cols, 90);
        const Deskew deskew =
            docprep::with_bend(docprep::plan_deskew(picture, 0), bend_with({0, 0, 9, 0, 0, 0}));
        Image inside;
        const Image page = docprep::deskewed(picture, deskew, inside);
        ASSERT_EQ(deskew.rows, page.rows);
        for (int i = 0; i < page.rows * page.cols; ++i) ASSERT_EQ(90, page.data[i]);
    }
}

TEST(deskew_bend, bounds_on_the_page_hold_the_corners) {
    const Deskew turned = docprep::plan_deskew(photo(), 5);
    const docprep::Bounds bounds = docprep::bounds_on_page(Rect(100, 50, 31, 21), turned);
    for (const double x : {100.0, 130.0})
        for (const double y : {50.0, 70.0}) {
            const Place place = turned.to_page({x, y});
            EXPECT_LE(bounds.left, place.x);
            EXPECT_GE(bounds.right, place.x);
            EXPECT_LE(bounds.top, place.y);
            EXPECT_GE(bounds.bottom, place.y);
        }
    EXPECT_NEAR(30 * 0.996 + 20 * 0.087, bounds.right - bounds.left, 0.1);
    EXPECT_NEAR(20 * 0.996 + 30 * 0.087, bounds.bottom - bounds.top, 0.1);
}
