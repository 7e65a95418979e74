// How a camera was held: reading the note about it and turning the picture upright.
#ifndef DOCPREP_ORIENTATION_H
#define DOCPREP_ORIENTATION_H

#include <cstddef>

#include "base/image.h"

namespace docprep {

/// The orientation 1 .. 8 in an EXIF block (with its "Exif" signature), 0 when it has no valid one.
int exif_orientation(const unsigned char* block, size_t n);

/// The same of a block that begins with its TIFF header, as PNG and WebP have it.
int tiff_orientation(const unsigned char* block, size_t n);

/// Brings a picture stored with an EXIF orientation upright:
/// 1 as it is, 2 mirrored left-right, 3 turned by 180 degrees, 4 mirrored top-bottom, 5 transposed, 6 turned
/// clockwise by 90 degrees, 7 transposed about the other diagonal, 8 turned counterclockwise by 90 degrees.
void apply_orientation(Image& image, int orientation);

}  // namespace docprep

#endif  // DOCPREP_ORIENTATION_H
