#ifndef ORVEX_TESTS_REFERENCE_TURNS_H
#define ORVEX_TESTS_REFERENCE_TURNS_H

#include "types.h"

namespace reference {

/// @param in_place whether source and destination are one object, which an empty one must know of
void rot90ClockWise_FlipLR(Image<Byte> src, Image<Byte>& dst, int n, int f, bool in_place);
void rot90AntiClockWise(const Image<Byte>& src, Image<Byte>& dst, int n, bool in_place);
Point rot90ClockWise(Point pt, Size size, int n);
Rect rot90ClockWise(Rect src, Size img_size, int n);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_TURNS_H
