// Internal: Otsu's criterion on a histogram.
#ifndef ORVEX_991_ALGORITHMS_OTSU_H
#define ORVEX_991_ALGORITHMS_OTSU_H

#include <cstdint>

namespace orvex_cv_991 {

/// The grey level after which splitting the histogram gives the largest between-class variance; the lowest of
/// several, and 0 when no split has a positive variance or nothing was counted.
/// @param counts 256 counters
/// @param n their sum
int otsu_threshold(const uint32_t* counts, int n);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_OTSU_H
