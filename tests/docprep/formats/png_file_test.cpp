#include "formats/png_file.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstring>

#include "base/failure.h"
#include "encoders.h"

using docprep::Bytes;
using docprep::Image;
using docprep::Photo;

namespace {

/// Every value of `depth` bits in a 5 x 7 picture's order, with different channels.
Samples counting(int depth) {
    return [depth](int row, int col, int k) {
        const int step = depth == 16 ? 7919 : 37;
        return ((row * 7 + col) * step + k * 5003) & ((1 << depth) - 1);
    };
}

int to_8_bits(int sample, int depth) {
    return static_cast<int>(std::lround(sample * 255.0 / ((1 << depth) - 1)));
}

int on_white(int sample, int alpha) {
    return static_cast<int>(std::lround((sample * alpha + 255.0 * (255 - alpha)) / 255));
}

void expect_pixels(const Bytes& png, int channels, const Samples& expected) {
    const Photo photo = docprep::decode_png(png, "photo");
    EXPECT_STREQ("PNG", photo.format);
    ASSERT_EQ(5, photo.pixels.rows);
    ASSERT_EQ(7, photo.pixels.cols);
    ASSERT_EQ(channels, photo.pixels.channels);
    for (int row = 0; row < 5; ++row)
        for (int col = 0; col < 7; ++col)
            for (int k = 0; k < channels; ++k)
                ASSERT_EQ(expected(row, col, k), photo.pixels.data[(row * 7 + col) * channels + k])
                    << "row " << row << " col " << col << " channel " << k;
}

PngRequest request_of(int type, int depth, bool interlaced) {
    PngRequest request;
    request.colour_type = type;
    request.depth = depth;
    request.interlaced = interlaced;
    return request;
}

}  // namespace

TEST(png_file, gray_of_every_depth_is_scaled_to_8_bits) {
    for (const bool interlaced : {false, true}) {
        for (const int depth : {1, 2, 4, 8, 16}) {
            SCOPED_TRACE(depth);
            const Samples samples = counting(depth);
            expect_pixels(make_png(request_of(PNG_COLOR_TYPE_GRAY, depth, interlaced), samples), 1,
                          [&](int row, int col, int) { return to_8_bits(samples(row, col, 0), depth); });
        }
    }
}

TEST(png_file, colours_come_as_blue_green_red) {
    for (const bool interlaced : {false, true}) {
        for (const int depth : {8, 16}) {
            SCOPED_TRACE(depth);
            const Samples samples = counting(depth);
            expect_pixels(
                make_png(request_of(PNG_COLOR_TYPE_RGB, depth, interlaced), samples), 3,
                [&](int row, int col, int k) { return to_8_bits(samples(row, col, 2 - k), depth); });
        }
    }
}

TEST(png_file, palettes_of_every_depth_are_looked_up) {
    for (const bool interlaced : {false, true}) {
        for (const int depth : {1, 2, 4, 8}) {
            SCOPED_TRACE(depth);
            PngRequest request = request_of(PNG_COLOR_TYPE_PALETTE, depth, interlaced);
            for (int k = 0; k < 1 << depth; ++k) request.palette.push_back({k, 255 - k, 3 * k % 256, 255});
            const Samples samples = counting(depth);
            expect_pixels(make_png(request, samples), 3, [&](int row, int col, int k) {
                const Rgba colour = request.palette[static_cast<size_t>(samples(row, col, 0))];
                return k == 0 ? colour.b : k == 1 ? colour.g : colour.r;
            });
        }
    }
}

TEST(png_file, transparent_palette_colours_lie_on_white) {
    PngRequest request = request_of(PNG_COLOR_TYPE_PALETTE, 2, false);
    request.palette = {{10, 20, 30, 0}, {10, 20, 30, 255}, {10, 20, 30, 100}, {0, 0, 0, 254}};
    const Samples samples = counting(2);
    expect_pixels(make_png(request, samples), 3, [&](int row, int col, int k) {
        const Rgba colour = request.palette[static_cast<size_t>(samples(row, col, 0))];
        return on_white(k == 0 ? colour.b : k == 1 ? colour.g : colour.r, colour.a);
    });
}

TEST(png_file, alpha_lies_on_white) {
    for (const bool interlaced : {false, true}) {
        const Samples samples = counting(8);
        expect_pixels(make_png(request_of(PNG_COLOR_TYPE_RGB_ALPHA, 8, interlaced), samples), 3,
                      [&](int row, int col, int k) {
                          return on_white(samples(row, col, 2 - k), samples(row, col, 3));
                      });
        expect_pixels(
            make_png(request_of(PNG_COLOR_TYPE_GRAY_ALPHA, 8, interlaced), samples), 1,
            [&](int row, int col, int) { return on_white(samples(row, col, 0), samples(row, col, 1)); });
    }
}

TEST(png_file, alpha_of_16_bits_lies_on_white) {
    const Samples samples = counting(16);
    const auto value = [&](int row, int col, int k) { return to_8_bits(samples(row, col, k), 16); };
    expect_pixels(
        make_png(request_of(PNG_COLOR_TYPE_RGB_ALPHA, 16, false), samples), 3,
        [&](int row, int col, int k) { return on_white(value(row, col, 2 - k), value(row, col, 3)); });
    expect_pixels(make_png(request_of(PNG_COLOR_TYPE_GRAY_ALPHA, 16, false), samples), 1,
                  [&](int row, int col, int) { return on_white(value(row, col, 0), value(row, col, 1)); });
}

TEST(png_file, the_one_transparent_colour_becomes_white) {
    PngRequest gray = request_of(PNG_COLOR_TYPE_GRAY, 4, false);
    gray.transparent = {5};
    const Samples nibbles = counting(4);
    ASSERT_EQ(5, nibbles(0, 1, 0));
    expect_pixels(make_png(gray, nibbles), 1, [&](int row, int col, int) {
        const int sample = nibbles(row, col, 0);
        return sample == 5 ? 255 : to_8_bits(sample, 4);
    });

    const Samples samples = counting(8);
    PngRequest colour = request_of(PNG_COLOR_TYPE_RGB, 8, false);
    colour.transparent = {samples(2, 3, 0), samples(2, 3, 1), samples(2, 3, 2)};
    expect_pixels(make_png(colour, samples), 3, [&](int row, int col, int k) {
        return samples(row, col, 0) == samples(2, 3, 0) ? 255 : samples(row, col, 2 - k);
    });
}

TEST(png_file, gamma_does_not_change_samples) {
    for (const int type : {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_RGB}) {
        for (const int depth : {8, 16}) {
            PngRequest request = request_of(type, depth, false);
            const Samples samples = counting(depth);
            const Image plain = docprep::decode_png(make_png(request, samples), "photo").pixels;
            request.gamma = true;
            const Image corrected = docprep::decode_png(make_png(request, samples), "photo").pixels;
            const size_t n = static_cast<size_t>(plain.rows * plain.cols * plain.channels);
            EXPECT_EQ(0, std::memcmp(plain.data, corrected.data, n));
        }
    }
}

TEST(png_file, the_exif_orientation_is_found) {
    PngRequest request;
    EXPECT_EQ(1, docprep::decode_png(make_png(request, counting(8)), "photo").orientation);
    for (int orientation = 1; orientation <= 8; ++orientation) {
        request.exif = tiff_with_entry(orientation % 2 == 0, 0x112, 3, orientation);
        EXPECT_EQ(orientation, docprep::decode_png(make_png(request, counting(8)), "photo").orientation);
    }
}

TEST(png_file, a_wrong_check_sum_is_refused) {
    Bytes png = make_png({}, counting(8));
    png[png.size() - 13] ^= 1;  // the last byte of IDAT's
    try {
        docprep::decode_png(png, "photo");
        FAIL() << "was read";
    } catch (const docprep::Failure& failure) {
        EXPECT_STREQ("not a readable PNG (IDAT: CRC error)", failure.what());
    }
}

TEST(png_file, what_is_encoded_is_decoded_again) {
    for (const int channels : {1, 3}) {
        Image image;
        image.mat_create(6, 11, channels, 0);
        const int n = 6 * 11 * channels;
        for (int i = 0; i < n; ++i) image.data[i] = static_cast<unsigned char>(i * 31);
        const Photo photo = docprep::decode_png(docprep::encode_png(image), "photo");
        ASSERT_EQ(6, photo.pixels.rows);
        ASSERT_EQ(11, photo.pixels.cols);
        ASSERT_EQ(channels, photo.pixels.channels);
        EXPECT_EQ(0, std::memcmp(image.data, photo.pixels.data, static_cast<size_t>(n)));
    }
}

namespace {

/// 0 and 255 in blocks, with a last byte of a row that is not full.
Image black_and_white() {
    Image image;
    image.mat_create(9, 21, 1, 0);
    for (int i = 0; i < 9 * 21; ++i) image.data[i] = i * i / 7 % 2 == 0 ? 255 : 0;
    return image;
}

constexpr size_t kDepth = 24, kColourType = 25;  // of a PNG's bytes

}  // namespace

TEST(png_file, black_and_white_is_written_as_bits) {
    Image image = black_and_white();
    const Bytes bits = docprep::encode_png(image);
    EXPECT_EQ(1, bits[kDepth]);
    EXPECT_EQ(0, bits[kColourType]);
    const Photo photo = docprep::decode_png(bits, "photo");
    ASSERT_EQ(1, photo.pixels.channels);
    ASSERT_EQ(21, photo.pixels.cols);
    EXPECT_EQ(0, std::memcmp(image.data, photo.pixels.data, 9 * 21));
    image.data[9 * 21 - 1] = 254;
    EXPECT_EQ(8, docprep::encode_png(image)[kDepth]);
}

TEST(png_file, colour_is_never_written_as_bits) {
    Image image;
    image.mat_create(4, 4, 3, 255);
    const Bytes png = docprep::encode_png(image);
    EXPECT_EQ(8, png[kDepth]);
    EXPECT_EQ(2, png[kColourType]);
    EXPECT_EQ(3, docprep::decode_png(png, "photo").pixels.channels);
}

TEST(png_file, the_resolution_is_in_dots_a_metre) {
    const Bytes without = docprep::encode_png(black_and_white());
    const Bytes with = docprep::encode_png(black_and_white(), 300);
    EXPECT_EQ(without.size() + 21, with.size());
    const Bytes expected = {0, 0, 0, 9, 'p', 'H', 'Y', 's', 0, 0, 0x2e, 0x23, 0, 0, 0x2e, 0x23, 1};
    EXPECT_EQ(expected, Bytes(with.begin() + 33, with.begin() + 50));  // 11811 = 300 / 0.0254
}

TEST(png_file, large_pictures_come_back) {
    Image image;
    image.mat_create(611, 803, 3, 0);
    const int n = 611 * 803 * 3;
    for (int i = 0; i < n; ++i) image.data[i] = static_cast<unsigned char>(i * 31 + i / 991);
    const Photo photo = docprep::decode_png(docprep::encode_png(image), "photo");
    ASSERT_EQ(611, photo.pixels.rows);
    EXPECT_EQ(0, std::memcmp(image.data, photo.pixels.data, static_cast<size_t>(n)));
}
