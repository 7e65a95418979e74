#include "formats/jpeg_file.h"

#include <csetjmp>
#include <cstddef>
#include <cstdio>
// The library's header needs the two above.
#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <new>

#include "base/failure.h"
#include "formats/exif.h"
#include "formats/samples.h"

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
    bool lacks_end;           // more was asked for than `bytes` holds, and the message says so
    unsigned char* pixels;    // where rows go, row_bytes apart
    size_t row_bytes;         // of `pixels`
    unsigned char* cmyk_row;  // 4 bytes a pixel, for CMYK only
};

Decoder& decoder_of(j_common_ptr info) {
    return *static_cast<Decoder*>(info->client_data);
}

[[noreturn]] void give_up(j_common_ptr info, const char* kind) {
    Decoder& decoder = decoder_of(info);
    // What goes wrong behind the end of the file comes from that.
    decoder.kind = decoder.lacks_end ? "truncated JPEG" : kind;
    if (!decoder.lacks_end) info->err->format_message(info, decoder.message);
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
            // libjpeg goes on with an end marker. Nothing is lost if that is all that the file lacks.
            if (!decoder_of(info).lacks_end) info->err->format_message(info, decoder_of(info).message);
            decoder_of(info).lacks_end = true;
            return;
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

/// Whether every scan has been there, as far as the frame header tells: each component in one at least,
/// and of a progressive picture all bits of all coefficients.
bool has_all_scans(const jpeg_decompress_struct& info) {
    for (int k = 0; k < info.num_components; ++k) {
        if (!info.comp_info[k].quant_table) return false;
        if (!info.progressive_mode) continue;
        for (int coefficient = 0; coefficient < DCTSIZE2; ++coefficient)
            if (info.coef_bits[k][coefficient] != 0) return false;
    }
    return true;
}

void read_pixels(Decoder& decoder) {
    j_decompress_ptr info = &decoder.info;
    jpeg_start_decompress(info);
    while (info->output_scanline < info->output_height) {
        unsigned char* const out = decoder.pixels + info->output_scanline * decoder.row_bytes;
        JSAMPROW row = decoder.cmyk_row ? decoder.cmyk_row : out;
        if (jpeg_read_scanlines(info, &row, 1) != 1) ERREXIT(info, JERR_INPUT_EOF);
        // Adobe's files, the only ones in practice, store 255 for no ink.
        if (decoder.cmyk_row) bgr_from_cmyk(row, out, info->output_width, info->saw_Adobe_marker ? 255 : 0);
    }
    if (decoder.lacks_end && !has_all_scans(*info)) ERREXIT(info, JERR_INPUT_EOF);
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

// ---- Writing ----

/// As Decoder, the other way.
struct Encoder {
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    jpeg_destination_mgr destination;
    std::jmp_buf escape;

    const Image* image;
    Bytes* out;  // grows in a function that lets no exception through
    int quality;
    int dots_per_inch;
};

Encoder& encoder_of(j_compress_ptr info) {
    return *static_cast<Encoder*>(info->client_data);
}

[[noreturn]] void on_encoder_error(j_common_ptr info) {
    std::longjmp(static_cast<Encoder*>(info->client_data)->escape, 1);
}

bool resize(Bytes& bytes, size_t n) noexcept {
    try {
        bytes.resize(n);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// Makes room behind the first `used` bytes, which libjpeg fills.
void make_room(j_compress_ptr info, size_t used) {
    constexpr size_t kLeastRoom = 1 << 16;
    Bytes& out = *encoder_of(info).out;
    if (!resize(out, std::max(2 * used, kLeastRoom))) ERREXIT1(info, JERR_OUT_OF_MEMORY, 0);
    info->dest->next_output_byte = out.data() + used;
    info->dest->free_in_buffer = out.size() - used;
}

void begin_output(j_compress_ptr info) {
    make_room(info, 0);
}

boolean on_full_output(j_compress_ptr info) {
    make_room(info, encoder_of(info).out->size());
    return TRUE;
}

void end_output(j_compress_ptr info) {
    Bytes& out = *encoder_of(info).out;
    resize(out, out.size() - info->dest->free_in_buffer);
}

void write_image(Encoder& encoder) {
    j_compress_ptr info = &encoder.info;
    const Image& image = *encoder.image;
    jpeg_create_compress(info);
    encoder.destination = {nullptr, 0, begin_output, on_full_output, end_output};
    info->dest = &encoder.destination;
    info->image_width = static_cast<JDIMENSION>(image.cols);
    info->image_height = static_cast<JDIMENSION>(image.rows);
    info->input_components = image.channels;
    info->in_color_space = image.channels == 1 ? JCS_GRAYSCALE : JCS_EXT_BGR;
    jpeg_set_defaults(info);
    jpeg_set_quality(info, encoder.quality, TRUE);
    if (encoder.dots_per_inch > 0) {
        constexpr UINT8 kPerInch = 1;
        info->density_unit = kPerInch;
        info->X_density = info->Y_density = static_cast<UINT16>(std::min(encoder.dots_per_inch, 65535));
    }
    jpeg_start_compress(info, TRUE);
    const size_t row_bytes = static_cast<size_t>(image.cols) * static_cast<size_t>(image.channels);
    while (info->next_scanline < info->image_height) {
        JSAMPROW row = image.data + info->next_scanline * row_bytes;
        jpeg_write_scanlines(info, &row, 1);
    }
    jpeg_finish_compress(info);
}

/// False: it failed.
bool attempt(Encoder& encoder) {
    if (setjmp(encoder.escape)) return false;
    write_image(encoder);
    return true;
}

class DestroyEncoder {
 public:
    explicit DestroyEncoder(jpeg_compress_struct& info) : info_(info) {}
    ~DestroyEncoder() { jpeg_destroy_compress(&info_); }
    DestroyEncoder(const DestroyEncoder&) = delete;
    DestroyEncoder& operator=(const DestroyEncoder&) = delete;

 private:
    jpeg_compress_struct& info_;
};

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
    if (decoder.lacks_end) photo.warnings.emplace_back("lacks its end");
    return photo;
}

Bytes encode_jpeg(const Image& image, int quality, int dots_per_inch) {
    Bytes out;
    Encoder encoder{};
    encoder.image = &image;
    encoder.out = &out;
    encoder.quality = quality;
    encoder.dots_per_inch = dots_per_inch;
    encoder.info.err = jpeg_std_error(&encoder.errors);
    encoder.info.client_data = &encoder;
    encoder.errors.error_exit = on_encoder_error;
    const DestroyEncoder destroy(encoder.info);
    // A valid image of extents within JPEG's gives libjpeg no other reason to fail.
    if (!attempt(encoder)) throw std::bad_alloc();
    return out;
}

}  // namespace docprep
