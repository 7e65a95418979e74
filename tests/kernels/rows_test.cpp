// Kernels that widen whole rows or combine them element by element.
#include <algorithm>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

template <class T>
using Combine = void (*)(Isa, const T*, const T*, T*, ptrdiff_t);

// Apart, over the first input, and with the second input some elements ahead of the output in one row, which
// is how windows are doubled.
template <class T, class Expected>
void expect_combined(Random& random, Combine<T> combine, Expected expected) {
    for (const Values values_a : kEveryValues) {
        for (const Values values_b : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                Input<T> a(random, n, offset, values_a), b(random, n, offset / 2, values_b);
                Output<T> out(random, n, offset);
                combine(isa, a.data(), b.data(), out.data(), static_cast<ptrdiff_t>(n));
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], expected(a[i], b[i])) << "element " << i;
                ASSERT_TRUE(out.guards_hold());
                combine(isa, a.data(), b.data(), a.data(), static_cast<ptrdiff_t>(n));
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(a[i], out[i]) << "in place, element " << i;
            });
        }
    }
    for (const size_t ahead : {1, 2, 3, 4, 8, 15, 16, 31, 33, 64}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<T> row(random, n + ahead, offset);
            const std::vector<T> before(row.data(), row.data() + n + ahead);
            combine(isa, row.data(), row.data() + ahead, row.data(), static_cast<ptrdiff_t>(n));
            for (size_t i = 0; i < n; ++i)
                ASSERT_EQ(row[i], expected(before[i], before[i + ahead])) << ahead << " ahead, element " << i;
            for (size_t i = n; i < n + ahead; ++i) ASSERT_EQ(row[i], before[i]) << "behind the output";
        });
    }
}

TEST(Kernels, max_bytes) {
    Random random(71);
    expect_combined<uint8_t>(random, kernels::max_bytes, [](uint8_t a, uint8_t b) { return std::max(a, b); });
}

TEST(Kernels, min_bytes) {
    Random random(72);
    expect_combined<uint8_t>(random, kernels::min_bytes, [](uint8_t a, uint8_t b) { return std::min(a, b); });
}

TEST(Kernels, subtract_bytes) {
    Random random(73);
    expect_combined<uint8_t>(random, kernels::subtract_bytes,
                             [](uint8_t a, uint8_t b) { return (a + 256 - b) % 256; });
}

TEST(Kernels, add_words32) {
    Random random(74);
    expect_combined<uint32_t>(random, kernels::add_words32, [](uint32_t a, uint32_t b) {
        return static_cast<uint32_t>((uint64_t{a} + b) % (uint64_t{1} << 32));
    });
}

TEST(Kernels, add_words16) {
    Random random(75);
    expect_combined<uint16_t>(random, kernels::add_words16,
                              [](uint16_t a, uint16_t b) { return (a + b) % 65536; });
}

TEST(Kernels, widen_bytes16) {
    Random random(101);
    for (const Values values : kEveryValues) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> bytes(random, n, offset, values);
            Output<uint16_t> out(random, n, offset);
            kernels::widen_bytes16(isa, bytes.data(), out.data(), static_cast<ptrdiff_t>(n));
            for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], bytes[i]);
            ASSERT_TRUE(out.guards_hold());
        });
    }
}

TEST(Kernels, sum_rows16) {
    Random random(102);
    for (const size_t count : {1, 2, 3, 8, 255}) {
        for (const Values values : kEveryValues) {
            for_every_case_of(count > 8 ? std::vector<size_t>{1, 7, 8, 33} : every_width(),
                              [&](Isa isa, size_t n, size_t offset) {
                                  const SumRows rows(random, count, n, offset, values,
                                                     static_cast<uint16_t>(65535 / count));
                                  Output<uint16_t> out(random, n, offset);
                                  kernels::sum_rows16(isa, rows.pointers(), rows.count(), out.data(),
                                                      static_cast<ptrdiff_t>(n));
                                  for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], rows.sum(i));
                                  ASSERT_TRUE(out.guards_hold());
                              });
        }
    }
}

TEST(Kernels, sum_rows32) {
    Random random(103);
    for (const size_t count : {1, 2, 3, 8}) {
        for (const Values values : kEveryValues) {
            for_every_case([&](Isa isa, size_t n, size_t offset) {
                const SumRows rows(random, count, n, offset, values, 65535);
                Output<uint32_t> out(random, n, offset);
                kernels::sum_rows32(isa, rows.pointers(), rows.count(), out.data(),
                                    static_cast<ptrdiff_t>(n));
                for (size_t i = 0; i < n; ++i) ASSERT_EQ(out[i], static_cast<uint32_t>(rows.sum(i)));
                ASSERT_TRUE(out.guards_hold());
            });
        }
    }
}

}  // namespace
}  // namespace testing_support
