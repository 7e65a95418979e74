#include "allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace testing_support {

namespace {

constexpr long kNever = std::numeric_limits<long>::max();
constexpr std::size_t kAnySize = std::numeric_limits<std::size_t>::max();

long allowed = kNever;  // allocations that still succeed
std::size_t most_bytes = kAnySize;
bool failed = false;
long in_use = 0;

void* take(std::size_t bytes) {
    if (allowed <= 0 || bytes > most_bytes) {
        failed = true;
        return nullptr;
    }
    if (allowed != kNever) --allowed;
    void* const block = std::malloc(bytes == 0 ? 1 : bytes);
    if (block) ++in_use;
    return block;
}

void* take_or_throw(std::size_t bytes) {
    void* const block = take(bytes);
    if (!block) throw std::bad_alloc();
    return block;
}

void give_back(void* block) {
    if (block) --in_use;
    std::free(block);
}

}  // namespace

FailingAllocations::FailingAllocations(long k, std::size_t most) {
    allowed = k == kNever ? kNever : k - 1;
    most_bytes = most;
    failed = false;
}

FailingAllocations::~FailingAllocations() {
    allowed = kNever;
    most_bytes = kAnySize;
}

bool FailingAllocations::any_failed() {
    return failed;
}

long blocks_in_use() {
    return in_use;
}

}  // namespace testing_support

void* operator new(std::size_t bytes) {
    return testing_support::take_or_throw(bytes);
}
void* operator new[](std::size_t bytes) {
    return testing_support::take_or_throw(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return testing_support::take(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return testing_support::take(bytes);
}
void operator delete(void* block) noexcept {
    testing_support::give_back(block);
}
void operator delete[](void* block) noexcept {
    testing_support::give_back(block);
}
void operator delete(void* block, std::size_t) noexcept {
    testing_support::give_back(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    testing_support::give_back(block);
}
