// Drawing over a photograph.
#ifndef DOCPREP_DRAWING_H
#define DOCPREP_DRAWING_H

#include "photo.h"

namespace docprep {

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
