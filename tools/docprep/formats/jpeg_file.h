// JPEG through libjpeg-turbo.
#ifndef DOCPREP_JPEG_FILE_H
#define DOCPREP_JPEG_FILE_H

#include <string>

#include "formats/photo.h"

namespace docprep {

/// Decodes a whole JPEG: grey to 1 channel, RGB, YCbCr, CMYK and YCCK to B, G, R. Bytes after the end of the
/// image are ignored: phones append films and depth maps.
///
/// Where the decoder would go on with invented pixels (data cut short, bad codes) the file is refused.
/// Without the two bytes of its end marker all pixels are there, and a warning says so.
/// @param path for messages only
/// @throws Failure
Photo decode_jpeg(const Bytes& bytes, const std::string& path);

/// The most columns and rows that libjpeg writes.
constexpr int kMostJpegSide = 65500;

/// Print stays clean, in a third of a PNG's bytes.
constexpr int kJpegQuality = 85;

/// `image` (1 channel, or 3: B, G, R; up to kMostJpegSide a side) as a baseline JPEG with halved chroma.
/// @param quality  1 .. 100, as libjpeg counts
/// @param dots_per_inch  the resolution that it states; 0: none
/// @throws std::bad_alloc
Bytes encode_jpeg(const Image& image, int quality = kJpegQuality, int dots_per_inch = 0);

}  // namespace docprep

#endif  // DOCPREP_JPEG_FILE_H
