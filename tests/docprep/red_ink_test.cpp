#include "red_ink.h"

#include <gtest/gtest.h>

using docprep::Image;
using docprep::TextComponents;
using orvex_cv_991::Rect;

namespace {

/// A page of 10 letters in a row, 8 x 8 on white, the first `red` of them in red ink, the others in black.
struct PageOfLetters {
    Image photo;
    Image binary;
    TextComponents text;
};

PageOfLetters page_with(int red, int channels = 3) {
    constexpr int kCols = 200;
    PageOfLetters page;
    page.photo.mat_create(20, kCols, channels, 240);
    page.binary.mat_create(20, kCols, 1, 0);
    for (int k = 0; k < 10; ++k) {
        page.text.kept.push_back(Rect(5 + 19 * k, 6, 8, 8));
        // Half of each rectangle is paper.
        for (int row = 6; row < 14; ++row)
            for (int col = 5 + 19 * k; col < 9 + 19 * k; ++col) {
                page.binary.data[row * kCols + col] = 255;
                unsigned char* const pixel = page.photo.data + (row * kCols + col) * channels;
                pixel[0] = 60;
                if (channels == 1) continue;
                pixel[1] = 70;
                pixel[2] = k < red ? 180 : 90;
            }
    }
    return page;
}

TextComponents text_left(int red, int channels = 3) {
    PageOfLetters page = page_with(red, channels);
    docprep::drop_red_ink(page.photo, page.binary, page.text);
    return page.text;
}

}  // namespace

TEST(red_ink, red_components_are_dropped_and_counted) {
    const TextComponents text = text_left(3);
    EXPECT_EQ(3, text.red);
    ASSERT_EQ(7, text.kept.size());
    EXPECT_EQ(5 + 19 * 3, text.kept[0].x);
}

TEST(red_ink, black_print_on_warm_paper_stays) {
    EXPECT_EQ(0, text_left(0).red);
    EXPECT_EQ(10, text_left(0).kept.size());
}

TEST(red_ink, a_page_printed_in_red_keeps_its_text) {
    EXPECT_EQ(0, text_left(4).red);
    EXPECT_EQ(10, text_left(4).kept.size());
    EXPECT_EQ(10, text_left(10).kept.size());
}

TEST(red_ink, a_gray_picture_has_none) {
    EXPECT_EQ(10, text_left(3, 1).kept.size());
}
