#ifndef ORVEX_TESTS_REFERENCE_STATISTICS_H
#define ORVEX_TESTS_REFERENCE_STATISTICS_H

#include "types.h"

namespace reference {

void equalizeHist(Image<Byte> src, Image<Byte>& dst);
void hist(const Image<Byte>& src, List<float>& h);
void meanStdDev(const Image<Byte>& src, float& mean, float& stddev);
Byte minVal(const Image<Byte>& src);
Byte maxVal(const Image<Byte>& src);
int countNonZero(const Image<Byte>& src);
float countNonZeroRate(const Image<Byte>& src);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_STATISTICS_H
