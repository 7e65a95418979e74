#ifndef ORVEX_TESTS_REFERENCE_DETECTORS_H
#define ORVEX_TESTS_REFERENCE_DETECTORS_H

#include "types.h"

namespace reference {

float getSharpness(const Image<Byte>& src);
float getSharpness(const Image<Byte>& src, const Image<Byte>& mask);
void saliencyDetect(Image<Byte> src, Image<Byte>& dst, const Image<Byte>& mask, List<Byte>& level_saliency);
void redColorDetect(Image<Byte> src, Image<Byte>& dst, bool relaxed);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_DETECTORS_H
