// JPEG through libjpeg-turbo.
#ifndef DOCPREP_JPEG_FILE_H
#define DOCPREP_JPEG_FILE_H

#include <string>

#include "photo.h"

namespace docprep {

/// Decodes a whole JPEG: grey to 1 channel, RGB, YCbCr, CMYK and YCCK to B, G, R. Bytes after the end of the
/// image are ignored: phones append films and depth maps.
///
/// Where the decoder would go on with invented pixels (data cut short, bad codes) the file is refused.
/// @param path for messages only
/// @throws Failure
Photo decode_jpeg(const Bytes& bytes, const std::string& path);

}  // namespace docprep

#endif  // DOCPREP_JPEG_FILE_H
