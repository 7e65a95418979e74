// The formats that pictures are written in.
#ifndef DOCPREP_PICTURE_FORMAT_H
#define DOCPREP_PICTURE_FORMAT_H

#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/image.h"

namespace docprep {

/// JPEG alone loses something. PNM is PGM for 1 channel and PPM for 3.
enum class PictureFormat { kPng, kJpeg, kPnm, kTiff, kWebp };

/// The format that a name's ending stands for, in capitals or not; none for an unknown ending.
std::optional<PictureFormat> format_of_name(const std::string& name);

/// Whether the name has the ending of a format that other programs write: nobody means a folder by it.
bool names_another_format(const std::string& name);

/// The endings, for people: ".png", ".jpg" ...
std::vector<std::string> picture_format_names();

/// `image` (1 channel, or 3: B, G, R) in a format.
/// @param path  for messages only
/// @param dots_per_inch  the resolution that it states, except in PNM and WebP, which have no place for it; 0: none
/// @throws Failure for more columns or rows than the format can have; std::bad_alloc
Bytes encode_picture(const Image& image, PictureFormat format, const std::string& path,
                     int dots_per_inch = 0);

}  // namespace docprep

#endif  // DOCPREP_PICTURE_FORMAT_H
