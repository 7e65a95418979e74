#include "formats/webp_file.h"

#include <webp/decode.h>
#include <webp/encode.h>

#include <algorithm>
#include <new>

#include "base/drawing.h"
#include "base/failure.h"
#include "formats/exif.h"
#include "formats/samples.h"

namespace docprep {

namespace {

size_t little_endian(const unsigned char* bytes) {
    return bytes[0] | size_t{bytes[1]} << 8 | size_t{bytes[2]} << 16 | size_t{bytes[3]} << 24;
}

void require_decoded(VP8StatusCode status, const std::string& path) {
    switch (status) {
        case VP8_STATUS_OK:
            return;
        case VP8_STATUS_OUT_OF_MEMORY:
            throw std::bad_alloc();
        case VP8_STATUS_NOT_ENOUGH_DATA:
            throw Failure(path, "truncated WebP");
        default:
            throw Failure(path, "not a readable WebP");
    }
}

/// The length that the RIFF header states, itself included; what follows it is no part of the picture.
size_t stated_length(const Bytes& bytes) {
    constexpr size_t kRiffHeader = 8;
    return little_endian(bytes.data() + 4) + kRiffHeader;
}

/// The orientation in the EXIF chunk.
int stored_orientation(const Bytes& bytes, size_t length) {
    constexpr size_t kFirstChunk = 12, kChunkHeader = 8;
    for (size_t at = kFirstChunk; at + kChunkHeader <= length;) {
        const unsigned char* const chunk = bytes.data() + at;
        const size_t n = little_endian(chunk + 4);
        if (n > length - at - kChunkHeader) break;
        if (std::equal(chunk, chunk + 4, "EXIF")) {
            const unsigned char* const block = chunk + kChunkHeader;
            // Some writers put the signature of JPEG's blocks in front, which has no place here.
            const int signed_orientation = exif_orientation(block, n);
            const int orientation = signed_orientation ? signed_orientation : tiff_orientation(block, n);
            return orientation == 0 ? 1 : orientation;
        }
        at += kChunkHeader + n + n % 2;
    }
    return 1;
}

class Picture {
 public:
    Picture() {
        if (!WebPPictureInit(&picture_)) throw std::bad_alloc();
        WebPMemoryWriterInit(&writer_);
        picture_.writer = WebPMemoryWrite;
        picture_.custom_ptr = &writer_;
    }
    ~Picture() {
        WebPPictureFree(&picture_);
        WebPMemoryWriterClear(&writer_);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    void import(const Image& bgr) {
        picture_.use_argb = 1;
        picture_.width = bgr.cols;
        picture_.height = bgr.rows;
        if (!WebPPictureImportBGR(&picture_, bgr.data, 3 * bgr.cols)) throw std::bad_alloc();
    }
    Bytes encoded(const WebPConfig& config) {
        // Extents within the format's leave it no other reason to fail.
        if (!WebPEncode(&config, &picture_)) throw std::bad_alloc();
        return Bytes(writer_.mem, writer_.mem + writer_.size);
    }

 private:
    WebPPicture picture_{};
    WebPMemoryWriter writer_{};
};

}  // namespace

Photo decode_webp(const Bytes& bytes, const std::string& path) {
    WebPDecoderConfig config;
    if (!WebPInitDecoderConfig(&config)) throw std::bad_alloc();
    require_decoded(WebPGetFeatures(bytes.data(), bytes.size(), &config.input), path);
    require_size(path, config.input.height, config.input.width);
    if (config.input.has_animation) throw Failure(path, "WebP films are not supported");
    const size_t length = stated_length(bytes);
    if (length > bytes.size()) throw Failure(path, "truncated WebP");

    Photo photo;
    photo.format = "WebP";
    const int channels = config.input.has_alpha ? 4 : 3;
    photo.pixels.mat_create(config.input.height, config.input.width, channels, 0);
    config.output.colorspace = config.input.has_alpha ? MODE_BGRA : MODE_BGR;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = photo.pixels.data;
    config.output.u.RGBA.stride = channels * photo.pixels.cols;
    config.output.u.RGBA.size =
        static_cast<size_t>(config.output.u.RGBA.stride) * static_cast<size_t>(photo.pixels.rows);
    require_decoded(WebPDecode(bytes.data(), length, &config), path);
    photo.orientation = stored_orientation(bytes, length);
    if (channels == 4) photo.pixels = on_white(photo.pixels);
    return photo;
}

Bytes encode_webp(const Image& image) {
    // From 0 to 9; more takes many times as long for files hardly smaller.
    constexpr int kEffort = 1;
    WebPConfig config;
    if (!WebPConfigInit(&config) || !WebPConfigLosslessPreset(&config, kEffort)) throw std::bad_alloc();
    Picture picture;
    picture.import(in_colour(image));
    return picture.encoded(config);
}

}  // namespace docprep
