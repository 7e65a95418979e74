// Internal: the sharpness score of a small grey image.
#ifndef ORVEX_991_ALGORITHMS_SHARPNESS_H
#define ORVEX_991_ALGORITHMS_SHARPNESS_H

#include "cv_mat.h"

namespace orvex_cv_991 {

/// Mean response of a second-difference filter over the pixels that are selected and have contrast.
/// @param equalised  rows x cols x 1, at least 3 x 3
/// @param contrast   same shape, not 0 where a pixel has contrast
/// @param mask       rows * cols bytes, sampled as described at the definition
float sharpness_of(const Mat<unsigned char>& equalised, const Mat<unsigned char>& contrast,
                   const unsigned char* mask);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_SHARPNESS_H
