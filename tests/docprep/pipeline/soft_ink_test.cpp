#include "pipeline/soft_ink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "drawn.h"

using docprep::Image;
using docprep::Ink;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 300;
constexpr int kCols = 420;
constexpr int kTextHeight = 14;

using Light = std::function<double(int, int)>;

/// Whether a page of letters has print at a pixel: bars 3 wide and 14 high, two of them a letter.
bool is_print(int x, int y) {
    return y >= 20 && y < kRows - 20 && x >= 20 && x < kCols - 20 && y % 30 < kTextHeight && x % 8 < 3;
}

/// A page under a light: its paper as bright as that, its ink a quarter of it.
Image page_under(const Light& light) {
    Image page = gray_picture(kRows, kCols, 0);
    shade(page, [&](int x, int y) { return light(x, y) * (is_print(x, y) ? 0.25 : 1); });
    return page;
}

struct Errors {
    int light_print = 0;
    int dark_paper = 0;
};

/// Pixels on the wrong side of 128, but for those next to `skipped` columns.
Errors errors_of(const Image& even, int skipped = -100) {
    Errors errors;
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kCols; ++x) {
            if (std::abs(x - skipped) < 2) continue;
            errors.light_print += is_print(x, y) && pixel(even, x, y) >= 128;
            errors.dark_paper += !is_print(x, y) && pixel(even, x, y) < 128;
        }
    return errors;
}

void expect_no_errors(const Light& light, int skipped = -100) {
    Ink ink;
    const Errors errors =
        errors_of(docprep::with_soft_ink(page_under(light), Image(), kTextHeight, ink), skipped);
    EXPECT_EQ(0, errors.light_print);
    EXPECT_EQ(0, errors.dark_paper);
}

}  // namespace

TEST(soft_ink, even_light_gives_black_print_on_white_paper) {
    Ink ink;
    const Image even =
        docprep::with_soft_ink(page_under([](int, int) { return 200; }), Image(), kTextHeight, ink);
    EXPECT_NEAR(64, ink.level, 2);  // a quarter of 255
    EXPECT_NEAR(64 + 0.55 * 191, ink.threshold, 3);
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kCols; ++x)
            ASSERT_EQ(is_print(x, y) ? 0 : 255, pixel(even, x, y)) << x << ", " << y;
}

TEST(soft_ink, a_gradient_of_three_to_one_becomes_even) {
    expect_no_errors([](int x, int) { return 240 - 160.0 * x / kCols; });
    expect_no_errors([](int, int y) { return 80 + 160.0 * y / kRows; });
}

TEST(soft_ink, both_sides_of_a_hard_shadow_are_read) {
    // Its edge lies between letters.
    expect_no_errors([](int x, int) { return x < 206 ? 230 : 115; }, 206);
}

TEST(soft_ink, a_blank_page_becomes_white) {
    for (const int text_height : {0, kTextHeight}) {
        Image page = gray_picture(kRows, kCols, 0);
        shade(page, [](int x, int y) { return 230 - 0.2 * x + (x * 7 + y * 13) % 5; });
        Ink ink;
        const Image even = docprep::with_soft_ink(page, Image(), text_height, ink);
        EXPECT_EQ(kRows * kCols, std::count(even.data, even.data + kRows * kCols, 255));
        EXPECT_EQ(0, ink.level);
    }
}

TEST(soft_ink, an_unknown_text_height_does_well_enough) {
    Ink ink;
    const Image page = page_under([](int x, int) { return 240 - 100.0 * x / kCols; });
    const Errors errors = errors_of(docprep::with_soft_ink(page, Image(), 0, ink));
    EXPECT_LT(errors.light_print + errors.dark_paper, kRows * kCols / 100);
}

TEST(soft_ink, pale_print_is_kept_beside_black_print) {
    Image page = page_under([](int, int) { return 240; });
    fill(page, Rect(100, 155, 40, 4), 145);
    Ink ink;
    const Image even = docprep::with_soft_ink(page, Image(), kTextHeight, ink);
    EXPECT_LT(pixel(even, 110, 157), 128);
}

TEST(soft_ink, only_paper_is_measured) {
    Image page = page_under([](int, int) { return 240; });
    fill(page, Rect(0, 0, 19, kRows), 240);
    for (int y = 0; y + 8 <= kRows; y += 12) fill(page, Rect(2, y, 14, 8), 0);  // blacker than all print
    Image paper = gray_picture(kRows, kCols, 255);
    fill(paper, Rect(0, 0, 19, kRows), 0);
    Ink everywhere, on_paper;
    docprep::with_soft_ink(page, Image(), kTextHeight, everywhere);
    docprep::with_soft_ink(page, paper, kTextHeight, on_paper);
    EXPECT_NEAR(64, on_paper.level, 3);
    EXPECT_LT(everywhere.level, on_paper.level);
}

TEST(soft_ink, no_measured_paper_has_no_ink) {
    Ink ink;
    docprep::with_soft_ink(page_under([](int, int) { return 240; }), gray_picture(kRows, kCols, 0),
                           kTextHeight, ink);
    EXPECT_EQ(0, ink.level);
}

TEST(soft_ink, pictures_smaller_than_their_text_are_evened) {
    for (const auto& [rows, cols] :
         {std::pair{1, 1}, std::pair{1, 40}, std::pair{40, 1}, std::pair{2, 2}, std::pair{9, 13}})
        for (const int text_height : {0, 1, 5, 1000, 1 << 24})
            for (const int level : {0, 1, 128, 255}) {
                Ink ink;
                const Image even =
                    docprep::with_soft_ink(gray_picture(rows, cols, level), Image(), text_height, ink);
                ASSERT_EQ(rows, even.rows);
                ASSERT_EQ(cols, even.cols);
                // A picture of one level is paper, unless it is as black as no paper.
                for (int i = 0; i < rows * cols && level > 0; ++i) ASSERT_EQ(255, even.data[i]) << level;
            }
}
