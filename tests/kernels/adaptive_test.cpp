// Kernels that compare pixels with sums over their windows.
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

TEST(Kernels, compare_with_mean) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Random random(104);
    for (const double offset : {0.0, -0.5, 1.0 / 3, 12.25, kInfinity, -kInfinity, std::nan("")}) {
        for (const uint8_t invert : {uint8_t{0}, uint8_t{255}}) {
            for_every_case([&](Isa isa, size_t n, size_t shift) {
                Input<uint8_t> pixels(random, n, shift);
                Input<uint32_t> sums(random, n, shift);  // those above 2^31 count as negative
                Input<int32_t> counts(random, n, shift);
                for (size_t i = 0; i < n; ++i) {
                    counts[i] = random.range(1, 5000);
                    // Means that meet the pixel exactly or nearly.
                    if (random.chance(70))
                        sums[i] = static_cast<uint32_t>(pixels[i] * counts[i] + random.range(-1, 1));
                }
                Output<uint8_t> out(random, n, shift);
                kernels::compare_with_mean(isa, pixels.data(), sums.data(), counts.data(), offset, out.data(),
                                           static_cast<ptrdiff_t>(n), invert);
                for (size_t i = 0; i < n; ++i) {
                    const double sum = sums[i] < 0x80000000u ? sums[i] : sums[i] - 4294967296.0;
                    ASSERT_EQ(out[i], (pixels[i] > sum / counts[i] + offset ? 255 : 0) ^ invert);
                }
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

TEST(Kernels, compare_with_line) {
    Random random(105);
    for (const size_t count : {1, 3, 9}) {
        for (const size_t narrow_rows : {size_t{0}, count / 2, count}) {
            for (const Values values : kEveryValues) {
                for_every_case([&](Isa isa, size_t n, size_t offset) {
                    const uint8_t invert = random.pick<uint8_t>({0, 255});
                    Input<uint8_t> pixels(random, n, offset, values);
                    const SumRows rows(random, count, n, offset, random.pick({Values::kRandom, values}),
                                       static_cast<uint16_t>(65535 / std::max<size_t>(narrow_rows, 1)));
                    const int32_t slope = random.range(1, 2000);
                    // A line through one of the points, or just below it.
                    const size_t on = static_cast<size_t>(random.range(0, 66)) % std::max<size_t>(n, 1);
                    const int32_t intercept =
                        n == 0 ? 0 : rows.sum(on) - slope * pixels[on] - random.range(0, 1);
                    Output<uint8_t> out(random, n, offset);
                    kernels::compare_with_line(isa, pixels.data(), rows.pointers(),
                                               static_cast<int>(narrow_rows), rows.count(), slope, intercept,
                                               out.data(), static_cast<ptrdiff_t>(n), invert);
                    for (size_t i = 0; i < n; ++i) {
                        const bool above = int64_t{rows.sum(i)} <= int64_t{slope} * pixels[i] + intercept;
                        ASSERT_EQ(out[i], (above ? 255 : 0) ^ invert) << "pixel " << i;
                    }
                    ASSERT_TRUE(out.guards_hold());
                });
            }
        }
    }
}

// The largest window that lines are used for, 2^31 / 512 pixels, all of them bright, and the extreme
// intercepts: every number and difference still fits into 32 bits.
TEST(Kernels, compare_with_line_at_the_limits_of_32_bits) {
    constexpr int32_t kCount = 4194303, kMost = 255 * kCount;
    Random random(106);
    for (const Values sums : {Values::kLowest, Values::kHighest}) {
        std::vector<uint16_t> row(40, sums == Values::kHighest ? uint16_t{65025} : uint16_t{0});
        const std::vector<const uint16_t*> rows(kMost / 65025, row.data());
        const int32_t sum = static_cast<int32_t>(rows.size()) * row[0];
        for (const int32_t intercept : {-1 - kMost, -kMost, -1, 0, kMost}) {
            for (const Isa isa : every_isa()) {
                for (const int pixel : {0, 1, 127, 254, 255}) {
                    const std::vector<uint8_t> pixels(40, static_cast<uint8_t>(pixel));
                    Output<uint8_t> out(random, 40, 1);
                    kernels::compare_with_line(isa, pixels.data(), rows.data(), 1,
                                               static_cast<int>(rows.size()), kCount, intercept, out.data(),
                                               40, 0);
                    const bool above = sum <= int64_t{kCount} * pixel + intercept;
                    for (size_t i = 0; i < 40; ++i)
                        ASSERT_EQ(out[i], above ? 255 : 0) << "pixel " << pixel << " intercept " << intercept;
                }
            }
        }
    }
}

}  // namespace
}  // namespace testing_support
