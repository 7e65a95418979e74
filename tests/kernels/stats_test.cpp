// Kernels that sum and count.
#include <algorithm>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

// The usual widths, and those around which vector lanes are emptied: 128 and 255 vectors of 16 or 32 bytes.
std::vector<size_t> widths_around_flushes() {
    std::vector<size_t> widths = every_width();
    for (const size_t vectors : {128, 255, 256, 510})
        for (const size_t bytes : {16, 32})
            for (const size_t more : {0, 1, 31}) widths.push_back(vectors * bytes - 1 + more);
    return widths;
}

TEST(Kernels, sum_bytes) {
    Random random(81);
    for (const Values values : kEveryValues) {
        for_every_case_of(widths_around_flushes(), [&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> bytes(random, n, offset, values);
            uint64_t expected = 0, expected_squares = 0, sum = 1, squares = 1;
            for (size_t i = 0; i < n; ++i) {
                expected += bytes[i];
                expected_squares += uint64_t{bytes[i]} * bytes[i];
            }
            kernels::sum_bytes(isa, bytes.data(), static_cast<ptrdiff_t>(n), &sum, &squares);
            ASSERT_EQ(sum, expected);
            ASSERT_EQ(squares, expected_squares);
        });
    }
}

// 255^2 * 70000 is beyond 32 bits.
TEST(Kernels, sum_bytes_of_many_bright_bytes) {
    const std::vector<uint8_t> bytes(70000, 255);
    for (const Isa isa : every_isa()) {
        uint64_t sum = 0, squares = 0;
        kernels::sum_bytes(isa, bytes.data(), 70000, &sum, &squares);
        EXPECT_EQ(sum, 17850000u);
        EXPECT_EQ(squares, 4551750000u);
    }
}

TEST(Kernels, count_nonzero_bytes) {
    Random random(82);
    for (const Values values : kEveryValues) {
        for_every_case_of(widths_around_flushes(), [&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> bytes(random, n, offset, values);
            if (values == Values::kRandom)
                for (size_t i = 0; i < n; ++i) bytes[i] = random.pick({0, 0, 1, 128, 255});
            const ptrdiff_t zeros = std::count(bytes.data(), bytes.data() + n, uint8_t{0});
            ASSERT_EQ(kernels::count_nonzero_bytes(isa, bytes.data(), static_cast<ptrdiff_t>(n)),
                      static_cast<ptrdiff_t>(n) - zeros);
        });
    }
}

}  // namespace
}  // namespace testing_support
