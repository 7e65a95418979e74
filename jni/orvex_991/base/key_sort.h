// Internal: sorting of 64-bit keys.
#ifndef ORVEX_991_BASE_KEY_SORT_H
#define ORVEX_991_BASE_KEY_SORT_H

#include <cstdint>
#include <vector>

namespace orvex_cv_991 {

/// Order of a signed number as that of an unsigned one, and the way back.
inline uint32_t ordered_bits(int value) {
    return static_cast<uint32_t>(value) ^ 0x80000000u;
}
inline int from_ordered_bits(uint32_t bits) {
    return static_cast<int>(bits ^ 0x80000000u);
}

/// Sorts ascending. The bits below `first_bit` must already ascend from key to key, as an element's index
/// does; with 0 there are none. O(n), with a second list as long, for more than some hundred keys.
void sort_keys(std::vector<uint64_t>& keys, int first_bit);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_BASE_KEY_SORT_H
