// Kernels of the threshold by windows, and the straight line that stands for its double expression.
#include <algorithm>
#include <limits>
#include <vector>

#include "kernel_case.h"
#include "statistics.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Isa;

TEST(Kernels, widen_bytes16) {
    Random random(101);
    for (const Values values : kEveryValues) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> bytes(random, n, offset, values);
            Output<uint16_t> out(random, n, offset);
            kernels::widen_bytes16(isa, bytes.data(), out.data(), static_cast<ptrdiff_t>(n));
            for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], bytes[i]);
            ASSERT_TRUE(out.guards_hold());
        });
    }
}

// Rows of 16-bit elements, each in a block of its own, none above `most`.
class SumRows {
 public:
    SumRows(Random& random, size_t count, size_t n, size_t offset, Values values, uint16_t most) {
        for (size_t k = 0; k < count; ++k) {
            rows_.emplace_back(random, n, (offset + k) % 8, values);
            for (size_t i = 0; i < n; ++i)
                rows_[k][i] =
                    static_cast<uint16_t>(values == Values::kHighest ? most : rows_[k][i] % (most + 1));
        }
        for (Input<uint16_t>& row : rows_) pointers_.push_back(row.data());
    }
    const uint16_t* const* pointers() const { return pointers_.data(); }
    int count() const { return static_cast<int>(pointers_.size()); }
    int32_t sum(size_t i) const {
        int32_t sum = 0;
        for (const uint16_t* const row : pointers_) sum += row[i];
        return sum;
    }

 private:
    std::vector<Input<uint16_t>> rows_;
    std::vector<const uint16_t*> pointers_;
};

TEST(Kernels, sum_rows16) {
    Random random(102);
    for (const size_t count : {1, 2, 3, 8, 255}) {
        for (const Values values : kEveryValues) {
            for_every_case_of(count > 8 ? std::vector<size_t>{1, 7, 8, 33} : every_width(),
                              [&](Isa isa, size_t n, size_t offset) {
                                  const SumRows rows(random, count, n, offset, values,
                                                     static_cast<uint16_t>(65535 / count));
                                  Output<uint16_t> out(random, n, offset);
                                  kernels::sum_rows16(isa, rows.pointers(), rows.count(), out.data(),
                                                      static_cast<ptrdiff_t>(n));
                                  for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], rows.sum(i));
                                  ASSERT_TRUE(out.guards_hold());
                              });
        }
    }
}

TEST(Kernels, sum_rows32) {
    Random random(103);
    for (const size_t count : {1, 2, 3, 8}) {
        for (const Values values : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                const SumRows rows(random, count, n, offset, values, 65535);
                Output<uint32_t> out(random, n, offset);
                kernels::sum_rows32(isa, rows.pointers(), rows.count(), out.data(),
                                    static_cast<ptrdiff_t>(n));
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], static_cast<uint32_t>(rows.sum(i)));
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

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

// Every byte value in the middle of windows whose sums lie around the border between the outcomes: there the
// straight line must decide as the double expression does. Windows are tiles beside each other, one row of
// them. The deviation is that of the finished image; the ratio makes of it the wanted offset, up to a
// rounding.
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
