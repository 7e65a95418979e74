// The kernel that maps bytes by a table.
#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

TEST(Kernels, look_up_bytes) {
    Random random(69);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bytes(random, n, offset), table(random, 256, 0);
        Output<uint8_t> out(random, n, offset);
        kernels::look_up_bytes(isa, bytes.data(), table.data(), out.data(), static_cast<ptrdiff_t>(n));
        for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], table[bytes[i]]);
        ASSERT_TRUE(out.guards_hold());
        kernels::look_up_bytes(isa, bytes.data(), table.data(), bytes.data(), static_cast<ptrdiff_t>(n));
        for (size_t i = 0; i < n; ++i) ASSERT_EQ(bytes[i], out[i]);
    });
}

}  // namespace
}  // namespace testing_support
