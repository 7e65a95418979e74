// Buffers for kernel tests: any offset, guard bytes on both sides.
#ifndef ORVEX_TESTS_SUPPORT_KERNEL_CASE_H
#define ORVEX_TESTS_SUPPORT_KERNEL_CASE_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <vector>

#include "images.h"
#include "kernels/kernels.h"

namespace testing_support {

/// The instruction sets that this build and this processor have.
inline std::vector<orvex_cv_991::Isa> every_isa() {
    using orvex_cv_991::Isa;
    if (orvex_cv_991::fastest_isa() == Isa::kBaseline) return {Isa::kBaseline};
    return {Isa::kBaseline, Isa::kAvx2};
}

/// What an input holds: random elements, or one end of their range throughout.
enum class Values { kRandom, kLowest, kHighest };

/// Elements to read: on the heap and ending where the block ends, so that a sanitizer sees a stray read.
template <class T>
class Input {
 public:
    Input(Random& random, size_t n, size_t offset, Values values = Values::kRandom)
        : offset_(offset), block_(offset + n) {
        for (T& element : block_)
            element = values == Values::kRandom   ? static_cast<T>(random.bits())
                      : values == Values::kLowest ? std::numeric_limits<T>::lowest()
                                                  : std::numeric_limits<T>::max();
        block_.shrink_to_fit();
    }
    T* data() { return block_.data() + offset_; }
    T& operator[](size_t i) { return data()[i]; }

 private:
    size_t offset_;
    std::vector<T> block_;
};

/// Rows of 16-bit elements, each in a block of its own, none above `most`.
class SumRows {
 public:
    SumRows(Random& random, size_t count, size_t n, size_t offset, Values values, uint16_t most) {
        for (size_t k = 0; k < count; ++k) {
            rows_.emplace_back(random, n, (offset + k) % 8, values);
            for (size_t i = 0; i < n; ++i)
                rows_[k][i] =
                    static_cast<uint16_t>(values == Values::kHighest ? most : rows_[k][i] % (most + 1));
        }
        for (Input<uint16_t>& row : rows_) pointers_.push_back(row.data());
    }
    const uint16_t* const* pointers() const { return pointers_.data(); }
    int count() const { return static_cast<int>(pointers_.size()); }
    int32_t sum(size_t i) const {
        int32_t sum = 0;
        for (const uint16_t* const row : pointers_) sum += row[i];
        return sum;
    }

 private:
    std::vector<Input<uint16_t>> rows_;
    std::vector<const uint16_t*> pointers_;
};

/// Room to write, between guards that a stray write would change.
template <class T>
class Output {
 public:
    Output(Random& random, size_t n, size_t offset) : offset_(offset), n_(n), block_(offset + n + kGuard) {
        for (T& element : block_) element = static_cast<T>(random.bits());
        kept_ = block_;
    }
    T* data() { return block_.data() + offset_; }
    const T& operator[](size_t i) const { return block_[offset_ + i]; }
    bool guards_hold() const {
        for (size_t i = 0; i < block_.size(); ++i)
            if ((i < offset_ || i >= offset_ + n_) && block_[i] != kept_[i]) return false;
        return true;
    }

 private:
    static constexpr size_t kGuard = 64;
    size_t offset_, n_;
    std::vector<T> block_, kept_;
};

/// The widths 0 .. 67 and some longer ones.
inline std::vector<size_t> every_width() {
    std::vector<size_t> widths = {127, 128, 129, 256, 515, 1031};
    for (size_t n = 0; n < 68; ++n) widths.push_back(n);
    return widths;
}

/// Calls run(isa, n, offset) for every instruction set, each of the widths, and odd offsets.
template <class Run>
void for_every_case_of(const std::vector<size_t>& widths, Run run) {
    for (const orvex_cv_991::Isa isa : every_isa()) {
        for (const size_t n : widths) {
            for (const size_t offset : {0, 1, 7}) {
                run(isa, n, offset);
                if (testing::Test::HasFatalFailure()) {
                    ADD_FAILURE() << "instruction set " << static_cast<int>(isa) << ", width " << n
                                  << ", offset " << offset;
                    return;
                }
            }
        }
    }
}

template <class Run>
void for_every_case(Run run) {
    for_every_case_of(every_width(), run);
}

constexpr std::initializer_list<Values> kEveryValues = {Values::kRandom, Values::kLowest, Values::kHighest};

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_KERNEL_CASE_H
