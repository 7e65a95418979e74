// Internal: working memory of the image operations.
#ifndef ORVEX_991_BASE_SCRATCH_H
#define ORVEX_991_BASE_SCRATCH_H

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#include "util_exception.h"

namespace orvex_cv_991 {

/// Reports memory that is not to be had as pixels are: CException code 3. Elements made without a value stay
/// indeterminate, since working rows are written before they are read.
template <class T>
struct ScratchAllocator {
    using value_type = T;

    ScratchAllocator() = default;
    template <class U>
    ScratchAllocator(const ScratchAllocator<U>&) {}

    T* allocate(size_t n) {
        void* const block = ::operator new(n * sizeof(T), std::nothrow);
        if (!block) throw orvex_991::CException(3);
        return static_cast<T*>(block);
    }
    void deallocate(T* block, size_t) { ::operator delete(block); }

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
