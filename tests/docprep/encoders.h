// Makes the picture files that tests read.
#ifndef DOCPREP_ENCODERS_H
#define DOCPREP_ENCODERS_H

#include <functional>
#include <vector>

#include "formats/photo.h"

/// Sample k of the pixel at (row, col).
using Samples = std::function<int(int row, int col, int k)>;

/// Colour spaces as JPEG files have them.
enum class JpegKind { kGray, kRgb, kYcc, kCmyk, kYcck, kUnnamed2 };

struct JpegRequest {
    JpegKind kind = JpegKind::kYcc;
    int rows = 16;
    int cols = 16;
    int quality = 100;
    bool progressive = false;
    bool arithmetic = false;
    bool one_scan_a_component = false;
    bool adobe_marker = true;  ///< CMYK and YCCK only
    docprep::Bytes exif;       ///< content of an APP1 segment; none when empty
};

/// Samples are R, G, B for kRgb and kYcc, C, M, Y, K as stored for kCmyk and kYcck. No chroma subsampling.
docprep::Bytes make_jpeg(const JpegRequest& request, const Samples& samples);

/// A colour with alpha.
struct Rgba {
    int r, g, b, a;
};

struct PngRequest {
    int colour_type = 0;  ///< of libpng
    int depth = 8;
    int rows = 5;
    int cols = 7;
    bool interlaced = false;
    std::vector<Rgba> palette;     ///< for the palette type; written with tRNS when an alpha is not 255
    std::vector<int> transparent;  ///< the one transparent grey, or R, G and B; none when empty
    bool gamma = false;            ///< adds a gAMA chunk that asks for a strong correction
    docprep::Bytes exif;           ///< content of eXIf, from the TIFF header on
};

/// Samples have `depth` bits: grey, index, or R, G, B, and then alpha.
docprep::Bytes make_png(const PngRequest& request, const Samples& samples);

/// Numbers of libtiff's header, which this one leaves out.
struct TiffRequest {
    int photometric = 1;
    int samples = 1;  ///< a pixel
    int bits = 8;     ///< a sample
    int rows = 5;
    int cols = 7;
    int compression = 1;
    int strip_rows = 2;
    bool tiles = false;   ///< of 16 x 16 instead of strips
    bool planes = false;  ///< each sample of all pixels by itself
    bool big_endian = false;
    int alpha = -1;  ///< the kind of the last sample if it is no colour: 1 multiplied, 2 not, 0 not alpha
    int orientation = 1;
    int sample_format = 1;
    int subfile_type = 0;
    bool dng_version = false;
    int pages = 1;
};

/// Samples have `bits` bits; JPEG compression (7) takes R, G, B for YCbCr. Index i of a palette
/// (photometric 3) stands for tiff_colour(i, k), k from red on, in 16 bits.
docprep::Bytes make_tiff(const TiffRequest& request, const Samples& samples);
int tiff_colour(int index, int k);

struct WebpRequest {
    int rows = 5;
    int cols = 7;
    bool lossless = true;
    bool alpha = false;
    bool film = false;    ///< only says that it is one
    docprep::Bytes exif;  ///< content of an EXIF chunk; none when empty
};

/// Samples are R, G, B and then alpha.
docprep::Bytes make_webp(const WebpRequest& request, const Samples& samples);

/// A TIFF header and a directory with one entry, little- or big-endian.
docprep::Bytes tiff_with_entry(bool big_endian, int tag, int type, int value);

/// The same behind the "Exif" signature of JPEG files.
docprep::Bytes exif_with_orientation(int orientation);

/// Sets the extents in a JPEG's frame header or a PNG's IHDR (whose check sum is repaired).
void patch_jpeg_size(docprep::Bytes& jpeg, int rows, int cols);
void patch_png_size(docprep::Bytes& png, uint32_t rows, uint32_t cols);

/// Position of a JPEG marker 0xff `code` from `from` on, which must exist.
size_t find_marker(const docprep::Bytes& jpeg, int code, size_t from = 0);

docprep::Bytes gzip(const docprep::Bytes& content);

#endif  // DOCPREP_ENCODERS_H
