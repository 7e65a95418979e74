// Kernels that search a row.
#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

// Rows of zeros, each in turn with one or two bytes that are not.
template <class Expect>
void for_every_place(uint64_t seed, Expect expect) {
    Random random(seed);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bytes(random, n, offset, Values::kLowest);
        ASSERT_NO_FATAL_FAILURE(expect(isa, bytes, n, n, n));
        const size_t step = n > 130 ? 13 : 1;
        for (size_t at = 0; at < n; at += step) {
            const size_t other =
                static_cast<size_t>(random.range(static_cast<int>(at), static_cast<int>(n) - 1));
            bytes[at] = random.pick<uint8_t>({1, 128, 255});
            bytes[other] = random.pick<uint8_t>({1, 128, 255});
            ASSERT_NO_FATAL_FAILURE(expect(isa, bytes, n, at, other));
            bytes[at] = bytes[other] = 0;
        }
    });
}

TEST(Kernels, find_nonzero) {
    for_every_place(131, [](Isa isa, Input<uint8_t>& bytes, size_t n, size_t first, size_t) {
        ASSERT_EQ(kernels::find_nonzero(isa, bytes.data(), static_cast<ptrdiff_t>(n)),
                  static_cast<ptrdiff_t>(first));
    });
}

TEST(Kernels, find_last_nonzero) {
    for_every_place(132, [](Isa isa, Input<uint8_t>& bytes, size_t n, size_t, size_t last) {
        ASSERT_EQ(kernels::find_last_nonzero(isa, bytes.data(), static_cast<ptrdiff_t>(n)),
                  last == n ? -1 : static_cast<ptrdiff_t>(last));
    });
}

}  // namespace
}  // namespace testing_support
