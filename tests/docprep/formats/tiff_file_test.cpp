#include "formats/tiff_file.h"

#include <gtest/gtest.h>
#include <tiff.h>

#include <cmath>
#include <random>

#include "base/failure.h"
#include "encoders.h"

using docprep::Bytes;
using docprep::Image;
using docprep::Photo;

namespace {

/// Every value of `bits` bits in the order of pixels, with different channels.
Samples counting(int bits) {
    return [bits](int row, int col, int k) {
        const int step = bits == 16 ? 7919 : 37;
        return ((row * 7 + col) * step + k * 5003) & ((1 << bits) - 1);
    };
}

int to_8_bits(int sample, int bits) {
    return static_cast<int>(std::lround(sample * 255.0 / ((1 << bits) - 1)));
}

std::string refusal(const Bytes& bytes) {
    try {
        docprep::decode_tiff(bytes, "photo");
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ("photo", failure.file());
        return failure.what();
    }
}

std::string refusal(const TiffRequest& request) {
    return refusal(make_tiff(request, counting(std::min(request.bits, 16))));
}

void expect_pixels(const TiffRequest& request, const Samples& made, int channels, const Samples& expected,
                   int tolerance = 0) {
    const Photo photo = docprep::decode_tiff(make_tiff(request, made), "photo");
    EXPECT_STREQ("TIFF", photo.format);
    ASSERT_EQ(request.rows, photo.pixels.rows);
    ASSERT_EQ(request.cols, photo.pixels.cols);
    ASSERT_EQ(channels, photo.pixels.channels);
    for (int row = 0; row < request.rows; ++row)
        for (int col = 0; col < request.cols; ++col)
            for (int k = 0; k < channels; ++k)
                ASSERT_NEAR(expected(row, col, k),
                            photo.pixels.data[(row * request.cols + col) * channels + k], tolerance)
                    << "row " << row << " col " << col << " channel " << k;
}

TiffRequest rgb() {
    TiffRequest request;
    request.photometric = PHOTOMETRIC_RGB;
    request.samples = 3;
    return request;
}

TiffRequest with(TiffRequest request, int TiffRequest::*member, int value) {
    request.*member = value;
    return request;
}

/// One bit a pixel, as faxes have it: dark is 1.
TiffRequest bilevel() {
    TiffRequest request;
    request.photometric = PHOTOMETRIC_MINISWHITE;
    request.bits = 1;
    request.cols = 40;
    request.rows = 20;
    return request;
}

int stripes(int row, int col, int) {
    return (row / 3 + col / 5) % 2;
}

}  // namespace

TEST(tiff_file, gray_of_every_depth_is_scaled_to_8_bits) {
    for (const bool big_endian : {false, true})
        for (const int bits : {1, 2, 4, 8, 16}) {
            SCOPED_TRACE(bits);
            TiffRequest request;
            request.big_endian = big_endian;
            request.bits = bits;
            const Samples samples = counting(bits);
            expect_pixels(request, samples, 1,
                          [&](int row, int col, int) { return to_8_bits(samples(row, col, 0), bits); });
            request.photometric = PHOTOMETRIC_MINISWHITE;
            expect_pixels(request, samples, 1,
                          [&](int row, int col, int) { return 255 - to_8_bits(samples(row, col, 0), bits); });
        }
}

TEST(tiff_file, colours_come_as_blue_green_red) {
    for (const int bits : {8, 16}) {
        const Samples samples = counting(bits);
        expect_pixels(with(rgb(), &TiffRequest::bits, bits), samples, 3,
                      [&](int row, int col, int k) { return to_8_bits(samples(row, col, 2 - k), bits); });
    }
}

TEST(tiff_file, strips_tiles_and_planes_hold_the_same_pixels) {
    for (const bool tiles : {false, true})
        for (const bool planes : {false, true})
            for (const int bits : {8, 16}) {
                TiffRequest request = with(rgb(), &TiffRequest::bits, bits);
                request.rows = 37;
                request.cols = 50;
                request.strip_rows = 8;
                request.tiles = tiles;
                request.planes = planes;
                const Samples samples = counting(bits);
                expect_pixels(request, samples, 3, [&](int row, int col, int k) {
                    return to_8_bits(samples(row, col, 2 - k), bits);
                });
            }
}

TEST(tiff_file, palettes_are_looked_up) {
    for (const int bits : {1, 2, 4, 8}) {
        TiffRequest request;
        request.photometric = PHOTOMETRIC_PALETTE;
        request.bits = bits;
        const Samples samples = counting(bits);
        expect_pixels(request, samples, 3, [&](int row, int col, int k) {
            return tiff_colour(samples(row, col, 0), 2 - k) / 257;
        });
    }
}

TEST(tiff_file, inks_become_light) {
    TiffRequest request;
    request.photometric = PHOTOMETRIC_SEPARATED;
    request.samples = 4;
    const Samples inks = counting(8);
    expect_pixels(request, inks, 3, [&](int row, int col, int k) {
        return ((255 - inks(row, col, 2 - k)) * (255 - inks(row, col, 3)) + 127) / 255;
    });
}

TEST(tiff_file, transparency_lies_on_white) {
    const Samples samples = counting(8);
    for (const int colours : {1, 3}) {
        TiffRequest request = colours == 3 ? rgb() : TiffRequest();
        request.samples = colours + 1;
        const auto colour = [&](int row, int col, int k) {
            return samples(row, col, colours == 3 ? 2 - k : 0);
        };
        const auto alpha = [&](int row, int col) { return samples(row, col, colours); };
        expect_pixels(
            with(request, &TiffRequest::alpha, EXTRASAMPLE_UNASSALPHA), samples, colours,
            [&](int row, int col, int k) {
                return (colour(row, col, k) * alpha(row, col) + 255 * (255 - alpha(row, col)) + 127) / 255;
            });
        expect_pixels(with(request, &TiffRequest::alpha, EXTRASAMPLE_ASSOCALPHA), samples, colours,
                      [&](int row, int col, int k) {
                          return std::min(255, colour(row, col, k) + 255 - alpha(row, col));
                      });
        expect_pixels(with(request, &TiffRequest::alpha, EXTRASAMPLE_UNSPECIFIED), samples, colours, colour);
    }
}

TEST(tiff_file, compressions_in_use_are_read) {
    const auto light = [](int row, int col, int k) { return 255 * (1 - stripes(row, col, k)); };
    for (const int compression :
         {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_PACKBITS, COMPRESSION_DEFLATE,
          COMPRESSION_ADOBE_DEFLATE, COMPRESSION_CCITTRLE, COMPRESSION_CCITTFAX3, COMPRESSION_CCITTFAX4}) {
        SCOPED_TRACE(compression);
        expect_pixels(with(bilevel(), &TiffRequest::compression, compression), stripes, 1, light);
    }
}

TEST(tiff_file, jpeg_in_strips_is_read) {
    const auto slopes = [](int row, int col, int k) { return 60 + row * 2 + col * 3 + 20 * k; };
    for (const int photometric : {PHOTOMETRIC_RGB, PHOTOMETRIC_YCBCR}) {
        TiffRequest request = with(rgb(), &TiffRequest::compression, COMPRESSION_JPEG);
        request.photometric = photometric;
        request.rows = request.cols = 32;
        request.strip_rows = 16;
        expect_pixels(
            request, slopes, 3, [&](int row, int col, int k) { return slopes(row, col, 2 - k); }, 4);
    }
}

TEST(tiff_file, the_orientation_is_found) {
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Bytes tiff = make_tiff(with({}, &TiffRequest::orientation, orientation), counting(8));
        EXPECT_EQ(orientation, docprep::decode_tiff(tiff, "photo").orientation);
    }
}

TEST(tiff_file, further_pages_are_warned_of) {
    EXPECT_TRUE(docprep::decode_tiff(make_tiff({}, counting(8)), "photo").warnings.empty());
    const Bytes two = make_tiff(with({}, &TiffRequest::pages, 2), counting(8));
    EXPECT_EQ(std::vector<std::string>{"has more pages than the first, which are not read"},
              docprep::decode_tiff(two, "photo").warnings);
}

TEST(tiff_file, raw_camera_pictures_are_named) {
    TiffRequest dng;
    dng.dng_version = true;
    EXPECT_EQ("is a DNG picture, which is not read; convert it to JPEG or PNG first", refusal(dng));
    const std::string raw = "is a raw camera picture, which is not read; convert it to JPEG or PNG first";
    EXPECT_EQ(raw, refusal(with({}, &TiffRequest::photometric, PHOTOMETRIC_CFA)));
    EXPECT_EQ(raw, refusal(with(rgb(), &TiffRequest::subfile_type, FILETYPE_REDUCEDIMAGE)));
}

TEST(tiff_file, other_kinds_are_refused_by_name) {
    TiffRequest real = with({}, &TiffRequest::sample_format, SAMPLEFORMAT_IEEEFP);
    real.bits = 16;
    EXPECT_EQ("TIFFs with samples that are not whole numbers from 0 are not supported", refusal(real));
    EXPECT_EQ("TIFFs of 12 bits a sample are not supported", refusal(with({}, &TiffRequest::bits, 12)));
    EXPECT_EQ("TIFFs of 4 bits a sample are not supported", refusal(with(rgb(), &TiffRequest::bits, 4)));
    EXPECT_EQ("TIFFs with 2 samples a pixel of this colour space are not supported",
              refusal(with(rgb(), &TiffRequest::samples, 2)));
    EXPECT_EQ("TIFFs of colour space 8 are not supported",
              refusal(with(rgb(), &TiffRequest::photometric, PHOTOMETRIC_CIELAB)));
    EXPECT_EQ("TIFFs with compression 34925 are not supported",
              refusal(with({}, &TiffRequest::compression, COMPRESSION_LZMA)));
}

TEST(tiff_file, damaged_fax_lines_are_not_made_up) {
    for (const int compression : {COMPRESSION_CCITTFAX3, COMPRESSION_CCITTFAX4}) {
        TiffRequest request = with(bilevel(), &TiffRequest::compression, compression);
        request.strip_rows = 20;
        Bytes tiff = make_tiff(request, stripes);
        std::fill(tiff.begin() + 12, tiff.begin() + 24, static_cast<unsigned char>(0));
        EXPECT_EQ(0u, refusal(tiff).find("not a readable TIFF (")) << refusal(tiff);
    }
}

TEST(tiff_file, truncated_and_damaged_files_give_pixels_or_one_line_and_print_nothing) {
    testing::internal::CaptureStderr();
    std::mt19937 random(5);
    for (const int compression : {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE}) {
        const Bytes whole = make_tiff(with(rgb(), &TiffRequest::compression, compression), counting(8));
        for (size_t n = 0; n < whole.size() - 20; n += 3)
            EXPECT_NE("", refusal(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(n)))) << n;
        int refused = 0;
        for (int round = 0; round < 1000; ++round) {
            Bytes damaged = whole;
            for (int k = 0; k < 4; ++k)
                damaged[random() % damaged.size()] ^= static_cast<unsigned char>(1u << random() % 8);
            const std::string reason = refusal(damaged);
            EXPECT_EQ(std::string::npos, reason.find('\n')) << reason;
            refused += reason.empty() ? 0 : 1;
        }
        EXPECT_GT(refused, 100);
    }
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(tiff_file, extents_that_the_file_cannot_hold_are_refused) {
    Bytes tiff = make_tiff(with({}, &TiffRequest::compression, COMPRESSION_ADOBE_DEFLATE), counting(8));
    const auto patch = [&](int tag, int value) {
        const auto low = static_cast<unsigned char>(tag), high = static_cast<unsigned char>(tag >> 8);
        const Bytes entry = {low, high, TIFF_SHORT, 0};
        const auto found = std::search(tiff.begin() + 8, tiff.end(), entry.begin(), entry.end());
        for (int k = 0; k < 4; ++k) found[8 + k] = static_cast<unsigned char>(k < 2 ? value >> 8 * k : 0);
    };
    patch(TIFFTAG_IMAGEWIDTH, 16384);
    patch(TIFFTAG_IMAGELENGTH, 16384);
    EXPECT_EQ("truncated TIFF (too short for its 16384 x 16384 pixels)", refusal(tiff));
    patch(TIFFTAG_IMAGEWIDTH, 30000);
    patch(TIFFTAG_IMAGELENGTH, 30000);
    EXPECT_EQ("30000 x 30000 pixels are too many (limit 256 Mi)", refusal(tiff));
    patch(TIFFTAG_IMAGEWIDTH, 0);
    EXPECT_NE("", refusal(tiff));
}

TEST(tiff_file, what_is_encoded_is_decoded_again) {
    for (const int channels : {1, 3}) {
        Image image;
        image.mat_create(700, 401, channels, 0);  // several strips
        const int n = 700 * 401 * channels;
        for (int i = 0; i < n; ++i) image.data[i] = static_cast<unsigned char>(i * 31 + i / 991);
        const Bytes tiff = docprep::encode_tiff(image, 300);
        EXPECT_EQ(tiff, docprep::encode_tiff(image, 300));
        const Photo photo = docprep::decode_tiff(tiff, "photo");
        ASSERT_EQ(700, photo.pixels.rows);
        ASSERT_EQ(401, photo.pixels.cols);
        ASSERT_EQ(channels, photo.pixels.channels);
        EXPECT_TRUE(std::equal(image.data, image.data + n, photo.pixels.data));
    }
}
