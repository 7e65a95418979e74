// How a camera was held: the note about it in a file.
#ifndef DOCPREP_EXIF_H
#define DOCPREP_EXIF_H

#include <cstddef>

namespace docprep {

/// The orientation in an EXIF block (with its "Exif" signature), as in base/orientation.h; 0 without a valid one.
int exif_orientation(const unsigned char* block, size_t n);

/// The same of a block that begins with its TIFF header, as PNG and WebP have it.
int tiff_orientation(const unsigned char* block, size_t n);

}  // namespace docprep

#endif  // DOCPREP_EXIF_H
