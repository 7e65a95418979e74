// Kernels that look at single bytes: counting, thresholds, packing.
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

TEST(Kernels, threshold_bytes) {
    Random random(63);
    for (const int threshold : {0, 1, 127, 128, 129, 254, 255}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> bytes(random, n, offset);
            for (size_t i = 0; i < n; i += 3)
                bytes[i] = static_cast<uint8_t>(threshold - 1 + random.range(0, 2));
            Output<uint8_t> out(random, n, offset);
            kernels::threshold_bytes(isa, bytes.data(), out.data(), static_cast<ptrdiff_t>(n), threshold);
            for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], bytes[i] < threshold ? 0 : 255);
            ASSERT_TRUE(out.guards_hold());
            const std::vector<uint8_t> before(bytes.data(), bytes.data() + n);
            kernels::threshold_bytes(isa, bytes.data(), bytes.data(), static_cast<ptrdiff_t>(n), threshold);
            for (size_t i = 0; i < n; ++i) ASSERT_EQ(bytes[i], before[i] < threshold ? 0 : 255) << "in place";
        });
    }
}

TEST(Kernels, threshold_masked_bytes) {
    Random random(64);
    for (const int threshold : {0, 1, 128, 255}) {
        for (const uint8_t invert : {uint8_t{0}, uint8_t{255}}) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                Input<uint8_t> bytes(random, n, offset), mask(random, n, offset);
                for (size_t i = 0; i < n; ++i) mask[i] = random.pick({0, 0, 1, 128, 255});
                Output<uint8_t> out(random, n, offset);
                std::vector<int> expected;
                for (size_t i = 0; i < n; ++i)
                    expected.push_back(mask[i] == 0 ? 0 : (bytes[i] < threshold) != (invert != 0) ? 0 : 255);
                const auto run = [&](uint8_t* to) {
                    kernels::threshold_masked_bytes(isa, bytes.data(), mask.data(), to,
                                                    static_cast<ptrdiff_t>(n), threshold, invert);
                };
                run(out.data());
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], expected[i]);
                ASSERT_TRUE(out.guards_hold());
                const std::vector<uint8_t> before(bytes.data(), bytes.data() + n);
                run(bytes.data());
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(bytes[i], expected[i]) << "over the bytes";
                std::copy(before.begin(), before.end(), bytes.data());
                run(mask.data());
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(mask[i], expected[i]) << "over the mask";
            });
        }
    }
}

TEST(Kernels, pack_nonzero) {
    Random random(65);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bytes(random, n, offset);
        for (size_t i = 0; i < n; ++i) bytes[i] = random.pick({0, 0, 0, 1, 127, 128, 255});
        Output<uint64_t> words(random, (n + 63) / 64, offset);
        kernels::pack_nonzero(isa, bytes.data(), words.data(), static_cast<int>(n));
        for (size_t i = 0; i < (n + 63) / 64 * 64; ++i)
            ASSERT_EQ(words[i / 64] >> (i % 64) & 1, static_cast<uint64_t>(i < n && bytes[i] != 0))
                << "bit " << i;
        ASSERT_TRUE(words.guards_hold());
    });
}

}  // namespace
}  // namespace testing_support
