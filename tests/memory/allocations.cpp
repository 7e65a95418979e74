#include "allocations.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace testing_support {

namespace {

constexpr long kNever = std::numeric_limits<long>::max();
constexpr std::size_t kAnySize = std::numeric_limits<std::size_t>::max();

// Whatever thread allocates.
std::atomic<long> allowed = kNever;  // allocations that still succeed; below 0: as many failed
std::atomic<long> asked = 0;
std::atomic<std::size_t> most_bytes = kAnySize;
std::atomic<bool> failed = false;
std::atomic<bool> filling = false;
std::atomic<long> in_use = 0;

void* take(std::size_t bytes, std::size_t alignment = 0) {
    ++asked;
    if (bytes > most_bytes || (allowed != kNever && allowed.fetch_sub(1) <= 0)) {
        failed = true;
        return nullptr;
    }
    if (bytes == 0) bytes = 1;
    // Its sizes are whole multiples of the alignment.
    void* const block = alignment == 0
                            ? std::malloc(bytes)
                            : std::aligned_alloc(alignment, (bytes + alignment - 1) / alignment * alignment);
    if (!block) return nullptr;
    ++in_use;
    constexpr std::size_t kFilled = 4096;
    if (filling) std::memset(block, 0xa5, std::min(bytes, kFilled));
    return block;
}

void* take_or_throw(std::size_t bytes, std::size_t alignment = 0) {
    void* const block = take(bytes, alignment);
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
    filling = true;
    asked = 0;
}

FailingAllocations::~FailingAllocations() {
    allowed = kNever;
    most_bytes = kAnySize;
    filling = false;
}

bool FailingAllocations::any_failed() {
    return failed;
}

long FailingAllocations::count() {
    return asked;
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

// The same for types that are aligned more than malloc's blocks are.
void* operator new(std::size_t bytes, std::align_val_t alignment) {
    return testing_support::take_or_throw(bytes, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t bytes, std::align_val_t alignment) {
    return testing_support::take_or_throw(bytes, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t bytes, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return testing_support::take(bytes, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t bytes, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return testing_support::take(bytes, static_cast<std::size_t>(alignment));
}
void operator delete(void* block, std::align_val_t) noexcept {
    testing_support::give_back(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    testing_support::give_back(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    testing_support::give_back(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    testing_support::give_back(block);
}
