#include "jpeg_file.h"

#include <csetjmp>
#include <cstddef>
#include <cstdio>
// The library's header needs the two above.
#include <jerror.h>
#include <jpeglib.h>

#include "failure.h"
#include "orientation.h"

namespace docprep {

namespace {

// Real progressive files have about ten; a small file can hold thousands, each a pass over all pixels.
constexpr int kMostScans = 100;

// Huffman coding spends at least one bit on a block of 8 x 8 pixels, so a byte holds at most 8 * 64 of them.
constexpr int64_t kMostPixelsPerByte = 512;

/// libjpeg's state and what its callbacks leave. Errors leave libjpeg by longjmp, so everything that is alive
/// below `attempt` (this struct included, but for the message, which nothing there owns) is trivially
/// destructible; the owner of memory and of the exception is decode_jpeg, above the setjmp.
struct Decoder {
    jpeg_decompress_struct info;
    jpeg_error_mgr errors;
    jpeg_progress_mgr progress;
    std::jmp_buf escape;
    const char* kind;  // what the message is about, for people
    char message[JMSG_LENGTH_MAX];

    const Bytes* bytes;
    unsigned char* pixels;    // where rows go, row_bytes apart
    size_t row_bytes;         // of `pixels`
    unsigned char* cmyk_row;  // 4 bytes a pixel, for CMYK only
};

Decoder& decoder_of(j_common_ptr info) {
    return *static_cast<Decoder*>(info->client_data);
}

[[noreturn]] void give_up(j_common_ptr info, const char* kind) {
    Decoder& decoder = decoder_of(info);
    decoder.kind = kind;
    info->err->format_message(info, decoder.message);
    std::longjmp(decoder.escape, 1);
}

[[noreturn]] void on_error(j_common_ptr info) {
    give_up(info, "not a readable JPEG");
}

void on_message(j_common_ptr info, int level) {
    if (level >= 0) return;  // traces
    switch (info->err->msg_code) {
        // Oddities that leave every pixel as it was coded.
        case JWRN_ADOBE_XFORM:
        case JWRN_BOGUS_ICC:
        case JWRN_EXTRANEOUS_DATA:
        case JWRN_JFIF_MAJOR:
        case JWRN_NOT_SEQUENTIAL:
            return;
        case JWRN_JPEG_EOF:
            give_up(info, "truncated JPEG");
        default:
            give_up(info, "damaged JPEG");
    }
}

void on_text(j_common_ptr) {}  // libjpeg's own printing on standard error

void on_progress(j_common_ptr info) {
    Decoder& decoder = decoder_of(info);
    if (decoder.info.input_scan_number <= kMostScans) return;
    decoder.kind = "not a readable JPEG";
    std::snprintf(decoder.message, sizeof decoder.message, "More than %d scans", kMostScans);
    std::longjmp(decoder.escape, 1);
}

/// Runs a step of libjpeg calls. False: it failed, and kind and message say why.
bool attempt(Decoder& decoder, void (*step)(Decoder&)) {
    if (setjmp(decoder.escape)) return false;
    step(decoder);
    return true;
}

void read_header(Decoder& decoder) {
    j_decompress_ptr info = &decoder.info;
    jpeg_create_decompress(info);
    info->progress = &decoder.progress;
    jpeg_mem_src(info, decoder.bytes->data(), static_cast<unsigned long>(decoder.bytes->size()));
    jpeg_save_markers(info, JPEG_APP0 + 1, 0xffff);
    jpeg_read_header(info, TRUE);
}

/// Ink to light. Adobe's files, the only ones in practice, store 255 for no ink.
void bgr_from_cmyk(const unsigned char* cmyk, unsigned char* bgr, size_t n, bool adobe) {
    const unsigned flip = adobe ? 0 : 255;
    for (size_t i = 0; i < n; ++i, cmyk += 4, bgr += 3) {
        const unsigned white = cmyk[3] ^ flip;
        for (int k = 0; k < 3; ++k)
            bgr[2 - k] = static_cast<unsigned char>(((cmyk[k] ^ flip) * white + 127) / 255);
    }
}

void read_pixels(Decoder& decoder) {
    j_decompress_ptr info = &decoder.info;
    jpeg_start_decompress(info);
    while (info->output_scanline < info->output_height) {
        unsigned char* const out = decoder.pixels + info->output_scanline * decoder.row_bytes;
        JSAMPROW row = decoder.cmyk_row ? decoder.cmyk_row : out;
        if (jpeg_read_scanlines(info, &row, 1) != 1) ERREXIT(info, JERR_INPUT_EOF);
        if (decoder.cmyk_row) bgr_from_cmyk(row, out, info->output_width, info->saw_Adobe_marker);
    }
    jpeg_finish_decompress(info);
}

class DestroyAtEnd {
 public:
    explicit DestroyAtEnd(jpeg_decompress_struct& info) : info_(info) {}
    ~DestroyAtEnd() { jpeg_destroy_decompress(&info_); }
    DestroyAtEnd(const DestroyAtEnd&) = delete;
    DestroyAtEnd& operator=(const DestroyAtEnd&) = delete;

 private:
    jpeg_decompress_struct& info_;
};

/// The orientation of the first EXIF block.
int stored_orientation(const jpeg_decompress_struct& info) {
    for (jpeg_saved_marker_ptr marker = info.marker_list; marker; marker = marker->next) {
        const int orientation = exif_orientation(marker->data, marker->data_length);
        if (orientation != 0) return orientation;
    }
    return 1;
}

}  // namespace

Photo decode_jpeg(const Bytes& bytes, const std::string& path) {
    Decoder decoder{};
    decoder.bytes = &bytes;
    decoder.info.err = jpeg_std_error(&decoder.errors);
    decoder.info.client_data = &decoder;
    decoder.errors.error_exit = on_error;
    decoder.errors.emit_message = on_message;
    decoder.errors.output_message = on_text;
    decoder.progress.progress_monitor = on_progress;
    const DestroyAtEnd destroy(decoder.info);
    const auto require = [&](bool done) {
        if (!done) throw Failure(path, std::string(decoder.kind) + " (" + decoder.message + ")");
    };

    require(attempt(decoder, read_header));
    const int64_t rows = decoder.info.image_height;
    const int64_t cols = decoder.info.image_width;
    require_size(path, rows, cols);
    if (decoder.info.arith_code) throw Failure(path, "arithmetic-coded JPEGs are not supported");
    if (rows * cols > kMostPixelsPerByte * static_cast<int64_t>(bytes.size()))
        throw Failure(path, "truncated JPEG (too short for its " + std::to_string(cols) + " x " +
                                std::to_string(rows) + " pixels)");

    int channels = 3;
    Bytes cmyk_row;
    switch (decoder.info.jpeg_color_space) {
        case JCS_GRAYSCALE:
            channels = 1;
            decoder.info.out_color_space = JCS_GRAYSCALE;
            break;
        case JCS_RGB:
        case JCS_YCbCr:
            decoder.info.out_color_space = JCS_EXT_BGR;
            break;
        case JCS_CMYK:
        case JCS_YCCK:
            decoder.info.out_color_space = JCS_CMYK;
            cmyk_row.resize(static_cast<size_t>(cols) * 4);
            decoder.cmyk_row = cmyk_row.data();
            break;
        default:
            throw Failure(path, "JPEGs with " + std::to_string(decoder.info.num_components) +
                                    " unnamed colour components are not supported");
    }

    Photo photo;
    photo.format = "JPEG";
    photo.orientation = stored_orientation(decoder.info);
    photo.pixels.mat_create(static_cast<int>(rows), static_cast<int>(cols), channels, 0);
    decoder.pixels = photo.pixels.data;
    decoder.row_bytes = static_cast<size_t>(cols) * static_cast<size_t>(channels);
    require(attempt(decoder, read_pixels));
    return photo;
}

}  // namespace docprep
