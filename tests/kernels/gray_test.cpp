// The kernel of the grey conversion.
#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

TEST(Kernels, gray_from_bgr) {
    Random random(51);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bgr(random, 3 * n, offset);
        Output<uint8_t> gray(random, n, offset);
        kernels::gray_from_bgr(isa, bgr.data(), gray.data(), static_cast<ptrdiff_t>(n));
        for (size_t i = 0; i < n; ++i)
            ASSERT_EQ(gray[i], (107 * bgr[3 * i] + 601 * bgr[3 * i + 1] + 306 * bgr[3 * i + 2] + 512) >> 10);
        ASSERT_TRUE(gray.guards_hold());
    });
}

}  // namespace
}  // namespace testing_support
