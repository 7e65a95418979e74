// Internal: rectangular maximum and minimum filters.
#ifndef ORVEX_991_ALGORITHMS_GRAY_MORPHOLOGY_H
#define ORVEX_991_ALGORITHMS_GRAY_MORPHOLOGY_H

#include "cv_geometry.h"
#include "cv_mat.h"
#include "kernels/kernels.h"

namespace orvex_cv_991 {

/// out(r, c) is the largest value of the window around (r, c), which covers the columns
/// c - width / 2 .. c + width - 1 - width / 2 and rows likewise; positions outside the image count as 0.
///
/// O(log width + log height) operations on whole rows a row; memory is about two rows a row of the window.
/// @param src   1 channel, its pixels known to be readable
/// @param size  1 .. cols by 1 .. rows
/// @param out   rows * cols bytes, wholly written, not aliasing src
void dilate_gray(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out);

/// As dilate_gray with the smallest value; positions outside count as 255.
void erode_gray(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out);

/// dilate_gray less erode_gray. `out` is not written before all memory is had.
void gray_gradient(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_GRAY_MORPHOLOGY_H
