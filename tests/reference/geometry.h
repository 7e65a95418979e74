#ifndef ORVEX_TESTS_REFERENCE_GEOMETRY_H
#define ORVEX_TESTS_REFERENCE_GEOMETRY_H

#include "types.h"

namespace reference {

void resize(Image<Byte> src, Image<Byte>& dst, Size out_size, int interp);
void resize(Image<Byte> src, Image<Byte>& dst, float scale, int interp);
Image<float> getRotationMatrix2D(float center_x, float center_y, float angle, float scale);
void warpAffine(Image<Byte> src, Image<Byte>& dst, const Image<float>& trans_matrix, Size out_size,
                int interp, Image<Byte>* mask);
Point pointAffine(Point pt, const Image<float>& trans_mat, float scale, Point origin);
Rect rectAffine(Rect src, const Image<float>& trans_mat);
Rect checkRectInMat(Size size, Rect rect);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_GEOMETRY_H
