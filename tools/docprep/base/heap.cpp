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
    char* const end_before = static_cast<char*>(sbrk(0));
    // More than is left: the heap grows now. Nothing is touched.
    void* volatile const block = std::malloc(kMiB);
    std::free(block);
    char* const end = static_cast<char*>(sbrk(0));
    char* const begin =
        end_before + (kHugePage - reinterpret_cast<uintptr_t>(end_before) % kHugePage) % kHugePage;
    if (end > begin) madvise(begin, static_cast<size_t>(end - begin), MADV_HUGEPAGE);
    mallopt(M_TOP_PAD, kMiB);
}

#else

void prepare_heap() {}

#endif

}  // namespace docprep
