#include "formats/picture_format.h"

#include <algorithm>
#include <iterator>

#include "base/failure.h"
#include "formats/jpeg_file.h"
#include "formats/png_file.h"
#include "formats/pnm_file.h"
#include "formats/tiff_file.h"
#include "formats/webp_file.h"

namespace docprep {

namespace {

struct Ending {
    const char* text;
    PictureFormat format;
};

constexpr Ending kEndings[] = {
    {".png", PictureFormat::kPng},  {".jpg", PictureFormat::kJpeg},  {".jpeg", PictureFormat::kJpeg},
    {".tif", PictureFormat::kTiff}, {".tiff", PictureFormat::kTiff}, {".webp", PictureFormat::kWebp},
    {".pgm", PictureFormat::kPnm},  {".ppm", PictureFormat::kPnm},   {".pnm", PictureFormat::kPnm},
};

constexpr const char* kOtherEndings[] = {".avif", ".bmp", ".gif", ".heic", ".heif", ".jp2", ".jxl",
                                         ".pdf",  ".svg", ".tga", ".psd",  ".dng",  ".eps"};

/// The name's ending with its point, in small letters; those beyond ASCII stay: no ending has any.
std::string ending_of(const std::string& name) {
    const size_t dot = name.rfind('.');
    if (dot == name.npos) return "";
    std::string ending = name.substr(dot);
    for (char& c : ending)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return ending;
}

void require_sides(const Image& image, int most, const char* format, const std::string& path) {
    if (image.cols <= most && image.rows <= most) return;
    throw Failure(path, std::to_string(image.cols) + " x " + std::to_string(image.rows) +
                            " pixels are too many for a " + format + " (limit " + std::to_string(most) +
                            " a side)");
}

}  // namespace

std::optional<PictureFormat> format_of_name(const std::string& name) {
    const std::string ending = ending_of(name);
    for (const Ending& known : kEndings)
        if (ending == known.text) return known.format;
    return std::nullopt;
}

bool names_another_format(const std::string& name) {
    const std::string ending = ending_of(name);
    return std::find(std::begin(kOtherEndings), std::end(kOtherEndings), ending) != std::end(kOtherEndings);
}

std::vector<std::string> picture_format_names() {
    std::vector<std::string> names;
    for (const Ending& ending : kEndings) names.emplace_back(ending.text);
    return names;
}

Bytes encode_picture(const Image& image, PictureFormat format, const std::string& path, int dots_per_inch) {
    switch (format) {
        case PictureFormat::kPng:
            break;
        case PictureFormat::kJpeg:
            require_sides(image, kMostJpegSide, "JPEG", path);
            return encode_jpeg(image, kJpegQuality, dots_per_inch);
        case PictureFormat::kPnm:
            return encode_pnm(image);
        case PictureFormat::kTiff:
            return encode_tiff(image, dots_per_inch);
        case PictureFormat::kWebp:
            require_sides(image, kMostWebpSide, "WebP", path);
            return encode_webp(image);
    }
    return encode_png(image, dots_per_inch);
}

}  // namespace docprep
