// The straight line that stands for the threshold's double expression.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "images.h"
#include "thresholds.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;

// Every byte value in the middle of windows whose sums lie around the border between the outcomes:
// there the straight line must decide as the double expression does. Windows are tiles beside each
// other, one row of them. The deviation is that of the finished image; the ratio makes of it the wanted
// offset, up to a rounding.
void expect_line_decides_as_expression(int side, double wanted_offset, bool inverse) {
    constexpr int kSums = 7;
    const int count = side * side, others = count - 1, tiles = 256 * kSums;
    U8 image = filled(side, side * tiles, 1, 0);
    std::vector<int> sums;
    for (int tile = 0; tile < tiles; ++tile) {
        const int value = tile / kSums;
        const double border = std::clamp((value - wanted_offset) * count, -1.0, 256.0 * count);
        const int sum =
            std::clamp(static_cast<int>(border) + tile % kSums - kSums / 2, value, value + 255 * others);
        sums.push_back(sum);
        // The middle, and around it the rest of the sum spread evenly.
        const int share = (sum - value) / others, rest = (sum - value) % others;
        int next = 0;
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const bool is_middle = y == side / 2 && x == side / 2;
                image.data[y * image.cols + tile * side + x] =
                    static_cast<unsigned char>(is_middle ? value : share + (next < rest));
                next += !is_middle;
            }
        }
    }
    float mean = 0, deviation = 0;
    CImgproc::meanStdDev(image, mean, deviation);
    const double ratio = wanted_offset / static_cast<double>(deviation);
    const double offset = static_cast<double>(deviation) * ratio;

    U8 out;
    CImgproc::adaptiveThreshold(image, out, side, ratio, inverse);
    int borders = 0;
    for (int tile = 0; tile < tiles; ++tile) {
        const int value = tile / kSums, sum = sums[static_cast<size_t>(tile)];
        const auto is_above = [&](int of) {
            const double window_mean = static_cast<double>(of) / static_cast<double>(count);
            return static_cast<double>(value) > window_mean + offset;
        };
        borders += is_above(sum) && !is_above(sum + 1);
        ASSERT_EQ(out.data[side / 2 * out.cols + tile * side + side / 2], is_above(sum) != inverse ? 255 : 0)
            << "value " << value << " sum " << sum;
    }
    EXPECT_GT(borders, 128) << "of 256 values";
    // The other rows, whose windows are cut and have lines of their own.
    if (side > 5) return;
    reference::Image<uint8_t> expected;
    reference::adaptiveThreshold(to_reference(image), expected, side, ratio, inverse);
    ASSERT_TRUE(std::equal(expected.data.begin(), expected.data.end(), out.data));
}

TEST(Kernels, line_of_the_adaptive_threshold_decides_as_the_double_expression) {
    for (const int side : {3, 5, 9, 15, 31}) {
        for (const double offset : {0.0, 1e-12, -1e-12, 1.0 / 9, -2.0 / 25, 12.5, -7.3, 63.21, -99.0}) {
            ASSERT_NO_FATAL_FAILURE(expect_line_decides_as_expression(side, offset, offset < 0))
                << "side " << side << " offset " << offset;
            ASSERT_FALSE(HasFailure()) << "side " << side << " offset " << offset;
        }
    }
}

}  // namespace
}  // namespace testing_support
