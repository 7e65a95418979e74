#ifndef ORVEX_TESTS_REFERENCE_MORPHOLOGY_H
#define ORVEX_TESTS_REFERENCE_MORPHOLOGY_H

#include "types.h"

namespace reference {

void dilateBinary(Image<Byte> src, Image<Byte>& dst, Size size);
void erodeBinary(Image<Byte> src, Image<Byte>& dst, Size size);
void openBinary(Image<Byte> src, Image<Byte>& dst, Size size);
void closeBinary(Image<Byte> src, Image<Byte>& dst, Size size);
void morphologyBinary(Image<Byte> src, Image<Byte>& dst, Size size, int type);
Rect dilateRect(Rect src, Size size);
void dilateGray(Image<Byte> src, Image<Byte>& dst, Size size);
void erodeGray(Image<Byte> src, Image<Byte>& dst, Size size);
void morphGradient(Image<Byte> src, Image<Byte>& dst, Size size);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_MORPHOLOGY_H
