#include "base/heap.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#endif

namespace docprep {

#ifdef __GLIBC__

void prepare_heap() {
    constexpr int kMiB = 1 << 20;
    constexpr int kReserved = 128 * kMiB;
    constexpr uintptr_t kHugePage = 2 * kMiB;
    mallopt(M_MMAP_THRESHOLD, 32 * kMiB);  // the highest that malloc takes: larger blocks go back at once
    mallopt(M_TRIM_THRESHOLD, 2 * kReserved);
    mallopt(M_TOP_PAD, kReserved);
    const auto begin = (reinterpret_cast<uintptr_t>(sbrk(0)) + kHugePage - 1) / kHugePage * kHugePage;
    void* volatile const block =
        std::malloc(kMiB);  // more than is left: the heap grows now; nothing is touched
    std::free(block);
    const auto end = reinterpret_cast<uintptr_t>(sbrk(0));
    if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    mallopt(M_TOP_PAD, kMiB);
}

#else

void prepare_heap() {}

#endif

}  // namespace docprep
