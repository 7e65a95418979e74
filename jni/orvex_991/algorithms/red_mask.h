// Internal: which pixels of a photograph are red.
#ifndef ORVEX_991_ALGORITHMS_RED_MASK_H
#define ORVEX_991_ALGORITHMS_RED_MASK_H

#include "base/scratch.h"
#include "cv_mat.h"

namespace orvex_cv_991 {

/// Redness of every pixel of a BGR image: (R - B) * (R - G) where red is the strongest, else 0.
struct Redness {
    Scratch<float> scores;    // at most 255^2, so single precision holds them exactly
    float smallest, largest;  // where red is the strongest; smallest is above largest when it is nowhere

    /// Whether anything is red at all: some score of 1 or more, and not the same one everywhere.
    bool is_somewhere() const;
};

/// @param bgr  3 channels, its pixels known to be readable
Redness redness_of(const Mat<unsigned char>& bgr);

/// 255 where a pixel is red by its share of the redness or by its hue, saturation and value, else 0.
/// @param redness  of the image, somewhere red
/// @param hsv      of the image
/// @param mask     1 channel, of the image's extents, wholly written
void mark_red(const Redness& redness, const Mat<unsigned char>& hsv, Mat<unsigned char>& mask);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_RED_MASK_H
