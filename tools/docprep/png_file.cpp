#include "png_file.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <new>

#include "failure.h"
#include "orientation.h"

namespace docprep {

namespace {

// Deflate's best ratio, reached by long runs of one byte.
constexpr int64_t kMostDeflateRatio = 1032;

// Three times as fast as zlib's own choice of 6, for files a tenth longer.
constexpr int kCompressionLevel = 3;

/// libpng's state and what its callbacks leave. Errors leave libpng by longjmp, so nothing that is alive
/// below `attempt` has a destructor to run: memory belongs to decode_png and encode_png, above the setjmp.
struct Codec {
    png_structp png;
    png_infop info;
    std::jmp_buf escape;
    char message[120];

    const Bytes* in;  // reading
    size_t position;  // in `in`
    bool cut_short;   // more was asked for than `in` holds
    int passes;
    Bytes* out;             // writing; grows in a function that lets no exception through
    unsigned char* pixels;  // both ways
    size_t row_bytes;
    int64_t rows;
    int64_t cols;
    int channels;
    int dots_per_inch;
};

[[noreturn]] void on_error(png_structp png, png_const_charp text) {
    Codec& codec = *static_cast<Codec*>(png_get_error_ptr(png));
    std::snprintf(codec.message, sizeof codec.message, "%s", text);
    std::longjmp(codec.escape, 1);
}

void on_warning(png_structp, png_const_charp) {}  // about chunks that do not change pixels

void require_created(Codec& codec, const void* created) {
    if (created) return;
    std::snprintf(codec.message, sizeof codec.message, "Out of memory");
    std::longjmp(codec.escape, 1);
}

/// Runs a step of libpng calls. False: it failed, and the message says why.
bool attempt(Codec& codec, void (*step)(Codec&)) {
    if (setjmp(codec.escape)) return false;
    step(codec);
    return true;
}

// ---- Reading ----

void take_bytes(png_structp png, png_bytep to, size_t n) {
    Codec& codec = *static_cast<Codec*>(png_get_io_ptr(png));
    codec.cut_short = n > codec.in->size() - codec.position;
    if (codec.cut_short) png_error(png, "Premature end of file");
    std::copy_n(codec.in->data() + codec.position, n, to);
    codec.position += n;
}

void read_header(Codec& codec) {
    codec.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &codec, on_error, on_warning);
    require_created(codec, codec.png);
    codec.info = png_create_info_struct(codec.png);
    require_created(codec, codec.info);
    png_set_user_limits(codec.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // require_size decides
    png_set_read_fn(codec.png, &codec, take_bytes);
    png_read_info(codec.png, codec.info);
}

void choose_samples(Codec& codec) {
    png_set_expand(codec.png);
    png_set_scale_16(codec.png);
    png_set_bgr(codec.png);
    codec.passes = png_set_interlace_handling(codec.png);
    png_read_update_info(codec.png, codec.info);
    codec.row_bytes = png_get_rowbytes(codec.png, codec.info);
}

void read_pixels(Codec& codec) {
    for (int pass = 0; pass < codec.passes; ++pass)
        for (int64_t row = 0; row < codec.rows; ++row)
            png_read_row(codec.png, codec.pixels + static_cast<size_t>(row) * codec.row_bytes, nullptr);
    png_read_end(codec.png, codec.info);
}

/// The orientation in the eXIf chunk, which has no "Exif" signature of its own.
int stored_orientation(const Codec& codec) {
    png_uint_32 n = 0;
    png_bytep data = nullptr;
    if (!png_get_eXIf_1(codec.png, codec.info, &n, &data)) return 1;
    Bytes block = {'E', 'x', 'i', 'f', 0, 0};
    block.insert(block.end(), data, data + n);
    const int orientation = exif_orientation(block.data(), block.size());
    return orientation == 0 ? 1 : orientation;
}

/// Lays an image whose last channel is alpha on white.
Image on_white(const Image& image) {
    const int channels = image.channels - 1;
    Image out;
    out.mat_create(image.rows, image.cols, channels, 0);
    const int64_t n = static_cast<int64_t>(image.rows) * image.cols;
    const unsigned char* in = image.data;
    unsigned char* to = out.data;
    for (int64_t i = 0; i < n; ++i, in += channels + 1, to += channels) {
        const int alpha = in[channels];
        for (int k = 0; k < channels; ++k)
            to[k] = static_cast<unsigned char>((in[k] * alpha + 255 * (255 - alpha) + 127) / 255);
    }
    return out;
}

class DestroyReader {
 public:
    explicit DestroyReader(Codec& codec) : codec_(codec) {}
    ~DestroyReader() { png_destroy_read_struct(&codec_.png, &codec_.info, nullptr); }
    DestroyReader(const DestroyReader&) = delete;
    DestroyReader& operator=(const DestroyReader&) = delete;

 private:
    Codec& codec_;
};

// ---- Writing ----

bool append(Bytes& bytes, const unsigned char* from, size_t n) noexcept {
    try {
        bytes.insert(bytes.end(), from, from + n);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void give_bytes(png_structp png, png_bytep from, size_t n) {
    Codec& codec = *static_cast<Codec*>(png_get_io_ptr(png));
    if (!append(*codec.out, from, n)) png_error(png, "Out of memory");
}

void flush_nothing(png_structp) {}

void write_image(Codec& codec) {
    codec.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &codec, on_error, on_warning);
    require_created(codec, codec.png);
    codec.info = png_create_info_struct(codec.png);
    require_created(codec, codec.info);
    png_set_user_limits(codec.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_write_fn(codec.png, &codec, give_bytes, flush_nothing);
    png_set_compression_level(codec.png, kCompressionLevel);
    png_set_IHDR(codec.png, codec.info, static_cast<png_uint_32>(codec.cols),
                 static_cast<png_uint_32>(codec.rows), 8,
                 codec.channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (codec.dots_per_inch > 0) {
        constexpr double kInchesPerMetre = 39.3701;
        const auto per_metre = static_cast<png_uint_32>(codec.dots_per_inch * kInchesPerMetre + 0.5);
        png_set_pHYs(codec.png, codec.info, per_metre, per_metre, PNG_RESOLUTION_METER);
    }
    png_write_info(codec.png, codec.info);
    png_set_bgr(codec.png);
    for (int64_t row = 0; row < codec.rows; ++row)
        png_write_row(codec.png, codec.pixels + static_cast<size_t>(row) * codec.row_bytes);
    png_write_end(codec.png, codec.info);
}

class DestroyWriter {
 public:
    explicit DestroyWriter(Codec& codec) : codec_(codec) {}
    ~DestroyWriter() { png_destroy_write_struct(&codec_.png, &codec_.info); }
    DestroyWriter(const DestroyWriter&) = delete;
    DestroyWriter& operator=(const DestroyWriter&) = delete;

 private:
    Codec& codec_;
};

}  // namespace

Photo decode_png(const Bytes& bytes, const std::string& path) {
    Codec codec{};
    codec.in = &bytes;
    const DestroyReader destroy(codec);
    const auto require = [&](bool done) {
        if (done) return;
        const char* kind = codec.cut_short ? "truncated" : "not a readable";
        throw Failure(path, std::string(kind) + " PNG (" + codec.message + ")");
    };

    require(attempt(codec, read_header));
    codec.cols = png_get_image_width(codec.png, codec.info);
    codec.rows = png_get_image_height(codec.png, codec.info);
    require_size(path, codec.rows, codec.cols);
    const int64_t packed_bytes = codec.rows * static_cast<int64_t>(png_get_rowbytes(codec.png, codec.info));
    if (packed_bytes > kMostDeflateRatio * static_cast<int64_t>(bytes.size()))
        throw Failure(path, "truncated PNG (too short for its " + std::to_string(codec.cols) + " x " +
                                std::to_string(codec.rows) + " pixels)");
    require(attempt(codec, choose_samples));

    Photo photo;
    photo.format = "PNG";
    photo.pixels.mat_create(static_cast<int>(codec.rows), static_cast<int>(codec.cols),
                            png_get_channels(codec.png, codec.info), 0);
    codec.pixels = photo.pixels.data;
    require(attempt(codec, read_pixels));
    photo.orientation = stored_orientation(codec);
    if (photo.pixels.channels % 2 == 0) photo.pixels = on_white(photo.pixels);
    return photo;
}

Bytes encode_png(const Image& image, int dots_per_inch) {
    Bytes out;
    Codec codec{};
    codec.out = &out;
    codec.pixels = image.data;
    codec.rows = image.rows;
    codec.cols = image.cols;
    codec.channels = image.channels;
    codec.dots_per_inch = dots_per_inch;
    codec.row_bytes = static_cast<size_t>(image.cols) * static_cast<size_t>(image.channels);
    const DestroyWriter destroy(codec);
    // A valid image gives libpng no other reason to fail.
    if (!attempt(codec, write_image)) throw std::bad_alloc();
    return out;
}

}  // namespace docprep
