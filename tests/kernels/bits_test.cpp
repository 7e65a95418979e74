// Kernels on packed bits.
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

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

TEST(Kernels, pack_below_128) {
    Random random(66);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bytes(random, n, offset);
        for (size_t i = 0; i < n; i += 2) bytes[i] = random.pick({0, 1, 127, 128, 255});
        Output<uint64_t> words(random, (n + 63) / 64, offset);
        kernels::pack_below_128(isa, bytes.data(), words.data(), static_cast<int>(n));
        for (size_t i = 0; i < (n + 63) / 64 * 64; ++i)
            ASSERT_EQ(words[i / 64] >> (i % 64) & 1, static_cast<uint64_t>(i < n && bytes[i] < 128))
                << "bit " << i;
        ASSERT_TRUE(words.guards_hold());
    });
}

TEST(Kernels, unpack_bits) {
    Random random(67);
    for (const uint8_t invert : {uint8_t{0}, uint8_t{255}}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint64_t> words(random, (n + 63) / 64, offset);  // bits beyond the row are set at random
            Output<uint8_t> bytes(random, n, offset);
            kernels::unpack_bits(isa, words.data(), bytes.data(), static_cast<int>(n), invert);
            for (size_t i = 0; i < n; ++i)
                ASSERT_EQ(bytes[i], (words[i / 64] >> (i % 64) & 1 ? 255 : 0) ^ invert);
            ASSERT_TRUE(bytes.guards_hold());
        });
    }
}

TEST(Kernels, or_words) {
    Random random(68);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint64_t> a(random, n, offset), b(random, n, offset);
        Output<uint64_t> out(random, n, offset);
        std::vector<uint64_t> expected;
        for (size_t i = 0; i < n; ++i) expected.push_back(a[i] | b[i]);
        kernels::or_words(isa, a.data(), b.data(), out.data(), static_cast<int>(n));
        kernels::or_words(isa, a.data(), b.data(), b.data(), static_cast<int>(n));
        for (size_t i = 0; i < n; ++i) ASSERT_TRUE(out[i] == expected[i] && b[i] == expected[i]);
        ASSERT_TRUE(out.guards_hold());
    });
}

TEST(Kernels, find_runs) {
    Random random(70);
    for (const int percent : {3, 50, 97, 0, 100}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint64_t> words(random, (n + 63) / 64, offset, Values::kLowest);
            std::vector<int32_t> expected;
            for (size_t i = 0; i < n; ++i) {
                if (!random.chance(percent)) continue;
                words[i / 64] |= uint64_t{1} << (i % 64);
                if (expected.empty() || expected.back() != static_cast<int32_t>(i)) {
                    expected.push_back(static_cast<int32_t>(i));
                    expected.push_back(static_cast<int32_t>(i));
                }
                ++expected.back();
            }
            Output<int32_t> bounds(random, n + 1, offset);
            const int count = kernels::find_runs(isa, words.data(), static_cast<int>(n), bounds.data());
            ASSERT_EQ(static_cast<size_t>(count), expected.size());
            for (size_t k = 0; k < expected.size(); ++k) ASSERT_EQ(bounds[k], expected[k]) << "bound " << k;
            ASSERT_TRUE(bounds.guards_hold());
        });
    }
}

}  // namespace
}  // namespace testing_support
