// Internal: rectangular windows over binary images in packed bits.
#ifndef ORVEX_991_ALGORITHMS_BIT_MORPHOLOGY_H
#define ORVEX_991_ALGORITHMS_BIT_MORPHOLOGY_H

#include "cv_geometry.h"
#include "cv_mat.h"
#include "kernels/kernels.h"

namespace orvex_cv_991 {

/// out(r, c) is 255 where some pixel of the window around (r, c) is not 0, else 0. The window covers
/// the columns c - width / 2 .. c + width - 1 - width / 2 and rows likewise; positions outside the
/// image count as 0.
///
/// Dilation takes O(log width + log height) word operations for 64 pixels; memory is a few packed rows a
/// row of the window.
/// @param src   the first rows * cols bytes are read as one channel
/// @param size  1 .. cols by 1 .. rows
/// @param out   rows * cols bytes, wholly written, not aliasing src
void dilate_binary(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out);

/// As dilate_binary, but 0 where some pixel of the window is below 128, else 255; outside counts as 255.
void erode_binary(const Mat<unsigned char>& src, const Size& size, Isa isa, unsigned char* out);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_BIT_MORPHOLOGY_H
