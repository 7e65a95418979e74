// WebP through libwebp.
#ifndef DOCPREP_WEBP_FILE_H
#define DOCPREP_WEBP_FILE_H

#include <string>

#include "formats/photo.h"

namespace docprep {

/// The most columns and rows that a WebP can have.
constexpr int kMostWebpSide = 16383;

/// Decodes a WebP, lossy or lossless, to B, G, R; transparency lies on white.
/// @param path for messages only
/// @throws Failure, also for films; std::bad_alloc
Photo decode_webp(const Bytes& bytes, const std::string& path);

/// `image` (1 channel, or 3: B, G, R; up to kMostWebpSide a side) as a WebP without loss. It states no
/// resolution, for which the format has no place.
/// @throws std::bad_alloc
Bytes encode_webp(const Image& image);

}  // namespace docprep

#endif  // DOCPREP_WEBP_FILE_H
