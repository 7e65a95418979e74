// Drawing over a photograph.
#ifndef DOCPREP_DRAWING_H
#define DOCPREP_DRAWING_H

#include "base/image.h"
#include "cv_geometry.h"

namespace docprep {

using Points = orvex_991::vector<orvex_cv_991::Point>;

/// Fills what a convex outline with corners inside the picture encloses, the outline included.
void fill_convex(Image& mask, const Points& outline, unsigned char value);

/// A colour as B, G, R.
struct Colour {
    unsigned char bgr[3];
};

/// The picture (1 or 3 channels) with 3.
Image in_colour(Image picture);

/// How thick lines are drawn: thicker on larger pictures, so that they are seen when the whole is.
int line_thickness(const Image& picture);

}  // namespace docprep

#endif  // DOCPREP_DRAWING_H
