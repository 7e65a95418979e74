// Small copies of a picture, for what does not need its resolution.
#ifndef DOCPREP_REDUCED_H
#define DOCPREP_REDUCED_H

#include "base/image.h"
#include "cv_geometry.h"

namespace docprep {

/// A picture in another scale, at least 1 x 1. Every pixel of the original counts: the picture is halved,
/// which takes the mean of four, until less than a halving is left. Prints as the library does.
/// @param scale  above 0; 1 and above leave the picture as it is
Image reduced(const Image& picture, double scale);

/// A part that lies in the picture.
Image cut_out(const Image& picture, const orvex_cv_991::Rect& part);

/// The mean over a square of `extent`, odd, round each pixel; at the edges over the part of it that is in the picture.
Image smoothed(const Image& gray, int extent);

/// The odd number next to a length that is at least 1 and fits into the picture, which the library's windows must.
int odd_window(double length, const Image& picture);

}  // namespace docprep

#endif  // DOCPREP_REDUCED_H
