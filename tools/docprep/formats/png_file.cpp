#include "formats/png_file.h"

#include <libdeflate.h>
#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <memory>
#include <new>

#include "base/failure.h"
#include "formats/exif.h"
#include "formats/samples.h"

namespace docprep {

namespace {

// Deflate's best ratio, reached by long runs of one byte.
constexpr int64_t kMostDeflateRatio = 1032;

// Of libdeflate. On the sample page's pictures a third of what libpng's level 3 took, for files no
// larger in all; level 1 takes a fifth, for files a tenth larger.
constexpr int kCompressionLevel = 2;

/// libpng's state and what its callbacks leave. Errors leave libpng by longjmp, so nothing that is alive
/// below `attempt` has a destructor to run: memory belongs to decode_png, above the setjmp.
struct Decoder {
    png_structp png;
    png_infop info;
    std::jmp_buf escape;
    char message[120];

    const Bytes* in;
    size_t position;  // in `in`
    bool cut_short;   // more was asked for than `in` holds
    int passes;
    unsigned char* pixels;
    size_t row_bytes;
    int64_t rows;
    int64_t cols;
};

[[noreturn]] void on_error(png_structp png, png_const_charp text) {
    Decoder& decoder = *static_cast<Decoder*>(png_get_error_ptr(png));
    std::snprintf(decoder.message, sizeof decoder.message, "%s", text);
    std::longjmp(decoder.escape, 1);
}

void on_warning(png_structp, png_const_charp) {}  // about chunks that do not change pixels

void require_created(Decoder& decoder, const void* created) {
    if (created) return;
    std::snprintf(decoder.message, sizeof decoder.message, "Out of memory");
    std::longjmp(decoder.escape, 1);
}

/// Runs a step of libpng calls. False: it failed, and the message says why.
bool attempt(Decoder& decoder, void (*step)(Decoder&)) {
    if (setjmp(decoder.escape)) return false;
    step(decoder);
    return true;
}

// ---- Reading ----

void take_bytes(png_structp png, png_bytep to, size_t n) {
    Decoder& decoder = *static_cast<Decoder*>(png_get_io_ptr(png));
    decoder.cut_short = n > decoder.in->size() - decoder.position;
    if (decoder.cut_short) png_error(png, "Premature end of file");
    std::copy_n(decoder.in->data() + decoder.position, n, to);
    decoder.position += n;
}

void read_header(Decoder& decoder) {
    decoder.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &decoder, on_error, on_warning);
    require_created(decoder, decoder.png);
    decoder.info = png_create_info_struct(decoder.png);
    require_created(decoder, decoder.info);
    png_set_user_limits(decoder.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // require_size decides
    png_set_read_fn(decoder.png, &decoder, take_bytes);
    png_read_info(decoder.png, decoder.info);
}

void choose_samples(Decoder& decoder) {
    png_set_expand(decoder.png);
    png_set_scale_16(decoder.png);
    png_set_bgr(decoder.png);
    decoder.passes = png_set_interlace_handling(decoder.png);
    png_read_update_info(decoder.png, decoder.info);
    decoder.row_bytes = png_get_rowbytes(decoder.png, decoder.info);
}

void read_pixels(Decoder& decoder) {
    for (int pass = 0; pass < decoder.passes; ++pass)
        for (int64_t row = 0; row < decoder.rows; ++row)
            png_read_row(decoder.png, decoder.pixels + static_cast<size_t>(row) * decoder.row_bytes, nullptr);
    png_read_end(decoder.png, decoder.info);
}

/// The orientation in the eXIf chunk.
int stored_orientation(const Decoder& decoder) {
    png_uint_32 n = 0;
    png_bytep data = nullptr;
    if (!png_get_eXIf_1(decoder.png, decoder.info, &n, &data)) return 1;
    const int orientation = tiff_orientation(data, n);
    return orientation == 0 ? 1 : orientation;
}

class DestroyAtEnd {
 public:
    explicit DestroyAtEnd(Decoder& decoder) : decoder_(decoder) {}
    ~DestroyAtEnd() { png_destroy_read_struct(&decoder_.png, &decoder_.info, nullptr); }
    DestroyAtEnd(const DestroyAtEnd&) = delete;
    DestroyAtEnd& operator=(const DestroyAtEnd&) = delete;

 private:
    Decoder& decoder_;
};

// ---- Writing ----

void append_number(Bytes& to, size_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) to.push_back(static_cast<unsigned char>(number >> shift));
}

/// @param type  4 letters
void append_chunk(Bytes& to, const char* type, const unsigned char* content, size_t n) {
    append_number(to, n);
    const size_t begin = to.size();  // of what the check sum covers
    to.insert(to.end(), type, type + 4);
    to.insert(to.end(), content, content + n);
    append_number(to, libdeflate_crc32(0, to.data() + begin, to.size() - begin));
}

void append_chunk(Bytes& to, const char* type, const Bytes& content) {
    append_chunk(to, type, content.data(), content.size());
}

bool is_black_and_white(const Image& image) {
    if (image.channels != 1) return false;
    const int64_t n = static_cast<int64_t>(image.rows) * image.cols;
    return std::all_of(image.data, image.data + n, [](unsigned char c) { return c == 0 || c == 255; });
}

/// Rows of bits behind the filter "none", which suits them best.
Bytes rows_of_bits(const Image& image) {
    const size_t row_bytes = 1 + (static_cast<size_t>(image.cols) + 7) / 8;
    Bytes rows(row_bytes * static_cast<size_t>(image.rows));
    const unsigned char* from = image.data;
    for (size_t begin = 0; begin < rows.size(); begin += row_bytes) {
        unsigned char* const to = rows.data() + begin + 1;
        for (int col = 0; col < image.cols; ++col)
            to[col / 8] = static_cast<unsigned char>(to[col / 8] | (*from++ & 128 >> col % 8));
    }
    return rows;
}

/// Rows of samples, R, G, B where there are three, behind the filter "up": each less the one above it.
Bytes rows_of_differences(const Image& image) {
    const size_t row_samples = static_cast<size_t>(image.cols) * static_cast<size_t>(image.channels);
    constexpr unsigned char kUp = 2;
    Bytes rows((1 + row_samples) * static_cast<size_t>(image.rows));
    const Bytes nothing(row_samples);  // above the first
    const unsigned char* above = nothing.data();
    const unsigned char* from = image.data;
    unsigned char* to = rows.data();
    for (int row = 0; row < image.rows; ++row) {
        *to++ = kUp;
        for (size_t i = 0; i < row_samples; ++i) to[i] = static_cast<unsigned char>(from[i] - above[i]);
        if (image.channels == 3) swap_red_and_blue(to, static_cast<size_t>(image.cols), 3);
        above = from;
        from += row_samples;
        to += row_samples;
    }
    return rows;
}

void append_deflated(Bytes& to, const char* type, const Bytes& content) {
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
        libdeflate_alloc_compressor(kCompressionLevel), libdeflate_free_compressor);
    if (!compressor) throw std::bad_alloc();
    const size_t most = libdeflate_zlib_compress_bound(compressor.get(), content.size());
    const std::unique_ptr<unsigned char[]> deflated(new unsigned char[most]);
    const size_t n =
        libdeflate_zlib_compress(compressor.get(), content.data(), content.size(), deflated.get(), most);
    append_chunk(to, type, deflated.get(), n);
}

}  // namespace

Photo decode_png(const Bytes& bytes, const std::string& path) {
    Decoder decoder{};
    decoder.in = &bytes;
    const DestroyAtEnd destroy(decoder);
    const auto require = [&](bool done) {
        if (done) return;
        const char* kind = decoder.cut_short ? "truncated" : "not a readable";
        throw Failure(path, std::string(kind) + " PNG (" + decoder.message + ")");
    };

    require(attempt(decoder, read_header));
    decoder.cols = png_get_image_width(decoder.png, decoder.info);
    decoder.rows = png_get_image_height(decoder.png, decoder.info);
    require_size(path, decoder.rows, decoder.cols);
    const int64_t packed_bytes =
        decoder.rows * static_cast<int64_t>(png_get_rowbytes(decoder.png, decoder.info));
    if (packed_bytes > kMostDeflateRatio * static_cast<int64_t>(bytes.size()))
        throw Failure(path, "truncated PNG (too short for its " + std::to_string(decoder.cols) + " x " +
                                std::to_string(decoder.rows) + " pixels)");
    require(attempt(decoder, choose_samples));

    Photo photo;
    photo.format = "PNG";
    photo.pixels.mat_create(static_cast<int>(decoder.rows), static_cast<int>(decoder.cols),
                            png_get_channels(decoder.png, decoder.info), 0);
    decoder.pixels = photo.pixels.data;
    require(attempt(decoder, read_pixels));
    photo.orientation = stored_orientation(decoder);
    if (photo.pixels.channels % 2 == 0) photo.pixels = on_white(photo.pixels);
    return photo;
}

Bytes encode_png(const Image& image, int dots_per_inch) {
    const bool bits = is_black_and_white(image);
    constexpr unsigned char kGray = 0, kRgb = 2;
    Bytes header;
    append_number(header, static_cast<size_t>(image.cols));
    append_number(header, static_cast<size_t>(image.rows));
    const unsigned char depth = bits ? 1 : 8;
    header.insert(header.end(), {depth, image.channels == 1 ? kGray : kRgb, 0, 0, 0});

    Bytes out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    append_chunk(out, "IHDR", header);
    if (dots_per_inch > 0) {
        constexpr double kInchesPerMetre = 39.3701;
        constexpr unsigned char kPerMetre = 1;
        const auto per_metre = static_cast<size_t>(dots_per_inch * kInchesPerMetre + 0.5);
        Bytes resolution;
        append_number(resolution, per_metre);
        append_number(resolution, per_metre);
        resolution.push_back(kPerMetre);
        append_chunk(out, "pHYs", resolution);
    }
    // kMostPixels of 3 samples deflate to less than the 2^31 bytes that a chunk may have.
    append_deflated(out, "IDAT", bits ? rows_of_bits(image) : rows_of_differences(image));
    append_chunk(out, "IEND", Bytes());
    return out;
}

}  // namespace docprep
