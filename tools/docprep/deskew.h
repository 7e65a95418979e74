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
Image deskewed(const Image& photo, const Deskew& deskew);

/// The same, and where the page shows the photograph: there `inside` is 1, else 0. It gets the page's shape.
Image deskewed(const Image& photo, const Deskew& deskew, Image& inside);

}  // namespace docprep

#endif  // DOCPREP_DESKEW_H
