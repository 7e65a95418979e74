// Making the rows of text level and straight.
#ifndef DOCPREP_DESKEW_H
#define DOCPREP_DESKEW_H

#include <cmath>

#include "base/image.h"
#include "pipeline/affine.h"
#include "pipeline/bend.h"

namespace docprep {

/// Skews below this are not worth the softness that a warp brings.
constexpr double kLeastSkew = 0.1;

/// How a photograph becomes a level page.
struct Deskew {
    double degrees = 0;                        ///< turned anticlockwise
    AffineMatrix matrix = {1, 0, 0, 0, 1, 0};  ///< from the photograph to the page, but for the bend
    Bend bend;                                 ///< the page's (x, y) is the matrix' (x, y + bend.shift(x, y))
    int cols = 0;                              ///< the page's extents: nothing is cut off
    int rows = 0;

    /// Whether the page is the photograph, pixel for pixel.
    bool none() const;

    /// Where a point of the page lies on the photograph, and back.
    Place to_photo(const Place& on_page) const;
    Place to_page(const Place& on_photo) const;
};

/// What something covers, upright.
struct Bounds {
    double left = HUGE_VAL, top = HUGE_VAL, right = -HUGE_VAL, bottom = -HUGE_VAL;

    void add(const Place& place);
};

/// What a rectangle of the photograph covers of the page.
Bounds bounds_on_page(const orvex_cv_991::Rect& rect, const Deskew& deskew);

/// The page of a photograph whose rows fall to the right by `skew` degrees. Not turned for a skew below
/// kLeastSkew, and where the page would be too large for a picture, which a long strip can be.
Deskew plan_deskew(const Image& photo, double skew);

/// The page that is straightened, too; it grows at its upper and lower edge by as much as its bend moves
/// anything. As it was where that would be too large, or would fold the page far from the text.
Deskew with_bend(const Deskew& deskew, const Bend& bend);

/// The part of the page that `part` covers.
Deskew cropped(const Deskew& deskew, const orvex_cv_991::Rect& part);

/// A photograph as a level page; what lies beyond it repeats its edge. A bent page is made of tiles, each an affine
/// map that is nowhere further than kTileError pixels from the exact one. Prints as the library does.
/// @param[out] inside  of the page's size: 1 where it shows the photograph, else 0
Image deskewed(const Image& photo, const Deskew& deskew, Image& inside);
constexpr double kTileError = 0.05;

/// The same, but white beyond the photograph.
Image deskewed_on_white(const Image& photo, const Deskew& deskew);

/// A mask of the photograph, which may be a reduced copy of it, as one of the page: 255 on 0.
Image deskewed_mask(const Image& mask, const orvex_cv_991::Size& photo, const Deskew& deskew);

}  // namespace docprep

#endif  // DOCPREP_DESKEW_H
