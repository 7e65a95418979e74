#include "photo.h"

#include <algorithm>
#include <iterator>

#include "failure.h"
#include "jpeg_file.h"
#include "png_file.h"

namespace docprep {

namespace {

template <size_t n>
bool starts_with(const Bytes& bytes, const unsigned char (&magic)[n]) {
    return bytes.size() >= n && std::equal(std::begin(magic), std::end(magic), bytes.begin());
}

}  // namespace

void require_size(const std::string& path, int64_t rows, int64_t cols) {
    if (rows < 1 || cols < 1) throw Failure(path, "has no pixels");
    if (rows > kMostPixels / cols)
        throw Failure(path, std::to_string(cols) + " x " + std::to_string(rows) +
                                " pixels are too many (limit " + std::to_string(kMostPixels >> 20) + " Mi)");
}

Photo read_photo(const std::string& path) {
    return decode_photo(read_file(path), path);
}

Photo decode_photo(const Bytes& bytes, const std::string& path) {
    constexpr unsigned char kJpeg[] = {0xff, 0xd8, 0xff};
    constexpr unsigned char kPng[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    if (bytes.empty()) throw Failure(path, "is empty");
    if (starts_with(bytes, kJpeg)) return decode_jpeg(bytes, path);
    if (starts_with(bytes, kPng)) return decode_png(bytes, path);
    throw Failure(path, "is neither a JPEG nor a PNG");
}

}  // namespace docprep
