// PBM, PGM, PPM and PAM: pictures as plain samples behind a short header.
#ifndef DOCPREP_PNM_FILE_H
#define DOCPREP_PNM_FILE_H

#include <string>

#include "formats/photo.h"

namespace docprep {

/// Decodes the first picture of a file of any kind, P1 to P7: 1 or 2 samples a pixel to 1 channel, 3 or
/// 4 to B, G, R; samples are scaled from their stated maximum to 8 bits, transparency lies on white.
/// What follows is ignored.
/// @param path for messages only
/// @throws Failure
Photo decode_pnm(const Bytes& bytes, const std::string& path);

/// `image` (1 channel, or 3: B, G, R) as PGM (P5) or PPM (P6) of 8 bits a sample.
/// @throws std::bad_alloc
Bytes encode_pnm(const Image& image);

}  // namespace docprep

#endif  // DOCPREP_PNM_FILE_H
