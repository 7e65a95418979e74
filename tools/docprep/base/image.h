// Pixels in memory.
#ifndef DOCPREP_IMAGE_H
#define DOCPREP_IMAGE_H

#include <cstdint>
#include <string>

#include "cv_mat.h"

namespace docprep {

using Image = orvex_cv_991::Mat<unsigned char>;

/// The largest picture accepted, so that no header can ask for more memory than a desktop has: a run
/// takes up to about 12 bytes a pixel of the photograph or of its level page, 3 GiB in all. Camera
/// sensors of 200 million pixels fit.
constexpr int64_t kMostPixels = int64_t{1} << 28;
// The library counts samples in int; 4 channels are the most that exist on the way, in a PNG with alpha.
static_assert(4 * kMostPixels <= INT32_MAX, "sample counts must fit in int");

/// @param path  for messages only
/// @throws Failure for no pixels or more than kMostPixels
void require_size(const std::string& path, int64_t rows, int64_t cols);

}  // namespace docprep

#endif  // DOCPREP_IMAGE_H
