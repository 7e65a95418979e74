// The filter of the sharpness score on small images made for it.
#include "algorithms/sharpness.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "images.h"

namespace testing_support {
namespace {

using orvex_cv_991::sharpness_of;

// 2^-11 a unit of response, shared among the responding pixels and one more.
float score(int sum, int count) {
    return static_cast<float>(sum) * 0.00048828125f / static_cast<float>(count + 1);
}

TEST(SharpnessFilter, level_patches_respond_with_twice_their_value) {
    const U8 level = filled(5, 6, 1, 100), contrast = filled(5, 6, 1, 255), mask = filled(5, 6, 1, 1);
    EXPECT_EQ(sharpness_of(level, contrast, mask.data), score(3 * 4 * 200, 3 * 4));
}

TEST(SharpnessFilter, weighs_the_centre_its_edges_and_its_diagonals) {
    const U8 contrast = filled(3, 3, 1, 255), mask = filled(3, 3, 1, 1);
    const int weights[9] = {827, 1643, 827, 1643, -9878, 1643, 827, 1643, 827};
    for (int k = 0; k < 9; ++k) {
        U8 spot = filled(3, 3, 1, 0);
        spot.data[k] = 7;
        EXPECT_EQ(sharpness_of(spot, contrast, mask.data), score(std::abs(7 * weights[k]), 1)) << k;
    }
}

TEST(SharpnessFilter, without_contrast_nothing_responds) {
    U8 contrast = filled(3, 4, 1, 0);
    const U8 level = filled(3, 4, 1, 100), mask = filled(3, 4, 1, 1);
    EXPECT_EQ(sharpness_of(level, contrast, mask.data), 0.0f);
    contrast.data[5] = 1;
    EXPECT_EQ(sharpness_of(level, contrast, mask.data), score(200, 1));
}

// Pixel (row, col) looks at byte row * cols + 2 col - 1, for the right half of a row in the next one.
TEST(SharpnessFilter, the_mask_is_sampled_at_every_second_byte) {
    constexpr int kRows = 15, kCols = 8;
    const U8 contrast = filled(kRows, kCols, 1, 255);
    for (int at = 0; at < kRows * kCols; ++at) {
        U8 mask = filled(kRows, kCols, 1, 0);
        mask.data[at] = 1;
        // Each pixel responds with its own number, so that the score tells which ones were selected.
        int sum = 0, count = 0;
        U8 levels = filled(kRows, kCols, 1, 0);
        for (int k = 0; k < kRows * kCols; ++k) levels.data[k] = static_cast<unsigned char>(k * 37 % 251);
        for (int row = 1; row < kRows - 1; ++row) {
            for (int col = 1; col < kCols - 1; ++col) {
                if (row * kCols + 2 * col - 1 != at) continue;
                const auto level = [&](int y, int x) {
                    return int{levels.data[(row + y) * kCols + col + x]};
                };
                const int diagonal = level(-1, -1) + level(-1, 1) + level(1, -1) + level(1, 1);
                const int edge = level(-1, 0) + level(1, 0) + level(0, -1) + level(0, 1);
                sum += std::abs(827 * diagonal + 1643 * edge - 9878 * level(0, 0));
                ++count;
            }
        }
        EXPECT_EQ(sharpness_of(levels, contrast, mask.data), score(sum, count)) << "byte " << at;
    }
}

}  // namespace
}  // namespace testing_support
