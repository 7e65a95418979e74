// How a camera was held, and turning its picture upright.
#ifndef DOCPREP_ORIENTATION_H
#define DOCPREP_ORIENTATION_H

#include "base/image.h"

namespace docprep {

/// Brings a picture stored with an EXIF orientation upright:
/// 1 as it is, 2 mirrored left-right, 3 turned by 180 degrees, 4 mirrored top-bottom, 5 transposed, 6 turned
/// clockwise by 90 degrees, 7 transposed about the other diagonal, 8 turned counterclockwise by 90 degrees.
void apply_orientation(Image& image, int orientation);

}  // namespace docprep

#endif  // DOCPREP_ORIENTATION_H
