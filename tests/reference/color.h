#ifndef ORVEX_TESTS_REFERENCE_COLOR_H
#define ORVEX_TESTS_REFERENCE_COLOR_H

#include "types.h"

namespace reference {

// A source by value: what an operation gives in place is what a separate destination would have received.
void bgr2gray(Image<Byte> src, Image<Byte>& dst);
void yuv2bgr(const std::vector<Byte>& yuv, int rows, int cols, Image<Byte>& dst);
void bgr2hsv(Image<Byte> src, Image<Byte>& dst);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_COLOR_H
