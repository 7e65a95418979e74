// Internal: histogram equalisation.
#ifndef ORVEX_991_ALGORITHMS_EQUALIZATION_H
#define ORVEX_991_ALGORITHMS_EQUALIZATION_H

#include <cstdint>

namespace orvex_cv_991 {

/// The level that each grey level goes to: its cumulative share of 0 .. 255, rounded.
/// @param counts 256 counters
/// @param n      their sum, above 0
/// @param table  256 bytes, written
void equalizing_table(const uint32_t* counts, int n, unsigned char* table);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_EQUALIZATION_H
