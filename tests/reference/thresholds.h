#ifndef ORVEX_TESTS_REFERENCE_THRESHOLDS_H
#define ORVEX_TESTS_REFERENCE_THRESHOLDS_H

#include "types.h"

namespace reference {

float pow(float base, int exponent);
int otsu(const Image<Byte>& src);
int otsu(const Image<Byte>& src, const Image<Byte>& mask);
void thresholdSeg(Image<Byte> src, Image<Byte>& dst, int threshold);
int threshold(Image<Byte> src, Image<Byte>& dst, int low_th, int high_th, int type, const Image<Byte>& mask);

void adaptiveThreshold(Image<Byte> src, Image<Byte>& dst, int block_size, double std_ratio, bool inverse);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_THRESHOLDS_H
