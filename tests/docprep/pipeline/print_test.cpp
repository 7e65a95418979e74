#include "pipeline/print.h"

#include <gtest/gtest.h>

#include "base/failure.h"

using docprep::Image;
using docprep::Print;

TEST(print, components_are_counted_and_text_is_picked_among_them) {
    Image binary;
    binary.mat_create(100, 200, 1, 0);
    const auto fill = [&](int left, int top, int width, int height) {
        for (int row = top; row < top + height; ++row)
            for (int col = left; col < left + width; ++col) binary.data[row * 200 + col] = 255;
    };
    for (int k = 0; k < 8; ++k) fill(20 + 20 * k, 40, 10, 12);
    fill(0, 0, 5, 100);   // the border's
    fill(100, 80, 2, 2);  // a speck
    const Print print = docprep::find_print("page.png", binary);
    EXPECT_EQ(10, print.components.size());
    EXPECT_EQ(8, print.text.kept.size());
    EXPECT_EQ(12, print.text.text_height);
    EXPECT_EQ(1, print.text.border);
    EXPECT_EQ(1, print.text.specks);
}

TEST(print, noise_is_refused_by_its_name) {
    Image binary;
    binary.mat_create(4097, 8192, 1, 0);
    for (ptrdiff_t i = 1; i < ptrdiff_t{4097} * 8192; i += 2) binary.data[i] = 255;
    try {
        docprep::find_print("noise.png", binary);
        FAIL() << "more runs than allowed";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ("noise.png", failure.file());
        EXPECT_STREQ("is noise: 16781312 dark runs are too many", failure.what());
    }
}
