#include "pipeline/edge_marks.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "drawn.h"

using docprep::Image;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 60;
constexpr int kCols = 80;

Image white() {
    return gray_picture(kRows, kCols, 255);
}

Image nowhere() {
    return gray_picture(kRows, kCols, 0);
}

/// A mask with 255 on a rectangle.
Image mask_on(const Rect& rect) {
    Image mask = nowhere();
    fill(mask, rect, 255);
    return mask;
}

int dark_pixels(const Image& page) {
    return static_cast<int>(std::count_if(page.data,
                                          page.data + static_cast<ptrdiff_t>(page.rows) * page.cols,
                                          [](unsigned char level) { return level < 230; }));
}

}  // namespace

TEST(edge_marks, a_wedge_from_any_edge_is_wiped_off) {
    for (const Rect& wedge :
         {Rect(0, 10, 9, 12), Rect(kCols - 9, 10, 9, 12), Rect(20, 0, 12, 7), Rect(20, kRows - 7, 12, 7),
          Rect(0, 0, 1, 1), Rect(kCols - 1, kRows - 1, 1, 1)}) {
        Image page = white();
        fill(page, wedge, 30);
        const Image wiped = docprep::wipe_edge_marks(page, Image(), nowhere());
        EXPECT_EQ(0, dark_pixels(page));
        for (int y = 0; y < kRows; ++y)
            for (int x = 0; x < kCols; ++x) {
                const bool in_wedge =
                    x >= wedge.x && y >= wedge.y && x < wedge.x + wedge.width && y < wedge.y + wedge.height;
                ASSERT_EQ(255, pixel(page, x, y));
                ASSERT_EQ(in_wedge ? 0 : 255, pixel(wiped, x, y));
            }
    }
}

TEST(edge_marks, an_island_stays) {
    Image page = white();
    fill(page, Rect(1, 1, 10, 10), 30);
    fill(page, Rect(30, 30, 5, 5), 100);
    const Image wiped = docprep::wipe_edge_marks(page, Image(), nowhere());
    EXPECT_EQ(125, dark_pixels(page));
    EXPECT_EQ(30, pixel(page, 1, 1));
    EXPECT_EQ(kRows * kCols, std::count(wiped.data, wiped.data + kRows * kCols, 255));
}

TEST(edge_marks, the_text_stays_though_a_mark_touches_it) {
    Image page = white();
    fill(page, Rect(0, 20, 50, 4), 30);  // from the edge into the text
    const Image wiped = docprep::wipe_edge_marks(page, Image(), mask_on(Rect(30, 10, 30, 30)));
    EXPECT_EQ(20 * 4, dark_pixels(page));
    EXPECT_EQ(255, pixel(page, 29, 21));
    EXPECT_EQ(30, pixel(page, 30, 21));
    EXPECT_EQ(0, pixel(wiped, 29, 21));
    EXPECT_EQ(255, pixel(wiped, 30, 21));
}

TEST(edge_marks, what_leads_round_corners_is_wiped_off_and_diagonals_do_not_lead) {
    Image page = white();
    fill(page, Rect(10, 0, 1, 20), 30);
    fill(page, Rect(10, 20, 30, 1), 30);
    fill(page, Rect(40, 21, 1, 10), 30);  // touches the last one at a corner alone
    docprep::wipe_edge_marks(page, Image(), nowhere());
    EXPECT_EQ(10, dark_pixels(page));
}

TEST(edge_marks, levels_of_230_and_more_are_paper) {
    Image page = white();
    fill(page, Rect(0, 10, 5, 5), 229);
    fill(page, Rect(0, 30, 5, 5), 230);
    const Image wiped = docprep::wipe_edge_marks(page, Image(), nowhere());
    EXPECT_EQ(255, pixel(page, 2, 12));
    EXPECT_EQ(230, pixel(page, 2, 32));
    EXPECT_EQ(25, std::count(wiped.data, wiped.data + kRows * kCols, 0));
}

TEST(edge_marks, what_leads_from_where_no_page_is_goes_too) {
    Image page = white();
    fill(page, Rect(20, 20, 10, 10), 30);
    fill(page, Rect(60, 20, 10, 10), 30);
    const Image outside = mask_on(Rect(10, 0, 10, kRows));
    docprep::wipe_edge_marks(page, outside, nowhere());
    EXPECT_EQ(255, pixel(page, 25, 25));
    EXPECT_EQ(30, pixel(page, 65, 25));
}

TEST(edge_marks, a_dark_page_without_text_becomes_white) {
    for (const auto& [rows, cols] :
         {std::pair{1, 1}, std::pair{1, 50}, std::pair{50, 1}, std::pair{40, 30}}) {
        Image page = gray_picture(rows, cols, 0);
        const Image wiped = docprep::wipe_edge_marks(page, Image(), gray_picture(rows, cols, 0));
        EXPECT_EQ(0, dark_pixels(page));
        EXPECT_EQ(rows * cols, std::count(wiped.data, wiped.data + rows * cols, 0));
    }
}
