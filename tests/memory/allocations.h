// Allocation under the tests' control: every form of operator new of the program is counted and can
// be made to fail.
#ifndef ORVEX_TESTS_MEMORY_ALLOCATIONS_H
#define ORVEX_TESTS_MEMORY_ALLOCATIONS_H

#include <cstddef>
#include <cstdint>

namespace testing_support {

/// While it lives, the k-th allocation (from 1) and all that follow fail, as does every one of
/// more than `most` bytes. Blocks that are allocated begin with bytes that are not 0.
class FailingAllocations {
 public:
    /// @param k LONG_MAX: none fails for its place
    explicit FailingAllocations(long k, std::size_t most = SIZE_MAX);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// Whether an allocation has failed since it began.
    static bool any_failed();
    /// Allocations since it began, the failed ones included.
    static long count();
};

/// Blocks that are allocated and not yet released.
long blocks_in_use();

}  // namespace testing_support

#endif  // ORVEX_TESTS_MEMORY_ALLOCATIONS_H
