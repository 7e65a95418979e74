// Internal: global saliency of the grey levels of a histogram.
#ifndef ORVEX_991_ALGORITHMS_SALIENCY_H
#define ORVEX_991_ALGORITHMS_SALIENCY_H

#include <cstdint>

namespace orvex_cv_991 {

/// Mean absolute distance of every grey level to the counted ones, spread over 0 .. 255; 128 throughout when
/// all levels are equally far, as with nothing counted.
/// @param counts 256 counters
/// @param n      their sum
/// @param table  256 bytes, written
void level_saliency_of(const uint32_t* counts, int64_t n, unsigned char* table);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_SALIENCY_H
