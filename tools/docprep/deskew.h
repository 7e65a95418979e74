// Making the rows of text level.
#ifndef DOCPREP_DESKEW_H
#define DOCPREP_DESKEW_H

#include "affine.h"

namespace docprep {

/// Skews below this are not worth the softness that a warp brings.
constexpr double kLeastSkew = 0.1;

/// How a photograph becomes a level page.
struct Deskew {
    double degrees = 0;                        ///< turned anticlockwise; 0: the page is the photograph
    AffineMatrix matrix = {1, 0, 0, 0, 1, 0};  ///< from the photograph to the page
    int cols = 0;                              ///< the page's extents: nothing is cut off
    int rows = 0;
};

/// The page of a photograph whose rows fall to the right by `skew` degrees. Not turned for a skew below
/// kLeastSkew, and where the page would be too large for a picture, which a long strip can be.
Deskew plan_deskew(const Image& photo, double skew);

/// A photograph as a level page; what lies beyond it repeats its edge. Prints as the library does.
/// @param[out] inside  of the page's size: 1 where it shows the photograph, else 0
Image deskewed(const Image& photo, const Deskew& deskew, Image& inside);

/// The same, but white beyond the photograph.
Image deskewed_on_white(const Image& photo, const Deskew& deskew);

}  // namespace docprep

#endif  // DOCPREP_DESKEW_H
