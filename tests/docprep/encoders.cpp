#include "encoders.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
//
#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>
#include <webp/encode.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "test_files.h"

using docprep::Bytes;

Bytes make_jpeg(const JpegRequest& request, const Samples& samples) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* out = nullptr;
    unsigned long n = 0;
    jpeg_mem_dest(&info, &out, &n);

    info.image_width = static_cast<JDIMENSION>(request.cols);
    info.image_height = static_cast<JDIMENSION>(request.rows);
    const auto colours = [&](int components, J_COLOR_SPACE in, J_COLOR_SPACE stored) {
        info.input_components = components;
        info.in_color_space = in;
        jpeg_set_defaults(&info);
        jpeg_set_colorspace(&info, stored);
    };
    switch (request.kind) {
        case JpegKind::kGray:
            colours(1, JCS_GRAYSCALE, JCS_GRAYSCALE);
            break;
        case JpegKind::kRgb:
            colours(3, JCS_RGB, JCS_RGB);
            break;
        case JpegKind::kYcc:
            colours(3, JCS_RGB, JCS_YCbCr);
            break;
        case JpegKind::kCmyk:
            colours(4, JCS_CMYK, JCS_CMYK);
            break;
        case JpegKind::kYcck:
            colours(4, JCS_CMYK, JCS_YCCK);
            break;
        case JpegKind::kUnnamed2:
            colours(2, JCS_UNKNOWN, JCS_UNKNOWN);
            break;
    }
    if (!request.adobe_marker) info.write_Adobe_marker = FALSE;
    for (int k = 0; k < info.num_components; ++k)
        info.comp_info[k].h_samp_factor = info.comp_info[k].v_samp_factor = 1;
    jpeg_set_quality(&info, request.quality, TRUE);
    if (request.progressive) jpeg_simple_progression(&info);
    if (request.arithmetic) info.arith_code = TRUE;
    std::vector<jpeg_scan_info> scans(static_cast<size_t>(info.num_components));
    if (request.one_scan_a_component) {
        for (int k = 0; k < info.num_components; ++k) {
            jpeg_scan_info& scan = scans[static_cast<size_t>(k)];
            scan.comps_in_scan = 1;
            scan.component_index[0] = k;
            scan.Se = 63;
        }
        info.scan_info = scans.data();
        info.num_scans = info.num_components;
    }

    jpeg_start_compress(&info, TRUE);
    if (!request.exif.empty())
        jpeg_write_marker(&info, JPEG_APP0 + 1, request.exif.data(),
                          static_cast<unsigned>(request.exif.size()));
    Bytes row(static_cast<size_t>(request.cols * info.input_components));
    for (int y = 0; y < request.rows; ++y) {
        size_t i = 0;
        for (int x = 0; x < request.cols; ++x)
            for (int k = 0; k < info.input_components; ++k)
                row[i++] = static_cast<unsigned char>(samples(y, x, k));
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&info, &pointer, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    Bytes jpeg(out, out + n);
    std::free(out);
    return jpeg;
}

namespace {

void append_bytes(png_structp png, png_bytep from, size_t n) {
    Bytes& out = *static_cast<Bytes*>(png_get_io_ptr(png));
    out.insert(out.end(), from, from + n);
}

void flush_nothing(png_structp) {}

}  // namespace

Bytes make_png(const PngRequest& request, const Samples& samples) {
    Bytes out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &out, append_bytes, flush_nothing);
    png_set_IHDR(png, info, static_cast<png_uint_32>(request.cols), static_cast<png_uint_32>(request.rows),
                 request.depth, request.colour_type,
                 request.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!request.palette.empty()) {
        std::vector<png_color> colours;
        Bytes alphas;
        bool opaque = true;
        for (const Rgba& colour : request.palette) {
            colours.push_back({static_cast<png_byte>(colour.r), static_cast<png_byte>(colour.g),
                               static_cast<png_byte>(colour.b)});
            alphas.push_back(static_cast<png_byte>(colour.a));
            opaque = opaque && colour.a == 255;
        }
        png_set_PLTE(png, info, colours.data(), static_cast<int>(colours.size()));
        if (!opaque) png_set_tRNS(png, info, alphas.data(), static_cast<int>(alphas.size()), nullptr);
    }
    if (!request.transparent.empty()) {
        png_color_16 colour{};
        colour.gray = colour.red = static_cast<png_uint_16>(request.transparent[0]);
        if (request.transparent.size() == 3) {
            colour.green = static_cast<png_uint_16>(request.transparent[1]);
            colour.blue = static_cast<png_uint_16>(request.transparent[2]);
        }
        png_set_tRNS(png, info, nullptr, 0, &colour);
    }
    if (request.gamma) png_set_gAMA(png, info, 1.0);
    Bytes exif = request.exif;
    if (!exif.empty()) png_set_eXIf_1(png, info, static_cast<png_uint_32>(exif.size()), exif.data());
    png_write_info(png, info);

    const int channels = png_get_channels(png, info);
    const size_t row_bytes = png_get_rowbytes(png, info);
    const int passes = request.interlaced ? png_set_interlace_handling(png) : 1;
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < request.rows; ++y) {
            Bytes row(row_bytes);
            size_t bit = 0;  // samples are packed from the highest bit down
            for (int x = 0; x < request.cols; ++x) {
                for (int k = 0; k < channels; ++k) {
                    const int sample = samples(y, x, k);
                    for (int b = request.depth - 1; b >= 0; --b, ++bit)
                        if (sample >> b & 1)
                            row[bit / 8] = static_cast<unsigned char>(row[bit / 8] | 128 >> bit % 8);
                }
            }
            png_write_row(png, row.data());
        }
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return out;
}

int tiff_colour(int index, int k) {
    return (index * 53 + k * 85) % 256 * 257;
}

namespace {

/// The samples of a strip or tile from (row, col) on, packed from the highest bit down.
Bytes tiff_block(const TiffRequest& request, const Samples& samples, int row, int col, int rows, int cols,
                 int plane) {
    const int stored = request.planes ? 1 : request.samples;
    const size_t row_bytes = static_cast<size_t>((cols * stored * request.bits + 7) / 8);
    Bytes block(row_bytes * static_cast<size_t>(rows));
    for (int y = 0; y < rows; ++y)
        for (int i = 0; i < cols * stored; ++i) {
            unsigned char* const to = block.data() + row_bytes * static_cast<size_t>(y);
            const int sample = samples(row + y, col + i / stored, request.planes ? plane : i % stored);
            if (request.bits == 16) {
                const auto value = static_cast<uint16_t>(sample);
                std::memcpy(to + 2 * i, &value, 2);
                continue;
            }
            for (int b = 0; b < request.bits; ++b) {
                const int bit = i * request.bits + b;
                if (sample >> (request.bits - 1 - b) & 1)
                    to[bit / 8] = static_cast<unsigned char>(to[bit / 8] | 128 >> bit % 8);
            }
        }
    return block;
}

void set_tiff_fields(TIFF* tiff, const TiffRequest& request) {
    const auto set = [&](uint32_t tag, int value) { TIFFSetField(tiff, tag, value); };
    set(TIFFTAG_SUBFILETYPE, request.subfile_type);
    set(TIFFTAG_IMAGEWIDTH, request.cols);
    set(TIFFTAG_IMAGELENGTH, request.rows);
    set(TIFFTAG_SAMPLESPERPIXEL, request.samples);
    set(TIFFTAG_BITSPERSAMPLE, request.bits);
    set(TIFFTAG_SAMPLEFORMAT, request.sample_format);
    set(TIFFTAG_PHOTOMETRIC, request.photometric);
    set(TIFFTAG_PLANARCONFIG, request.planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    set(TIFFTAG_COMPRESSION, request.compression);
    set(TIFFTAG_ORIENTATION, request.orientation);
    if (request.compression == COMPRESSION_JPEG) {
        set(TIFFTAG_JPEGQUALITY, 100);
        if (request.photometric == PHOTOMETRIC_YCBCR) set(TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    }
    if (request.tiles) {
        set(TIFFTAG_TILEWIDTH, 16);
        set(TIFFTAG_TILELENGTH, 16);
    } else {
        set(TIFFTAG_ROWSPERSTRIP, request.strip_rows);
    }
    if (request.alpha >= 0) {
        const auto kind = static_cast<uint16_t>(request.alpha);
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind);
    }
    if (request.dng_version) TIFFSetField(tiff, TIFFTAG_DNGVERSION, "\1\4\0\0");
    if (request.photometric == PHOTOMETRIC_PALETTE) {
        std::vector<uint16_t> map[3];
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 1 << request.bits; ++i)
                map[k].push_back(static_cast<uint16_t>(tiff_colour(i, k)));
        TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0].data(), map[1].data(), map[2].data());
    }
}

void write_tiff_blocks(TIFF* tiff, const TiffRequest& request, const Samples& samples) {
    const int block_rows = request.tiles ? 16 : request.strip_rows;
    const int block_cols = request.tiles ? 16 : request.cols;
    uint32_t number = 0;
    for (int plane = 0; plane < (request.planes ? request.samples : 1); ++plane)
        for (int row = 0; row < request.rows; row += block_rows)
            for (int col = 0; col < request.cols; col += block_cols, ++number) {
                const int rows = request.tiles ? 16 : std::min(block_rows, request.rows - row);
                Bytes block = tiff_block(request, samples, row, col, rows, block_cols, plane);
                const auto n = static_cast<tmsize_t>(block.size());
                const tmsize_t done = request.tiles ? TIFFWriteEncodedTile(tiff, number, block.data(), n)
                                                    : TIFFWriteEncodedStrip(tiff, number, block.data(), n);
                if (done != n) throw std::runtime_error("cannot write a TIFF");
            }
}

}  // namespace

Bytes make_tiff(const TiffRequest& request, const Samples& samples) {
    const TemporaryFolder folder;
    const std::string path = folder.path("made.tif");
    const TIFFErrorHandler warnings = TIFFSetWarningHandler(nullptr);  // of what is seldom written
    TIFF* tiff = TIFFOpen(path.c_str(), request.big_endian ? "wb" : "wl");
    for (int page = 0; page < request.pages; ++page) {
        set_tiff_fields(tiff, request);
        write_tiff_blocks(tiff, request, samples);
        TIFFWriteDirectory(tiff);
    }
    TIFFClose(tiff);
    TIFFSetWarningHandler(warnings);
    return bytes_of(text_of(path));
}

namespace {

void put_little_endian(Bytes& to, size_t number, int bytes) {
    for (int k = 0; k < bytes; ++k) to.push_back(static_cast<unsigned char>(number >> 8 * k));
}

void put_chunk(Bytes& to, const char* name, const Bytes& content) {
    to.insert(to.end(), name, name + 4);
    put_little_endian(to, content.size(), 4);
    to.insert(to.end(), content.begin(), content.end());
    if (content.size() % 2 != 0) to.push_back(0);
}

}  // namespace

Bytes make_webp(const WebpRequest& request, const Samples& samples) {
    Bytes pixels;
    for (int y = 0; y < request.rows; ++y)
        for (int x = 0; x < request.cols; ++x)
            for (int k = 0; k < 4; ++k)
                pixels.push_back(k < 3 || request.alpha ? static_cast<unsigned char>(samples(y, x, k)) : 255);
    unsigned char* made = nullptr;
    const int stride = 4 * request.cols;
    const size_t n = request.lossless
                         ? WebPEncodeLosslessRGBA(pixels.data(), request.cols, request.rows, stride, &made)
                         : WebPEncodeRGBA(pixels.data(), request.cols, request.rows, stride, 100, &made);
    const Bytes simple(made, made + n);
    WebPFree(made);
    if (request.exif.empty() && !request.film) return simple;

    Bytes features = {static_cast<unsigned char>((request.exif.empty() ? 0 : 8) | (request.film ? 2 : 0)), 0,
                      0, 0};
    put_little_endian(features, static_cast<size_t>(request.cols - 1), 3);
    put_little_endian(features, static_cast<size_t>(request.rows - 1), 3);
    Bytes content = {'W', 'E', 'B', 'P'};
    put_chunk(content, "VP8X", features);
    content.insert(content.end(), simple.begin() + 12, simple.end());
    if (!request.exif.empty()) put_chunk(content, "EXIF", request.exif);
    Bytes webp;
    put_chunk(webp, "RIFF", content);
    return webp;
}

Bytes tiff_with_entry(bool big_endian, int tag, int type, int value) {
    Bytes tiff;
    const auto put = [&](int number, int bytes) {
        for (int k = 0; k < bytes; ++k) {
            const int shift = 8 * (big_endian ? bytes - 1 - k : k);
            tiff.push_back(static_cast<unsigned char>(number >> shift & 255));
        }
    };
    put(big_endian ? 0x4d4d : 0x4949, 2);
    put(42, 2);
    put(8, 4);  // the directory follows
    put(1, 2);  // entries
    put(tag, 2);
    put(type, 2);
    put(1, 4);  // values
    if (type == 3) {
        put(value, 2);
        put(0, 2);
    } else {
        put(value, 4);
    }
    put(0, 4);  // no further directory
    return tiff;
}

Bytes exif_with_orientation(int orientation) {
    constexpr int kOrientation = 0x112;
    constexpr int kShort = 3;
    Bytes exif = {'E', 'x', 'i', 'f', 0, 0};
    const Bytes tiff = tiff_with_entry(true, kOrientation, kShort, orientation);
    exif.insert(exif.end(), tiff.begin(), tiff.end());
    return exif;
}

size_t find_marker(const Bytes& jpeg, int code, size_t from) {
    for (size_t i = from; i + 1 < jpeg.size(); ++i)
        if (jpeg[i] == 0xff && jpeg[i + 1] == code) return i;
    throw std::runtime_error("no such marker");
}

void patch_jpeg_size(Bytes& jpeg, int rows, int cols) {
    constexpr int kBaselineFrame = 0xc0;
    unsigned char* const extents = jpeg.data() + find_marker(jpeg, kBaselineFrame) + 5;
    extents[0] = static_cast<unsigned char>(rows >> 8);
    extents[1] = static_cast<unsigned char>(rows);
    extents[2] = static_cast<unsigned char>(cols >> 8);
    extents[3] = static_cast<unsigned char>(cols);
}

void patch_png_size(Bytes& png, uint32_t rows, uint32_t cols) {
    unsigned char* const chunk = png.data() + 12;  // "IHDR", 13 bytes, check sum
    png_save_uint_32(chunk + 4, cols);
    png_save_uint_32(chunk + 8, rows);
    png_save_uint_32(chunk + 17, static_cast<png_uint_32>(crc32(0, chunk, 17)));
}

Bytes gzip(const Bytes& content) {
    z_stream stream{};
    deflateInit2(&stream, 6, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY);
    Bytes out(deflateBound(&stream, content.size()));
    Bytes in = content;
    stream.next_in = in.data();
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}
