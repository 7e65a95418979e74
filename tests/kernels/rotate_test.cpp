// Kernels that move whole pixels.
#include <algorithm>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

TEST(Kernels, reverse_pixels) {
    Random random(91);
    for (const size_t channels : {1, 2, 3, 4, 5, 7}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> pixels(random, channels * n, offset);
            Output<uint8_t> out(random, channels * n, offset);
            kernels::reverse_pixels(isa, pixels.data(), out.data(), static_cast<int>(channels),
                                    static_cast<ptrdiff_t>(n));
            for (size_t i = 0; i < n; ++i)
                for (size_t c = 0; c < channels; ++c)
                    ASSERT_EQ(out[channels * i + c], pixels[channels * (n - 1 - i) + c])
                        << channels << " channels, pixel " << i;
            ASSERT_TRUE(out.guards_hold());
        });
    }
}

void expect_turned(Random& random, Isa isa, size_t rows, size_t cols, size_t channels, size_t offset) {
    for (const bool upward : {false, true}) {
        for (const bool leftward : {false, true}) {
            Input<uint8_t> src(random, rows * cols * channels, offset);
            Output<uint8_t> out(random, rows * cols * channels, offset);
            kernels::turn_pixels(isa, src.data(), static_cast<int>(rows), static_cast<int>(cols),
                                 static_cast<int>(channels), upward, leftward, out.data());
            for (size_t i = 0; i < cols; ++i) {
                for (size_t j = 0; j < rows; ++j) {
                    const size_t row = upward ? rows - 1 - j : j, col = leftward ? cols - 1 - i : i;
                    for (size_t c = 0; c < channels; ++c)
                        ASSERT_EQ(out[(i * rows + j) * channels + c], src[(row * cols + col) * channels + c])
                            << rows << " x " << cols << " x " << channels << ", output " << i << ", " << j;
                }
            }
            ASSERT_TRUE(out.guards_hold());
        }
    }
}

// Each width with a few heights on both sides of what tiles of 4, 8, 16 and 32 cover, and
// the other way round.
TEST(Kernels, turn_pixels) {
    Random random(92);
    for (const size_t channels : {1, 2, 3, 4, 5}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            const size_t side = std::max<size_t>(n, 1);
            if (side > 256) return;
            const size_t other = random.pick<size_t>({1, 2, 4, 5, 6, 10, 15, 16, 18, 31, 32, 33, 34, 35, 50});
            ASSERT_NO_FATAL_FAILURE(expect_turned(random, isa, side, other, channels, offset));
            ASSERT_NO_FATAL_FAILURE(expect_turned(random, isa, other, side, channels, offset));
        });
    }
}

}  // namespace
}  // namespace testing_support
