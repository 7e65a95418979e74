#include "base/key_sort.h"

#include <algorithm>
#include <cstddef>

namespace orvex_cv_991 {

// Digit by digit from the lowest, each time stably, only over the bits in which keys differ.
void sort_keys(std::vector<uint64_t>& keys, int first_bit) {
    constexpr size_t kFew = 200;
    if (keys.size() < kFew) {
        std::sort(keys.begin(), keys.end());
        return;
    }
    uint64_t differing = 0;
    for (const uint64_t key : keys) differing |= key ^ keys[0];
    constexpr int kDigitBits = 11;
    constexpr uint64_t kDigits = uint64_t{1} << kDigitBits;
    std::vector<uint64_t> other(keys.size());
    std::vector<uint32_t> places(kDigits);
    int shift = first_bit;
    while (shift < 64 && differing >> shift) {
        if ((differing >> shift & 1) == 0) {
            ++shift;
            continue;
        }
        std::fill(places.begin(), places.end(), 0u);
        for (const uint64_t key : keys) ++places[key >> shift & (kDigits - 1)];
        uint32_t sum = 0;
        for (uint32_t& place : places) {
            const uint32_t count = place;
            place = sum;
            sum += count;
        }
        for (const uint64_t key : keys) other[places[key >> shift & (kDigits - 1)]++] = key;
        keys.swap(other);
        shift += kDigitBits;
    }
}

}  // namespace orvex_cv_991
