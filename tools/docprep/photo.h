// A photograph in memory, wherever it came from.
#ifndef DOCPREP_PHOTO_H
#define DOCPREP_PHOTO_H

#include <cstdint>
#include <string>
#include <vector>

#include "cv_mat.h"
#include "file_bytes.h"

namespace docprep {

using Image = orvex_cv_991::Mat<unsigned char>;

/// The largest picture accepted, so that no header can ask for more memory than a desktop has: a run
/// takes up to about 12 bytes a pixel of the photograph or of its level page, 3 GiB in all. Camera
/// sensors of 200 million pixels fit.
constexpr int64_t kMostPixels = int64_t{1} << 28;
// The library counts samples in int; 4 channels are the most that exist on the way, in a PNG with alpha.
static_assert(4 * kMostPixels <= INT32_MAX, "sample counts must fit in int");

struct Photo {
    Image pixels;             ///< as stored, before the orientation: 1 channel (grey) or 3 (B, G, R)
    const char* format = "";  ///< for people: "JPEG", "PNG", "PNM", "TIFF", "WebP" or "NV21"
    int orientation = 1;      ///< as in orientation.h; 1 when the file says nothing
    std::vector<std::string>
        warnings;  ///< oddities of the file, such as "lacks its end"; pixels are as stored
};

/// @throws Failure for no pixels or more than kMostPixels
void require_size(const std::string& path, int64_t rows, int64_t cols);

/// @throws Failure, which says that a file of this kind ("a GIF") is not read
[[noreturn]] void refuse_foreign(const std::string& path, const std::string& kind);

/// Reads a JPEG, PNG, PNM (P1 to P7), TIFF or WebP; the first bytes tell which, not the name.
/// @param path as in read_file
/// @throws Failure when it is none of them, damaged or cut short, too large, or of an unsupported kind;
///         std::bad_alloc
Photo read_photo(const std::string& path);

/// As read_photo from the file's content; `path` is for messages only.
Photo decode_photo(const Bytes& bytes, const std::string& path);

}  // namespace docprep

#endif  // DOCPREP_PHOTO_H
