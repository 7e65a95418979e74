// Kernels that compare bytes with one level.
#include <algorithm>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

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

}  // namespace
}  // namespace testing_support
