// Kernels that sample a source at coordinates of single precision.
#include <algorithm>
#include <cmath>

#include "coordinate.h"
#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

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

}  // namespace
}  // namespace testing_support
