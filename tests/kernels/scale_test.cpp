// Kernels that scale along the axes: a source row stretched, then two rows blended.
#include <algorithm>
#include <vector>

#include "coordinate.h"
#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

int any_weight(Random& random) {
    return random.chance(30) ? random.pick({0, 1, 1024, 2047, 2048}) : random.range(0, 2048);
}

TEST(Kernels, sample_columns) {
    Random random(113);
    for (const size_t cols : {2, 3, 50, 4000}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            const size_t first = any_first(random);
            const Coordinate x_at = any_coordinate_inside(random, cols, first, n);
            Output<int32_t> left(random, n, offset);
            Output<int16_t> weight(random, n, offset);
            kernels::sample_columns(isa, x_at, static_cast<int>(first), left.data(), weight.data(),
                                    static_cast<int>(n));
            for (size_t k = 0; k < n; ++k) {
                const float x = x_at.at(first + k);
                ASSERT_EQ(left[k], static_cast<int>(std::floor(x)));
                ASSERT_EQ(weight[k], weight_q11(x));
            }
            ASSERT_TRUE(left.guards_hold() && weight.guards_hold());
        });
    }
}

TEST(Kernels, stretch_row) {
    Random random(121);
    for (const size_t channels : {1, 2, 3, 4, 5}) {
        for (const Values values : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                const size_t cols = static_cast<size_t>(random.range(2, 40));
                Input<uint8_t> row(random, cols * channels, offset, values);
                Input<int32_t> at(random, n, offset);
                Input<int16_t> weight(random, n, offset);
                for (size_t e = 0; e < n; ++e) {
                    at[e] = random.range(0, static_cast<int>((cols - 1) * channels) - 1);
                    weight[e] = static_cast<int16_t>(any_weight(random));
                }
                Output<int32_t> out(random, n, offset);
                kernels::stretch_row(isa, row.data(), at.data(), weight.data(), static_cast<int>(channels),
                                     out.data(), static_cast<ptrdiff_t>(n));
                for (size_t e = 0; e < n; ++e) {
                    const size_t left = static_cast<size_t>(at[e]);
                    ASSERT_EQ(out[e], row[left] * weight[e] + row[left + channels] * (2048 - weight[e]));
                }
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

// Steps anywhere in a row: the first 16 bytes, the last ones, not in order. Each makes 4 elements.
class AnySteps {
 public:
    AnySteps(Random& random, size_t n, size_t offset, int row_bytes)
        : base(random, n, offset), index(random, 16 * n, offset), weights(random, 8 * n, offset) {
        for (size_t s = 0; s < n; ++s) base[s] = random.range(0, row_bytes - 16);
        for (size_t k = 0; k < 8 * n; ++k) {
            index[2 * k] = random.pick<uint8_t>({0, 15, static_cast<uint8_t>(random.range(0, 15))});
            index[2 * k + 1] = 255;
        }
        for (size_t e = 0; e < 4 * n; ++e) {
            weights[2 * e] = static_cast<int16_t>(any_weight(random));
            weights[2 * e + 1] = static_cast<int16_t>(2048 - weights[2 * e]);
        }
    }

    /// Element e of a row, stretched.
    int stretched(Input<uint8_t>& row, size_t e) {
        const uint8_t* const pixels = row.data() + base[e / 4];
        return pixels[index[4 * e]] * weights[2 * e] + pixels[index[4 * e + 2]] * weights[2 * e + 1];
    }

    Input<int32_t> base;
    Input<uint8_t> index;
    Input<int16_t> weights;
};

TEST(Kernels, stretch_row_in_steps) {
    Random random(122);
    for (const Values values : kEveryValues) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            const int row_bytes = random.pick({16, 17, 31, 32, 100});
            Input<uint8_t> row(random, static_cast<size_t>(row_bytes), offset, values);
            AnySteps steps(random, n, offset, row_bytes);
            Output<int32_t> out(random, 4 * n, offset);
            kernels::stretch_row_in_steps(isa, row.data(), steps.base.data(), steps.index.data(),
                                          steps.weights.data(), out.data(), static_cast<ptrdiff_t>(n));
            for (size_t e = 0; e < 4 * n; ++e) ASSERT_EQ(out[e], steps.stretched(row, e)) << "element " << e;
            ASSERT_TRUE(out.guards_hold());
        });
    }
}

TEST(Kernels, blend_rows_in_steps) {
    Random random(125);
    for (const Values values : kEveryValues) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            const int row_bytes = random.pick({16, 17, 31, 32, 100}), weight = any_weight(random);
            Input<uint8_t> upper(random, static_cast<size_t>(row_bytes), offset, values);
            Input<uint8_t> lower(random, static_cast<size_t>(row_bytes), offset / 2, values);
            AnySteps steps(random, n, offset, row_bytes);
            Output<uint8_t> out(random, 4 * n, offset);
            kernels::blend_rows_in_steps(isa, upper.data(), lower.data(), steps.base.data(),
                                         steps.index.data(), steps.weights.data(), weight, out.data(),
                                         static_cast<ptrdiff_t>(n));
            for (size_t e = 0; e < 4 * n; ++e)
                ASSERT_EQ(out[e],
                          (steps.stretched(upper, e) * weight + steps.stretched(lower, e) * (2048 - weight)) /
                              (2048 * 2048))
                    << "element " << e;
            ASSERT_TRUE(out.guards_hold());
        });
    }
}

TEST(Kernels, can_stretch_in_steps_with_avx2) {
    if (orvex_cv_991::fastest_isa() != Isa::kAvx2) GTEST_SKIP() << "no AVX2 in this build or processor";
    EXPECT_TRUE(kernels::can_stretch_in_steps(Isa::kAvx2));
}

TEST(Kernels, blend_rows) {
    Random random(123);
    for (const int weight : {0, 1, 700, 1024, 2047, 2048}) {
        for (const Values values : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                Input<int32_t> upper(random, n, offset), lower(random, n, offset + 2);
                for (Input<int32_t>* const row : {&upper, &lower})
                    for (size_t e = 0; e < n; ++e)
                        (*row)[e] = values == Values::kLowest    ? 0
                                    : values == Values::kHighest ? 255 * 2048
                                                                 : random.range(0, 255 * 2048);
                Output<uint8_t> out(random, n, offset);
                kernels::blend_rows(isa, upper.data(), lower.data(), weight, out.data(),
                                    static_cast<ptrdiff_t>(n));
                for (size_t e = 0; e < n; ++e)
                    ASSERT_EQ(out[e], (upper[e] * weight + lower[e] * (2048 - weight)) / (2048 * 2048));
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

TEST(Kernels, halve_rows) {
    Random random(124);
    for (const size_t channels : {1, 2, 3, 4, 5}) {
        for (const Values values : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                const size_t rows = static_cast<size_t>(random.range(0, 3));
                const size_t stride = (2 * n + static_cast<size_t>(random.range(0, 2))) * channels;
                // The last row ends with its last pair.
                const size_t bytes = rows == 0 ? 0 : (2 * rows - 1) * stride + 2 * n * channels;
                Input<uint8_t> src(random, bytes, offset, values);
                Output<uint8_t> out(random, rows * n * channels, offset);
                kernels::halve_rows(isa, src.data(), static_cast<ptrdiff_t>(stride),
                                    static_cast<int>(channels), out.data(), static_cast<ptrdiff_t>(n),
                                    static_cast<int>(rows));
                for (size_t e = 0; e < rows * n * channels; ++e) {
                    const size_t row = e / (n * channels), pixel = e % (n * channels) / channels;
                    const size_t upper = 2 * row * stride + 2 * pixel * channels + e % channels;
                    const size_t lower = upper + stride;
                    ASSERT_EQ(out[e],
                              (src[upper] + src[upper + channels] + src[lower] + src[lower + channels]) / 4)
                        << channels << " channels, row " << row << ", pixel " << pixel;
                }
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

}  // namespace
}  // namespace testing_support
