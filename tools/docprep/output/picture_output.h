// One picture, on its way to a file, a pipe, a device or standard output.
#ifndef DOCPREP_PICTURE_OUTPUT_H
#define DOCPREP_PICTURE_OUTPUT_H

#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "formats/picture_format.h"

namespace docprep {

/// Stands for standard output.
constexpr const char* kStandardOutput = "-";

/// The format of a picture that goes there: what the name's ending says; PNG for standard output, pipes and devices;
/// otherwise none.
std::optional<PictureFormat> format_for(const std::string& output);

/// Writes a picture's content as OutputFiles does, or to standard output.
/// @param input  a file that must not be replaced
/// @return the paths of the files written
/// @throws Failure
std::vector<std::string> write_picture(const std::string& output, Bytes content, const std::string& input);

}  // namespace docprep

#endif  // DOCPREP_PICTURE_OUTPUT_H
