#include "pipeline/text_components.h"

#include <gtest/gtest.h>

using docprep::Rects;
using docprep::select_text;
using docprep::TextComponents;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 1000;
constexpr int kCols = 1400;

/// 40 letters of the height in one line at row `y`.
void add_line(Rects& rects, int y, int height) {
    for (int k = 0; k < 40; ++k) rects.push_back(Rect(100 + 25 * k, y, 15, height));
}

/// A page of 10 lines of letters, 20 pixels high.
Rects page() {
    Rects rects;
    for (int line = 0; line < 10; ++line) add_line(rects, 100 + 60 * line, 20);
    return rects;
}

TextComponents page_with(const Rect& rect) {
    Rects rects = page();
    rects.push_back(rect);
    return select_text(rects, kRows, kCols);
}

}  // namespace

TEST(text_components, letters_are_kept_in_their_order) {
    const Rects rects = page();
    const TextComponents text = select_text(rects, kRows, kCols);
    EXPECT_EQ(20, text.text_height);
    ASSERT_EQ(rects.size(), text.kept.size());
    for (int k = 0; k < rects.size; ++k) {
        EXPECT_EQ(rects[k].x, text.kept[k].x);
        EXPECT_EQ(rects[k].y, text.kept[k].y);
    }
    EXPECT_EQ(0, text.border + text.tall + text.wide + text.specks);
}

TEST(text_components, what_touches_the_border_is_dropped) {
    for (const Rect& rect : {Rect(0, 500, 15, 20), Rect(500, 0, 15, 20), Rect(kCols - 15, 500, 15, 20),
                             Rect(500, kRows - 20, 15, 20), Rect(0, 0, kCols, kRows)})
        EXPECT_EQ(1, page_with(rect).border) << rect.x << ", " << rect.y;
    EXPECT_EQ(0, page_with(Rect(1, 1, 15, 20)).border);
    EXPECT_EQ(0, page_with(Rect(kCols - 16, kRows - 21, 15, 20)).border);
}

TEST(text_components, the_tallest_kept_has_3_text_heights) {
    EXPECT_EQ(0, page_with(Rect(50, 50, 30, 60)).tall);
    EXPECT_EQ(1, page_with(Rect(50, 50, 30, 61)).tall);
}

TEST(text_components, the_widest_kept_has_20_text_heights) {
    EXPECT_EQ(0, page_with(Rect(50, 50, 400, 20)).wide);
    EXPECT_EQ(1, page_with(Rect(50, 50, 401, 20)).wide);
}

TEST(text_components, a_frame_counts_as_tall_and_not_as_wide) {
    const TextComponents text = page_with(Rect(50, 50, 1200, 800));
    EXPECT_EQ(1, text.tall);
    EXPECT_EQ(0, text.wide);
}

TEST(text_components, specks_are_judged_by_their_longer_side) {
    EXPECT_EQ(1, page_with(Rect(50, 50, 9, 9)).specks);
    EXPECT_EQ(0, page_with(Rect(50, 50, 10, 2)).specks);  // a hyphen
    EXPECT_EQ(0, page_with(Rect(50, 50, 2, 10)).specks);  // an apostrophe
}

TEST(text_components, ten_times_as_many_specks_do_not_change_the_text_height) {
    Rects rects = page();
    for (int k = 0; k < 4000; ++k) rects.push_back(Rect(20 + k % 1300, 20 + k / 5, 1, 1));
    const TextComponents text = select_text(rects, kRows, kCols);
    EXPECT_EQ(20, text.text_height);
    EXPECT_EQ(4000, text.specks);
    EXPECT_EQ(400, text.kept.size());
}

TEST(text_components, a_dark_desk_does_not_change_the_text_height) {
    EXPECT_EQ(20, page_with(Rect(0, 0, kCols, kRows)).text_height);
}

TEST(text_components, the_rule_does_not_depend_on_the_scale) {
    Rects small;
    Rects large;
    for (int k = 1; k < 60; ++k) {
        const Rect rect(10 + k, 20 + k, 1 + k * k % 97, 1 + k * 7 % 83);
        small.push_back(rect);
        large.push_back(Rect(4 * rect.x, 4 * rect.y, 4 * rect.width, 4 * rect.height));
    }
    const TextComponents one = select_text(small, 300, 300);
    const TextComponents four = select_text(large, 1200, 1200);
    EXPECT_EQ(4 * one.text_height, four.text_height);
    EXPECT_EQ(one.kept.size(), four.kept.size());
    EXPECT_EQ(one.tall, four.tall);
    EXPECT_EQ(one.specks, four.specks);
    EXPECT_GT(one.kept.size(), 0);
    EXPECT_GT(one.tall + one.specks, 0);
}

TEST(text_components, every_component_is_kept_or_counted_once) {
    Rects rects = page();
    for (int k = 0; k < 200; ++k) rects.push_back(Rect(k, k, 1 + k * k % 900, 1 + k * 13 % 500));
    const TextComponents text = select_text(rects, kRows, kCols);
    EXPECT_EQ(rects.size(), text.kept.size() + text.border + text.tall + text.wide + text.specks);
}

TEST(text_components, no_components_give_no_text) {
    EXPECT_EQ(0, select_text(Rects(), kRows, kCols).text_height);
    Rects desk;
    desk.push_back(Rect(0, 0, kCols, kRows));
    const TextComponents text = select_text(desk, kRows, kCols);
    EXPECT_EQ(0, text.text_height);
    EXPECT_EQ(0, text.kept.size());
    EXPECT_EQ(1, text.border);
}
