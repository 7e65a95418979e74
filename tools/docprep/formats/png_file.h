// PNG: read through libpng, deflated through libdeflate.
#ifndef DOCPREP_PNG_FILE_H
#define DOCPREP_PNG_FILE_H

#include <string>

#include "formats/photo.h"

namespace docprep {

/// Decodes a whole PNG of any kind: grey to 1 channel, everything else to B, G, R; 16 bits are rounded to 8,
/// transparency lies on white. Sample values are taken as they are: gamma and colour profiles do not count,
/// so that one picture has one result.
/// @param path for messages only
/// @throws Failure, also for a missing end
Photo decode_png(const Bytes& bytes, const std::string& path);

/// `image` (1 channel, or 3: B, G, R) as a PNG of 8 bits a sample; of 1 bit where an image of 1 channel
/// has no pixel but 0 and 255, which is what decode_png gives back.
/// @param dots_per_inch  the resolution that it states; 0: none
/// @throws std::bad_alloc
Bytes encode_png(const Image& image, int dots_per_inch = 0);

}  // namespace docprep

#endif  // DOCPREP_PNG_FILE_H
