// Internal: working memory of the image operations.
#ifndef ORVEX_991_BASE_SCRATCH_H
#define ORVEX_991_BASE_SCRATCH_H

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include "util_exception.h"

namespace orvex_cv_991 {

/// Where blocks begin: at a cache line, since a vector that crosses from one to the next costs two accesses. What the
/// address sanitizer watches ends with the last element instead.
#if defined(__SANITIZE_ADDRESS__)
#define ORVEX_BLOCKS_END_EXACTLY
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVEX_BLOCKS_END_EXACTLY
#endif
#endif
#ifdef ORVEX_BLOCKS_END_EXACTLY
constexpr size_t kScratchAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
#else
constexpr size_t kScratchAlignment = 64;
#endif

/// Reports memory that is not to be had as pixels are: CException code 3. Elements made without a value stay
/// indeterminate, since working rows are written before they are read.
template <class T>
struct ScratchAllocator {
    using value_type = T;

    ScratchAllocator() = default;
    template <class U>
    ScratchAllocator(const ScratchAllocator<U>&) {}

    T* allocate(size_t n) {
        void* const block = ::operator new(n * sizeof(T) + kScratchAlignment, std::nothrow);
        if (!block) throw orvex_991::CException(3);
        // The byte in front of the elements tells how far the block's beginning is.
        const size_t front = kScratchAlignment - reinterpret_cast<uintptr_t>(block) % kScratchAlignment;
        unsigned char* const elements = static_cast<unsigned char*>(block) + front;
        elements[-1] = static_cast<unsigned char>(front);
        return static_cast<T*>(static_cast<void*>(elements));
    }
    void deallocate(T* block, size_t) {
        unsigned char* const elements = static_cast<unsigned char*>(static_cast<void*>(block));
        ::operator delete(elements - elements[-1]);
    }

    template <class U>
    void construct(U* element) {
        ::new (static_cast<void*>(element)) U;
    }
    template <class U, class... Arguments>
    void construct(U* element, Arguments&&... arguments) {
        ::new (static_cast<void*>(element)) U(std::forward<Arguments>(arguments)...);
    }

    friend bool operator==(const ScratchAllocator&, const ScratchAllocator&) { return true; }
    friend bool operator!=(const ScratchAllocator&, const ScratchAllocator&) { return false; }
};

template <class T>
using Scratch = std::vector<T, ScratchAllocator<T>>;

}  // namespace orvex_cv_991

#endif  // ORVEX_991_BASE_SCRATCH_H
