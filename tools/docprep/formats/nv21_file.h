// Raw camera frames.
#ifndef DOCPREP_NV21_FILE_H
#define DOCPREP_NV21_FILE_H

#include <string>

#include "base/bytes.h"
#include "base/extents.h"

namespace docprep {

/// Bytes of an NV21 frame with an even number of columns: the luma plane, then rows of V, U pairs, one pair
/// for each 2 x 2 block. An odd last row has its own row of pairs.
int64_t nv21_bytes(const Extents& size);

/// The bytes of a frame from a file's content, which is decompressed when it begins as gzip's files do,
/// unless its length is that of the frame.
///
/// The frame must have the exact length. Longer ones are refused too: a wrong WxH is the usual cause,
/// and any smaller product would otherwise be read as a sheared picture.
/// @param path for messages only
/// @throws Failure, also for an odd number of columns: cameras do not agree on how the pairs lie then
Bytes decode_nv21(Bytes content, const std::string& path, const Extents& size);

/// Whether the frame has more likely size.rows columns than size.cols: then pixels that would lie above
/// each other are much more alike. Neither noise nor frames of one colour look so. Reads 10000 pixels.
bool looks_transposed(const Bytes& frame, const Extents& size);

}  // namespace docprep

#endif  // DOCPREP_NV21_FILE_H
