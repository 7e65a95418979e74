// Kernels of the conversion to hue, saturation and value.
#include <algorithm>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

// H, S, V by the definition, with the division table in integers.
void expect_hsv(const uint8_t* hsv, int b, int g, int r) {
    const auto division = [](int x) { return x == 0 ? 0 : (2 * 1044480 + x) / (2 * x); };
    const int v = std::max({b, g, r}), diff = v - std::min({b, g, r});
    const int h = v == r ? g - b : v == g ? b - r + 2 * diff : r - g + 4 * diff;
    ASSERT_EQ(hsv[0], ((division(diff) * h * 15 + 262144) >> 19) + (h < 0 ? 180 : 0));
    ASSERT_EQ(hsv[1], division(v) * diff >> 12);
    ASSERT_EQ(hsv[2], v);
}

TEST(Kernels, hsv_from_bgr) {
    Random random(53);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bgr(random, 3 * n, offset);
        Output<uint8_t> hsv(random, 3 * n, offset);
        kernels::hsv_from_bgr(isa, bgr.data(), hsv.data(), static_cast<ptrdiff_t>(n));
        for (size_t i = 0; i < n; ++i)
            ASSERT_NO_FATAL_FAILURE(expect_hsv(&hsv[3 * i], bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]));
        ASSERT_TRUE(hsv.guards_hold());
    });
}

TEST(Kernels, hsv_from_strided) {
    Random random(54);
    for (const size_t stride : {0, 1, 2, 4, 5}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> pixels(random, stride * n, offset);
            Output<uint8_t> hsv(random, 3 * n, offset);
            kernels::hsv_from_strided(isa, pixels.data(), static_cast<ptrdiff_t>(stride * n),
                                      static_cast<ptrdiff_t>(stride), hsv.data(), static_cast<ptrdiff_t>(n));
            const auto byte = [&](size_t at) { return at < stride * n ? pixels[at] : 0; };
            for (size_t i = 0; i < n; ++i)
                ASSERT_NO_FATAL_FAILURE(
                    expect_hsv(&hsv[3 * i], byte(stride * i), byte(stride * i + 1), byte(stride * i + 2)));
            ASSERT_TRUE(hsv.guards_hold());
        });
    }
}

}  // namespace
}  // namespace testing_support
