#include "formats/tiff_file.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "base/failure.h"
#include "formats/file_bytes.h"
#include "formats/samples.h"

namespace docprep {

namespace {

/// A TIFF in memory: what libtiff's calls work on, and what it says.
struct Memory {
    const Bytes* in = nullptr;  ///< reading
    Bytes* out = nullptr;       ///< writing
    uint64_t position = 0;
    bool warnings_count = false;  ///< once pixels are decoded, they tell of invented ones
    char message[160] = "";       ///< the first that counts

    const Bytes& bytes() const { return in ? *in : *out; }
};

Memory& memory_of(thandle_t handle) {
    return *static_cast<Memory*>(handle);
}

tmsize_t take_bytes(thandle_t handle, void* to, tmsize_t n) {
    Memory& memory = memory_of(handle);
    const Bytes& bytes = memory.bytes();
    if (memory.position >= bytes.size() || n <= 0) return 0;
    const size_t take = std::min(static_cast<size_t>(n), bytes.size() - memory.position);
    std::memcpy(to, bytes.data() + memory.position, take);
    memory.position += take;
    return static_cast<tmsize_t>(take);
}

tmsize_t give_bytes(thandle_t handle, void* from, tmsize_t n) noexcept {
    Memory& memory = memory_of(handle);
    if (!memory.out || n < 0) return -1;
    try {
        const size_t end = memory.position + static_cast<size_t>(n);
        if (memory.out->size() < end) memory.out->resize(end);
    } catch (const std::exception&) {
        return -1;
    }
    std::memcpy(memory.out->data() + memory.position, from, static_cast<size_t>(n));
    memory.position += static_cast<size_t>(n);
    return n;
}

toff_t seek(thandle_t handle, toff_t offset, int whence) {
    Memory& memory = memory_of(handle);
    const uint64_t base = whence == SEEK_SET   ? 0
                          : whence == SEEK_CUR ? memory.position
                                               : memory.bytes().size();
    memory.position = base + offset;  // an offset backward is one that wraps
    return memory.position;
}

toff_t size_of(thandle_t handle) {
    return memory_of(handle).bytes().size();
}

int close_nothing(thandle_t) {
    return 0;
}

[[gnu::format(printf, 2, 0)]] void note(Memory& memory, const char* format, va_list arguments) {
    if (*memory.message) return;
    std::vsnprintf(memory.message, sizeof memory.message, format, arguments);
}

[[gnu::format(printf, 4, 0)]] int on_error(TIFF*, void* memory, const char*, const char* format,
                                           va_list arguments) {
    note(memory_of(memory), format, arguments);
    return 1;  // handled: nothing goes to standard error
}

[[gnu::format(printf, 4, 0)]] int on_warning(TIFF*, void* memory, const char*, const char* format,
                                             va_list arguments) {
    if (memory_of(memory).warnings_count) note(memory_of(memory), format, arguments);
    return 1;
}

using Tiff = std::unique_ptr<TIFF, void (*)(TIFF*)>;

/// Null when it cannot be opened; the message says why.
Tiff open_tiff(Memory& memory, const char* mode) {
    const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                               TIFFOpenOptionsFree);
    if (!options) throw std::bad_alloc();
    // Nothing that libtiff itself keeps is longer than the file or a row of pixels.
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMostFileBytes);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), on_error, &memory);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), on_warning, &memory);
    return Tiff(TIFFClientOpenExt("TIFF", mode, &memory, take_bytes, give_bytes, seek, close_nothing, size_of,
                                  nullptr, nullptr, options.get()),
                TIFFClose);
}

// ---- Reading ----

/// What the tags of a page say. Sample counts are those stored for each pixel.
struct Layout {
    int64_t cols = 0;
    int64_t rows = 0;
    int photometric = -1;
    int samples = 1;
    int bits = 1;
    int compression = COMPRESSION_NONE;
    bool planes = false;  ///< each sample of all pixels by itself, not each pixel with its samples
    int colours = 1;      ///< samples that are not alpha: 1, 3 or 4
    int alpha = 0;        ///< EXTRASAMPLE_..., 0: none

    int kept() const { return colours + (alpha != 0 ? 1 : 0); }
};

class Page {
 public:
    Page(const Bytes& bytes, const std::string& path)
        : bytes_(bytes), path_(path), tiff_(nullptr, TIFFClose) {
        memory_.in = &bytes;
        tiff_ = open_tiff(memory_, "r");
        if (!tiff_) unreadable("it has no page");
    }

    Photo read() {
        read_layout();
        measure_blocks();
        Photo photo;
        photo.format = "TIFF";
        photo.orientation = number(TIFFTAG_ORIENTATION, 1);
        if (photo.orientation < 1 || photo.orientation > 8) photo.orientation = 1;
        Image samples;
        samples.mat_create(static_cast<int>(layout_.rows), static_cast<int>(layout_.cols), layout_.kept(), 0);
        memory_.message[0] = '\0';  // about tags, which have been read as well as they could
        memory_.warnings_count = true;
        read_samples(samples);
        photo.pixels = to_bgr(std::move(samples));
        if (!TIFFLastDirectory(tiff_.get()))
            photo.warnings.emplace_back("has more pages than the first, which are not read");
        return photo;
    }

 private:
    /// @param reason  where libtiff gives none
    [[noreturn]] void unreadable(const char* reason) const {
        throw Failure(path_, std::string("not a readable TIFF (") +
                                 (*memory_.message ? memory_.message : reason) + ")");
    }
    [[noreturn]] void unsupported(const std::string& what) const {
        throw Failure(path_, "TIFFs " + what + " are not supported");
    }

    /// A tag of 16 bits.
    int number(uint32_t tag, int otherwise) const {
        uint16_t value = 0;
        return TIFFGetFieldDefaulted(tiff_.get(), tag, &value) ? value : otherwise;
    }

    void read_layout() {
        refuse_raw();
        uint32_t cols = 0, rows = 0;
        TIFFGetField(tiff_.get(), TIFFTAG_IMAGEWIDTH, &cols);
        TIFFGetField(tiff_.get(), TIFFTAG_IMAGELENGTH, &rows);
        require_size(path_, rows, cols);
        layout_.cols = cols;
        layout_.rows = rows;
        layout_.compression = number(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
        layout_.photometric = number(TIFFTAG_PHOTOMETRIC, -1);
        layout_.samples = number(TIFFTAG_SAMPLESPERPIXEL, 1);
        layout_.bits = number(TIFFTAG_BITSPERSAMPLE, 1);
        layout_.planes = number(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
        choose_colours();
        const int format = number(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
        if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID)
            unsupported("with samples that are not whole numbers from 0");
        const int bits = layout_.bits;
        const bool few = bits == 1 || bits == 2 || bits == 4;
        if (bits != 8 && (bits != 16 || is_palette()) && (!few || layout_.colours > 1))
            unsupported("of " + std::to_string(bits) + " bits a sample");
        constexpr int kMostOthers = 4;  // alpha, depth ...
        if (layout_.samples < layout_.colours || layout_.samples > layout_.colours + kMostOthers)
            unsupported("with " + std::to_string(layout_.samples) + " samples a pixel of this colour space");
        choose_alpha();
    }

    /// What cameras call TIFF: their first page is a thumbnail, or what the sensor saw.
    void refuse_raw() const {
        uint32_t kind = 0;
        TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_SUBFILETYPE, &kind);
        const void* version = nullptr;
        if (TIFFGetField(tiff_.get(), TIFFTAG_DNGVERSION, &version)) refuse_foreign(path_, "a DNG picture");
        const int photometric = number(TIFFTAG_PHOTOMETRIC, -1);
        if ((kind & FILETYPE_REDUCEDIMAGE) != 0 || photometric == PHOTOMETRIC_CFA)
            refuse_foreign(path_, "a raw camera picture");
    }

    bool is_palette() const { return layout_.photometric == PHOTOMETRIC_PALETTE; }

    void choose_colours() {
        switch (layout_.photometric) {
            case PHOTOMETRIC_MINISWHITE:
            case PHOTOMETRIC_MINISBLACK:
            case PHOTOMETRIC_PALETTE:
                return;
            case PHOTOMETRIC_RGB:
                layout_.colours = 3;
                return;
            case PHOTOMETRIC_YCBCR:
                // The decoder of JPEG makes RGB of it; nothing else in use stores it.
                if (layout_.compression != COMPRESSION_JPEG) break;
                TIFFSetField(tiff_.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
                layout_.colours = 3;
                return;
            case PHOTOMETRIC_SEPARATED:
                if (number(TIFFTAG_INKSET, INKSET_CMYK) != INKSET_CMYK) break;
                layout_.colours = 4;
                return;
            case -1:
                unsupported("that do not name their colour space");
            default:
                break;
        }
        unsupported("of colour space " + std::to_string(layout_.photometric));
    }

    /// Alpha is the first sample after the colours, if any; on inks and palettes it is not looked for.
    void choose_alpha() {
        uint16_t n = 0;
        const uint16_t* kinds = nullptr;
        TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_EXTRASAMPLES, &n, &kinds);
        if (layout_.colours == 4 || is_palette() || layout_.samples <= layout_.colours || n == 0) return;
        if (kinds[0] == EXTRASAMPLE_ASSOCALPHA || kinds[0] == EXTRASAMPLE_UNASSALPHA)
            layout_.alpha = kinds[0];
    }

    /// Extents of strips or tiles, which must be such as the file can hold.
    void measure_blocks() {
        tiled_ = TIFFIsTiled(tiff_.get()) != 0;
        uint32_t cols = static_cast<uint32_t>(layout_.cols), rows = static_cast<uint32_t>(layout_.rows);
        if (tiled_) {
            TIFFGetField(tiff_.get(), TIFFTAG_TILEWIDTH, &cols);
            TIFFGetField(tiff_.get(), TIFFTAG_TILELENGTH, &rows);
        } else {
            uint32_t strip_rows = 0;
            TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_ROWSPERSTRIP, &strip_rows);
            rows = std::min(rows, strip_rows);
        }
        block_cols_ = cols;
        block_rows_ = rows;
        row_bytes_ = tiled_ ? TIFFTileRowSize(tiff_.get()) : TIFFScanlineSize(tiff_.get());
        block_bytes_ = tiled_ ? TIFFTileSize(tiff_.get()) : TIFFVStripSize(tiff_.get(), rows);
        const int64_t block_samples = block_cols_ * (layout_.planes ? 1 : layout_.samples);
        if (cols < 1 || rows < 1 || block_samples * layout_.bits > 8 * row_bytes_ ||
            block_bytes_ / row_bytes_ < block_rows_)
            unreadable("its strips or tiles have no extents");
        if (block_bytes_ > 8 * kMostPixels) unreadable("its strips or tiles are too large");
        const int64_t stored = layout_.cols * (layout_.planes ? 1 : layout_.samples);
        const int64_t most = most_bytes();
        if (block_bytes_ > most || layout_.rows > most / ((stored * layout_.bits + 7) / 8))
            throw Failure(path_, "truncated TIFF (too short for its " + std::to_string(layout_.cols) + " x " +
                                     std::to_string(layout_.rows) + " pixels)");
    }

    /// The most bytes of samples that the file can hold.
    int64_t most_bytes() const {
        const auto n = static_cast<int64_t>(bytes_.size());
        switch (layout_.compression) {
            case COMPRESSION_NONE:
                return n;
            case COMPRESSION_PACKBITS:
                return n * 64;  // a run of 128 in 2 bytes
            case COMPRESSION_CCITTRLE:
            case COMPRESSION_CCITTRLEW:
            case COMPRESSION_CCITTFAX3:
            case COMPRESSION_CCITTFAX4:
                return std::min(8 * n, kMostPixels) * row_bytes_;  // a bit for a row like the one above
            case COMPRESSION_LZW:
                return n * 4096;  // strings that grow by a byte up to that length, in 12 bits each
            case COMPRESSION_JPEG:
                return n * 512 * 3;  // a bit for 8 x 8 pixels
            case COMPRESSION_DEFLATE:
            case COMPRESSION_ADOBE_DEFLATE:
                return n * 1032;
            default:
                unsupported("with compression " + std::to_string(layout_.compression));
        }
    }

    void read_samples(Image& samples) {
        const std::unique_ptr<unsigned char[]> block(new unsigned char[static_cast<size_t>(block_bytes_)]);
        const int planes = layout_.planes ? layout_.kept() : 1;
        for (int plane = 0; plane < planes; ++plane)
            for (int64_t row = 0; row < layout_.rows; row += block_rows_)
                for (int64_t col = 0; col < layout_.cols; col += block_cols_) {
                    read_block(block.get(), row, col, plane);
                    unpack_block(block.get(), row, col, plane, samples);
                }
    }

    void read_block(unsigned char* block, int64_t row, int64_t col, int plane) {
        const auto x = static_cast<uint32_t>(col), y = static_cast<uint32_t>(row);
        const auto sample = static_cast<uint16_t>(plane);
        const int64_t rows = std::min(block_rows_, layout_.rows - row);
        tmsize_t have = 0;
        if (tiled_)
            have = TIFFReadEncodedTile(tiff_.get(), TIFFComputeTile(tiff_.get(), x, y, 0, sample), block,
                                       block_bytes_);
        else
            have = TIFFReadEncodedStrip(tiff_.get(), TIFFComputeStrip(tiff_.get(), y, sample), block,
                                        block_bytes_);
        if (have < rows * row_bytes_ || *memory_.message) unreadable("a strip or tile is too short");
    }

    /// Puts the part of a block that lies on the picture where it belongs.
    void unpack_block(const unsigned char* block, int64_t row, int64_t col, int plane, Image& samples) const {
        const int64_t rows = std::min(block_rows_, layout_.rows - row);
        const int64_t cols = std::min(block_cols_, layout_.cols - col);
        const int stored = layout_.planes ? 1 : layout_.samples;
        const int kept = layout_.planes ? 1 : layout_.kept();
        for (int64_t y = 0; y < rows; ++y) {
            const unsigned char* const from = block + y * row_bytes_;
            unsigned char* to = samples.data + ((row + y) * layout_.cols + col) * samples.channels + plane;
            for (int64_t x = 0; x < cols; ++x, to += samples.channels)
                for (int k = 0; k < kept; ++k) to[k] = sample(from, x * stored + k);
        }
    }

    /// Sample i of a row in 8 bits; an index of a palette as it is.
    unsigned char sample(const unsigned char* row, int64_t i) const {
        const int bits = layout_.bits;
        if (bits == 8) return row[i];
        if (bits == 16) {
            uint16_t value = 0;
            std::memcpy(&value, row + 2 * i, sizeof value);  // in this machine's order, by libtiff
            return to_8_bits(value, 65535);
        }
        const unsigned most = (1u << bits) - 1;
        const int shift = 8 - bits - static_cast<int>(i * bits % 8);
        const unsigned value = row[i * bits / 8] >> shift & most;
        return is_palette() ? static_cast<unsigned char>(value) : to_8_bits(value, most);
    }

    Image to_bgr(Image samples) const {
        const size_t n = static_cast<size_t>(samples.rows) * static_cast<size_t>(samples.cols);
        if (is_palette()) return looked_up(samples);
        if (layout_.colours == 4) {
            Image light;
            light.mat_create(samples.rows, samples.cols, 3, 0);
            constexpr unsigned kNoInk = 0;
            bgr_from_cmyk(samples.data, light.data, n, kNoInk);
            return light;
        }
        if (layout_.photometric == PHOTOMETRIC_MINISWHITE)
            for (size_t i = 0; i < n; ++i) {
                unsigned char& level = samples.data[i * static_cast<size_t>(samples.channels)];
                level = static_cast<unsigned char>(255 - level);
            }
        if (layout_.colours == 3) swap_red_and_blue(samples.data, n, samples.channels);
        if (layout_.alpha == EXTRASAMPLE_ASSOCALPHA) return multiplied_on_white(samples);
        if (layout_.alpha == EXTRASAMPLE_UNASSALPHA) return on_white(samples);
        return samples;
    }

    Image looked_up(const Image& indices) const {
        uint16_t* map[3] = {};  // red, green, blue
        if (!TIFFGetField(tiff_.get(), TIFFTAG_COLORMAP, &map[0], &map[1], &map[2]))
            unreadable("its palette is missing");
        Image out;
        out.mat_create(indices.rows, indices.cols, 3, 0);
        const int64_t n = static_cast<int64_t>(indices.rows) * indices.cols;
        for (int64_t i = 0; i < n; ++i)
            for (int k = 0; k < 3; ++k) out.data[3 * i + k] = to_8_bits(map[2 - k][indices.data[i]], 65535);
        return out;
    }

    const Bytes& bytes_;
    const std::string& path_;
    Memory memory_;
    Tiff tiff_;
    Layout layout_;
    bool tiled_ = false;
    int64_t block_cols_ = 0;
    int64_t block_rows_ = 0;
    int64_t row_bytes_ = 0;    ///< of a block
    int64_t block_bytes_ = 0;  ///< of a whole one
};

// ---- Writing ----

void write_strips(TIFF* tiff, const Image& image, int64_t strip_rows) {
    const int64_t row_bytes = static_cast<int64_t>(image.cols) * image.channels;
    Bytes strip;
    uint32_t number = 0;
    for (int64_t row = 0; row < image.rows; row += strip_rows) {
        const int64_t n = std::min(strip_rows, image.rows - row) * row_bytes;
        const unsigned char* const from = image.data + row * row_bytes;
        strip.assign(from, from + n);
        if (image.channels == 3) swap_red_and_blue(strip.data(), strip.size() / 3, 3);
        if (TIFFWriteEncodedStrip(tiff, number++, strip.data(), n) != n) throw std::bad_alloc();
    }
}

}  // namespace

Photo decode_tiff(const Bytes& bytes, const std::string& path) {
    return Page(bytes, path).read();
}

Bytes encode_tiff(const Image& image, int dots_per_inch) {
    constexpr int64_t kStripBytes = 1 << 18;
    const int64_t row_bytes = static_cast<int64_t>(image.cols) * image.channels;
    const int64_t strip_rows = std::clamp<int64_t>(kStripBytes / row_bytes, 1, image.rows);
    Bytes out;
    Memory memory;
    memory.out = &out;
    {
        const Tiff tiff = open_tiff(memory, "wl");  // l: the same bytes on every machine
        // A valid image gives libtiff no other reason to fail, neither here nor below.
        if (!tiff) throw std::bad_alloc();
        const auto set = [&](uint32_t tag, auto value) { TIFFSetField(tiff.get(), tag, value); };
        set(TIFFTAG_IMAGEWIDTH, image.cols);
        set(TIFFTAG_IMAGELENGTH, image.rows);
        set(TIFFTAG_BITSPERSAMPLE, 8);
        set(TIFFTAG_SAMPLESPERPIXEL, image.channels);
        set(TIFFTAG_PHOTOMETRIC, image.channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
        set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        set(TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
        set(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        set(TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(strip_rows));
        if (dots_per_inch > 0) {
            set(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
            set(TIFFTAG_XRESOLUTION, static_cast<double>(dots_per_inch));
            set(TIFFTAG_YRESOLUTION, static_cast<double>(dots_per_inch));
        }
        write_strips(tiff.get(), image, strip_rows);
    }
    if (*memory.message) throw std::bad_alloc();
    return out;
}

}  // namespace docprep
