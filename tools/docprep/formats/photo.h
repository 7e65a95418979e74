// Photographs from files.
#ifndef DOCPREP_PHOTO_H
#define DOCPREP_PHOTO_H

#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/image.h"

namespace docprep {

struct Photo {
    Image pixels;             ///< as stored, before the orientation: 1 channel (grey) or 3 (B, G, R)
    const char* format = "";  ///< for people: "JPEG", "PNG", "PNM", "TIFF", "WebP" or "NV21"
    int orientation = 1;      ///< as in base/orientation.h; 1 when the file says nothing
    std::vector<std::string>
        warnings;  ///< oddities of the file, such as "lacks its end"; pixels are as stored
};

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
