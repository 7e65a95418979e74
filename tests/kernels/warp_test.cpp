// Kernels that sample a source at coordinates of single precision.
#include <algorithm>
#include <cmath>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

// One coordinate as a function of the output column, every step rounded to single precision.
struct Coordinate : orvex_cv_991::CoordinateLine {
    Coordinate(float row_share_, float step_, float offset_) : CoordinateLine{row_share_, step_, offset_} {}

    float at(size_t col) const {
        const float product = step * static_cast<float>(col);
        const float sum = row_share + product;
        return sum + offset;
    }
};

// A straight run of n coordinates that all have both neighbours among `size` elements; often it starts or
// ends at the outermost ones.
Coordinate any_coordinate_inside(Random& random, size_t size, size_t first, size_t n) {
    const float last = static_cast<float>(size - 1);
    const auto any_end = [&] {
        if (random.chance(30)) return 0.0f;
        if (random.chance(30)) return std::nextafter(last, 0.0f);
        return last * static_cast<float>(random.range(0, 4095)) / 4096.0f;
    };
    for (;;) {
        const float begin = any_end(), end = random.chance(20) ? begin : any_end();
        const float step = n > 1 ? (end - begin) / static_cast<float>(n - 1) : end - begin;
        const float offset = static_cast<float>(random.range(-400, 400)) / 16.0f;
        const Coordinate coordinate{begin - step * static_cast<float>(first) - offset, step, offset};
        const auto is_inside = [&](float x) { return x >= 0.0f && x < last; };
        if (n == 0 || (is_inside(coordinate.at(first)) && is_inside(coordinate.at(first + n - 1))))
            return coordinate;
    }
}

size_t any_first(Random& random) {
    return static_cast<size_t>(random.pick({0, 1, 5, 64, 1000, 16383}));
}

// Weight of the neighbour before a coordinate, with 11 fraction bits.
int weight_q11(float x) {
    const float fraction = x - std::floor(x);
    const float rest = 1.0f - fraction;
    return static_cast<int>(rest * 2048.0f);
}

TEST(Kernels, warp_row) {
    Random random(111);
    for (const size_t channels : {1, 2, 3, 4, 5}) {
        for (const Values values : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                const size_t rows = static_cast<size_t>(random.range(2, 12)),
                             cols = static_cast<size_t>(random.pick({2, 3, 4, 7, 40, 90}));
                const size_t stride = cols * channels, first = any_first(random);
                Input<uint8_t> src(random, rows * stride, offset, values);
                const Coordinate x_at = any_coordinate_inside(random, cols, first, n),
                                 y_at = any_coordinate_inside(random, rows, first, n);
                Output<uint8_t> out(random, n * channels, offset);
                kernels::warp_row(isa, src.data(), static_cast<ptrdiff_t>(stride), static_cast<int>(channels),
                                  x_at, y_at, static_cast<int>(first), out.data(), static_cast<int>(n));
                for (size_t k = 0; k < n; ++k) {
                    const float x = x_at.at(first + k), y = y_at.at(first + k);
                    const int wx = weight_q11(x), wy = weight_q11(y);
                    const uint8_t* const upper =
                        src.data() + static_cast<size_t>(y) * stride + static_cast<size_t>(x) * channels;
                    const uint8_t* const lower = upper + stride;
                    for (size_t c = 0; c < channels; ++c) {
                        const int sum = upper[c] * wx * wy + upper[c + channels] * (2048 - wx) * wy +
                                        lower[c] * wx * (2048 - wy) +
                                        lower[c + channels] * (2048 - wx) * (2048 - wy);
                        ASSERT_EQ(out[k * channels + c], sum / (2048 * 2048))
                            << channels << " channels, " << rows << " x " << cols << ", pixel " << k << " at "
                            << x << ", " << y;
                    }
                }
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

TEST(Kernels, copy_row) {
    Random random(112);
    const auto any_coordinate = [&](size_t size) {
        const float extent = static_cast<float>(size);
        const Coordinate near{static_cast<float>(random.range(-40, 40)) / 8.0f,
                              static_cast<float>(random.range(-64, 64)) / 32.0f,
                              extent * static_cast<float>(random.range(0, 16)) / 16.0f};
        const Coordinate far{static_cast<float>(random.range(-9, 9)) * 1e9f,
                             random.pick({-3e30f, -1e8f, 0.5f, 2.5e7f, 3e30f}), 0.0f};
        return random.chance(75) ? near : far;
    };
    for (const size_t channels : {1, 2, 3, 4, 5}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            const size_t rows = static_cast<size_t>(random.range(1, 12)),
                         cols = static_cast<size_t>(random.range(1, 40)), first = any_first(random);
            Input<uint8_t> src(random, rows * cols * channels, offset);
            const Coordinate x_at = any_coordinate(cols), y_at = any_coordinate(rows);
            Output<uint8_t> out(random, n * channels, offset);
            kernels::copy_row(isa, src.data(), static_cast<int>(rows), static_cast<int>(cols),
                              static_cast<int>(channels), x_at, y_at, static_cast<int>(first), out.data(),
                              static_cast<int>(n));
            const auto nearest = [](float at, size_t size) {
                return static_cast<size_t>(std::clamp(std::floor(at), 0.0f, static_cast<float>(size - 1)));
            };
            for (size_t k = 0; k < n; ++k) {
                const float x = x_at.at(first + k), y = y_at.at(first + k);
                const size_t pixel = nearest(y, rows) * cols + nearest(x, cols);
                for (size_t c = 0; c < channels; ++c)
                    ASSERT_EQ(out[k * channels + c], src[pixel * channels + c])
                        << rows << " x " << cols << " at " << x << ", " << y;
            }
            ASSERT_TRUE(out.guards_hold());
        });
    }
}

TEST(Kernels, sample_columns) {
    Random random(113);
    for (const size_t cols : {2, 3, 50, 4000}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            const size_t first = any_first(random);
            const Coordinate x_at = any_coordinate_inside(random, cols, first, n);
            Output<int32_t> left(random, n, offset);
            Output<int16_t> weight(random, n, offset);
            kernels::sample_columns(isa, x_at, static_cast<int>(first), left.data(), weight.data(), static_cast<int>(n));
            for (size_t k = 0; k < n; ++k) {
                const float x = x_at.at(first + k);
                ASSERT_EQ(left[k], static_cast<int>(std::floor(x)));
                ASSERT_EQ(weight[k], weight_q11(x));
            }
            ASSERT_TRUE(left.guards_hold() && weight.guards_hold());
        });
    }
}

}  // namespace
}  // namespace testing_support
