#include "commands/morph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using docprep::Image;
using docprep::is_black_and_white;

namespace {

Image row_of(int channels, const std::vector<int>& samples) {
    Image image;
    image.mat_create(1, static_cast<int>(samples.size()) / channels, channels, 0);
    std::copy(samples.begin(), samples.end(), image.data);
    return image;
}

}  // namespace

TEST(morph, black_and_white_is_nothing_but_0_and_255) {
    EXPECT_TRUE(is_black_and_white(row_of(1, {0, 255, 0})));
    EXPECT_TRUE(is_black_and_white(row_of(1, {255, 255, 255})));
    EXPECT_FALSE(is_black_and_white(row_of(1, {0, 255, 254})));
    EXPECT_FALSE(is_black_and_white(row_of(1, {1, 255, 0})));
}

TEST(morph, colours_are_not_black_and_white) {
    EXPECT_TRUE(is_black_and_white(row_of(3, {0, 0, 0, 255, 255, 255})));
    EXPECT_FALSE(is_black_and_white(row_of(3, {0, 0, 0, 255, 255, 0})));
    EXPECT_FALSE(is_black_and_white(row_of(3, {0, 255, 255, 255, 255, 255})));
    EXPECT_FALSE(is_black_and_white(row_of(3, {0, 0, 0, 253, 253, 253})));
}
