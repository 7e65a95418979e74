#include "base/key_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>

namespace orvex_cv_991 {
namespace {

TEST(KeySort, keys_of_any_number_come_out_ascending) {
    std::mt19937_64 random(71);
    for (const size_t n : {0, 1, 2, 199, 200, 201, 5000})
        for (const uint64_t mask : {~uint64_t{0}, uint64_t{0}, uint64_t{1} << 63, uint64_t{0xff} << 20}) {
            std::vector<uint64_t> keys(n);
            for (uint64_t& key : keys) key = random() & mask;
            std::vector<uint64_t> expected(keys);
            std::sort(expected.begin(), expected.end());
            sort_keys(keys, 0);
            ASSERT_EQ(keys, expected) << n << " keys, mask " << mask;
        }
}

TEST(KeySort, bits_that_ascend_already_keep_their_order) {
    std::mt19937_64 random(72);
    for (const size_t n : {3, 150, 1000, 70000}) {
        std::vector<uint64_t> keys(n);
        for (size_t k = 0; k < n; ++k) keys[k] = (random() % 50) << 40 | k;
        std::vector<uint64_t> expected(keys);
        std::sort(expected.begin(), expected.end());
        sort_keys(keys, 32);
        ASSERT_EQ(keys, expected) << n << " keys";
    }
}

TEST(KeySort, signed_numbers_are_ordered_as_unsigned_bits) {
    int before = INT_MIN;
    for (const int value : {INT_MIN + 1, -65536, -1, 0, 1, 65536, INT_MAX}) {
        EXPECT_LT(ordered_bits(before), ordered_bits(value));
        EXPECT_EQ(from_ordered_bits(ordered_bits(value)), value);
        before = value;
    }
}

}  // namespace
}  // namespace orvex_cv_991
