// TIFF through libtiff.
#ifndef DOCPREP_TIFF_FILE_H
#define DOCPREP_TIFF_FILE_H

#include <string>

#include "formats/photo.h"

namespace docprep {

/// Decodes the first page of a TIFF: grey and bilevel to 1 channel; RGB, palettes, CMYK and what JPEG
/// holds to B, G, R; 16 bits are rounded to 8, transparency lies on white. Further pages are warned of.
///
/// Where the decoder would go on with invented pixels (damaged strips, fax lines) the file is refused.
/// @param path for messages only
/// @throws Failure, also for what only raw camera pictures and scientific files have
Photo decode_tiff(const Bytes& bytes, const std::string& path);

/// `image` (1 channel, or 3: B, G, R) as a TIFF of 8 bits a sample, deflated without loss.
/// @param dots_per_inch  the resolution that it states; 0: none
/// @throws std::bad_alloc
Bytes encode_tiff(const Image& image, int dots_per_inch = 0);

}  // namespace docprep

#endif  // DOCPREP_TIFF_FILE_H
