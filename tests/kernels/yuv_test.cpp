// The kernel of the conversion from NV21.
#include <algorithm>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

TEST(Kernels, bgr_from_nv21_rows) {
    Random random(52);
    for (const size_t rows : {1, 2}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> luma(random, rows * n, offset);
            Input<uint8_t> vu(random, (n + 1) / 2 * 2, offset);
            Output<uint8_t> bgr(random, 3 * rows * n, offset);
            kernels::bgr_from_nv21_rows(isa, luma.data(), vu.data(), bgr.data(), static_cast<int>(n),
                                        static_cast<int>(rows));
            for (size_t i = 0; i < rows * n; ++i) {
                const size_t pair = i % n / 2 * 2;
                const int y = 1192 * std::max(luma[i] - 16, 0);
                const int v = vu[pair] - 128, u = vu[pair + 1] - 128;
                const auto byte = [](int value) { return std::clamp(value, 0, 262143) >> 10; };
                ASSERT_EQ(bgr[3 * i], byte(y + 2066 * u));
                ASSERT_EQ(bgr[3 * i + 1], byte(y - 833 * v - 400 * u));
                ASSERT_EQ(bgr[3 * i + 2], byte(y + 1634 * v));
            }
            ASSERT_TRUE(bgr.guards_hold());
        });
    }
}

}  // namespace
}  // namespace testing_support
