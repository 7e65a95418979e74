#include "formats/webp_file.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/failure.h"
#include "encoders.h"

using docprep::Bytes;
using docprep::Image;
using docprep::Photo;

namespace {

int counting(int row, int col, int k) {
    return (row * 70 + col * 37 + k * 91) % 256;
}

std::string refusal(const Bytes& bytes) {
    try {
        docprep::decode_webp(bytes, "photo");
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ("photo", failure.file());
        return failure.what();
    }
}

void expect_pixels(const WebpRequest& request, int tolerance, const Samples& made, const Samples& expected) {
    const Photo photo = docprep::decode_webp(make_webp(request, made), "photo");
    EXPECT_STREQ("WebP", photo.format);
    ASSERT_EQ(request.rows, photo.pixels.rows);
    ASSERT_EQ(request.cols, photo.pixels.cols);
    ASSERT_EQ(3, photo.pixels.channels);
    for (int row = 0; row < request.rows; ++row)
        for (int col = 0; col < request.cols; ++col)
            for (int k = 0; k < 3; ++k)
                ASSERT_NEAR(expected(row, col, k), photo.pixels.data[(row * request.cols + col) * 3 + k],
                            tolerance)
                    << "row " << row << " col " << col << " channel " << k;
}

}  // namespace

TEST(webp_file, lossless_pictures_come_as_blue_green_red) {
    expect_pixels({}, 0, counting, [](int row, int col, int k) { return counting(row, col, 2 - k); });
}

TEST(webp_file, lossy_pictures_are_read) {
    WebpRequest request;
    request.lossless = false;
    request.rows = request.cols = 32;
    const auto levels = [](int row, int col, int) { return 60 + row * 2 + col * 3; };
    expect_pixels(request, 4, levels, levels);
}

TEST(webp_file, transparency_lies_on_white) {
    WebpRequest request;
    request.alpha = true;
    const auto expected = [](int row, int col, int k) {
        const int alpha = counting(row, col, 3);
        return static_cast<int>(
            std::lround((counting(row, col, 2 - k) * alpha + 255.0 * (255 - alpha)) / 255));
    };
    // Where nothing is to be seen the encoder changes colours.
    expect_pixels(request, 0, counting, expected);
}

TEST(webp_file, the_exif_orientation_is_found_with_and_without_a_signature) {
    EXPECT_EQ(1, docprep::decode_webp(make_webp({}, counting), "photo").orientation);
    for (int orientation = 1; orientation <= 8; ++orientation)
        for (const Bytes& exif :
             {tiff_with_entry(true, 0x112, 3, orientation), exif_with_orientation(orientation)}) {
            WebpRequest request;
            request.exif = exif;
            EXPECT_EQ(orientation, docprep::decode_webp(make_webp(request, counting), "photo").orientation);
        }
}

TEST(webp_file, every_truncation_is_refused) {
    for (const bool lossless : {false, true}) {
        WebpRequest request;
        request.lossless = lossless;
        request.exif = tiff_with_entry(false, 0x112, 3, 6);
        const Bytes whole = make_webp(request, counting);
        ASSERT_EQ("", refusal(whole));
        for (size_t n = 0; n < whole.size(); ++n)
            EXPECT_NE("", refusal(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(n)))) << n;
    }
}

TEST(webp_file, films_are_refused_by_name) {
    WebpRequest request;
    request.film = true;
    EXPECT_EQ("WebP films are not supported", refusal(make_webp(request, counting)));
}

TEST(webp_file, rotten_pictures_are_refused) {
    Bytes webp = make_webp({}, counting);
    webp[20] ^= 0xff;  // the first byte of the stream
    EXPECT_EQ("not a readable WebP", refusal(webp));
}

TEST(webp_file, what_is_encoded_is_decoded_again_in_colour) {
    for (const int channels : {1, 3}) {
        Image image;
        image.mat_create(6, 11, channels, 0);
        for (int i = 0; i < 66 * channels; ++i) image.data[i] = static_cast<unsigned char>(i * 31);
        const Photo photo = docprep::decode_webp(docprep::encode_webp(image), "photo");
        ASSERT_EQ(6, photo.pixels.rows);
        ASSERT_EQ(11, photo.pixels.cols);
        for (int i = 0; i < 66; ++i)
            for (int k = 0; k < 3; ++k)
                ASSERT_EQ(image.data[i * channels + k % channels], photo.pixels.data[3 * i + k]) << i;
    }
}
