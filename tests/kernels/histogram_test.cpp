// Kernels that count bytes by their value.
#include <algorithm>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

TEST(Kernels, count_bytes) {
    Random random(61);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bytes(random, n, offset);
        if (n % 3 == 0) std::fill_n(bytes.data(), n, uint8_t{77});
        std::vector<uint32_t> counts(256, 9), expected(256, 0);
        kernels::count_bytes(isa, bytes.data(), static_cast<ptrdiff_t>(n), counts.data());
        for (size_t i = 0; i < n; ++i) ++expected[bytes[i]];
        ASSERT_EQ(counts, expected);
    });
}

// More of one value than any narrow counter holds.
TEST(Kernels, count_bytes_of_many_equal_bytes) {
    const std::vector<uint8_t> bytes(300001, 200);
    for (const Isa isa : every_isa()) {
        std::vector<uint32_t> counts(256), masked(256);
        kernels::count_bytes(isa, bytes.data(), 300001, counts.data());
        kernels::count_masked_bytes(isa, bytes.data(), bytes.data(), 300001, masked.data());
        EXPECT_EQ(counts[200], 300001u);
        EXPECT_EQ(counts, masked);
    }
}

TEST(Kernels, count_masked_bytes) {
    Random random(62);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bytes(random, n, offset), mask(random, n, offset);
        for (size_t i = 0; i < n; ++i) mask[i] = random.pick({0, 0, 1, 128, 255});
        std::vector<uint32_t> counts(256, 9), expected(256, 0);
        kernels::count_masked_bytes(isa, bytes.data(), mask.data(), static_cast<ptrdiff_t>(n), counts.data());
        for (size_t i = 0; i < n; ++i) expected[bytes[i]] += mask[i] != 0;
        ASSERT_EQ(counts, expected);
    });
}

}  // namespace
}  // namespace testing_support
