#include "formats/pnm_file.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "test_files.h"

using docprep::Bytes;
using docprep::Image;
using docprep::Photo;

namespace {

std::string refusal(const std::string& file) {
    try {
        docprep::decode_pnm(bytes_of(file), "photo");
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ("photo", failure.file());
        return failure.what();
    }
}

void expect_pixels(const std::string& file, int rows, int cols, int channels, const Bytes& expected) {
    SCOPED_TRACE(file);
    const Photo photo = docprep::decode_pnm(bytes_of(file), "photo");
    EXPECT_STREQ("PNM", photo.format);
    ASSERT_EQ(rows, photo.pixels.rows);
    ASSERT_EQ(cols, photo.pixels.cols);
    ASSERT_EQ(channels, photo.pixels.channels);
    EXPECT_EQ(expected, Bytes(photo.pixels.data, photo.pixels.data + rows * cols * channels));
}

}  // namespace

TEST(pnm_file, a_plain_bitmap_has_black_ones) {
    expect_pixels("P1\n3 2\n1 0 1\n0 1 0\n", 2, 3, 1, {0, 255, 0, 255, 0, 255});
    expect_pixels("P1 3 2 101010", 2, 3, 1, {0, 255, 0, 255, 0, 255});
}

TEST(pnm_file, a_bitmap_of_bits_begins_each_row_with_a_byte) {
    expect_pixels("P4\n9 2\n\x80\x80\x01\x7f", 2, 9, 1,
                  {0, 255, 255, 255, 255, 255, 255, 255, 0, 255, 255, 255, 255, 255, 255, 255, 0, 255});
}

TEST(pnm_file, plain_and_binary_gray_are_scaled_to_8_bits) {
    expect_pixels("P2 2 1 255 7 200", 1, 2, 1, {7, 200});
    expect_pixels("P2 3 1 15 0 7 15", 1, 3, 1, {0, 119, 255});
    expect_pixels("P5 2 1 255\n\x07\xc8", 1, 2, 1, {7, 200});
    expect_pixels("P5 2 1 100\n\x32\x64", 1, 2, 1, {128, 255});
    expect_pixels(std::string("P5 2 1 65535\n\x12\x34\xff\xff", 17), 1, 2, 1, {18, 255});
}

TEST(pnm_file, colours_come_as_blue_green_red) {
    expect_pixels("P3 2 1 255 1 2 3 4 5 6", 1, 2, 3, {3, 2, 1, 6, 5, 4});
    expect_pixels("P6 2 1 255 \1\2\3\4\5\6", 1, 2, 3, {3, 2, 1, 6, 5, 4});
    expect_pixels(std::string("P6 1 1 257\n\1\1\0\1\0\0", 17), 1, 1, 3, {0, 1, 255});
}

TEST(pnm_file, pam_has_one_to_four_samples) {
    const std::string header = "P7\nWIDTH 1\n# a comment\nHEIGHT 1\nMAXVAL 255\n";
    expect_pixels(header + "DEPTH 1\nTUPLTYPE GRAYSCALE\nENDHDR\n\x07", 1, 1, 1, {7});
    expect_pixels(header + "DEPTH 3\nENDHDR\n\1\2\3", 1, 1, 3, {3, 2, 1});
    expect_pixels(header + std::string("DEPTH 2\nENDHDR\n\x07\0", 17), 1, 1, 1, {255});
    expect_pixels(header + "DEPTH 4\nTUPLTYPE RGB_ALPHA\nENDHDR\n\1\2\3\xff", 1, 1, 3, {3, 2, 1});
}

TEST(pnm_file, comments_stand_anywhere_in_the_header) {
    expect_pixels("P5#one\n# two\n2#three\n 1 # four\n255\n#!", 1, 2, 1, {'#', '!'});
}

TEST(pnm_file, what_follows_the_picture_is_ignored) {
    expect_pixels("P5 1 1 255 ABC", 1, 1, 1, {'A'});
}

TEST(pnm_file, every_truncation_is_refused) {
    for (const std::string& whole :
         {std::string("P1 3 2 101010"), std::string("P2 2 1 255 7 2"), std::string("P3 1 1 9 1 2 3"),
          std::string("P4 9 2 abcd"), std::string("P5 2 1 255 ab"), std::string("P6 1 1 65535 abcdef"),
          std::string("P7\nWIDTH 1\nHEIGHT 1\nMAXVAL 255\nDEPTH 1\nENDHDR\na")}) {
        ASSERT_EQ("", refusal(whole));
        for (size_t n = 2; n < whole.size(); ++n)
            EXPECT_NE("", refusal(whole.substr(0, n))) << whole.substr(0, n);
    }
    EXPECT_EQ("truncated PNM", refusal("P5 2 1 255 a"));
}

TEST(pnm_file, rotten_headers_are_refused_by_name) {
    EXPECT_EQ("not a readable PNM (a number is missing)", refusal("P5 -2 1 255 ab"));
    EXPECT_EQ("not a readable PNM (a number is too large)", refusal("P5 99999999999999999999 1 255 ab"));
    EXPECT_EQ("has no pixels", refusal("P5 0 1 255 ab"));
    EXPECT_EQ("30000 x 30000 pixels are too many (limit 256 Mi)", refusal("P5 30000 30000 255 ab"));
    EXPECT_EQ("truncated PNM", refusal("P5 16384 16384 255 ab"));
    EXPECT_EQ("truncated PNM", refusal("P2 16384 16384 255 1 2"));
    EXPECT_EQ("not a readable PNM (its greatest value is not 1 to 65535)", refusal("P5 1 1 0 a"));
    EXPECT_EQ("not a readable PNM (its greatest value is not 1 to 65535)", refusal("P5 1 1 65536 ab"));
    EXPECT_EQ("not a readable PNM (a sample is above its greatest value)", refusal("P2 1 1 9 10"));
    EXPECT_EQ("not a readable PNM (a pixel is neither 0 nor 1)", refusal("P1 1 1 2"));
    EXPECT_EQ("not a readable PNM (no white space after its header)", refusal("P5 1 1 255a"));
    EXPECT_EQ("not a readable PNM (it has not 1 to 4 samples a pixel)",
              refusal("P7\nWIDTH 1\nHEIGHT 1\nMAXVAL 255\nDEPTH 5\nENDHDR\nabcde"));
    EXPECT_EQ("not a readable PNM (an unknown line in its header)", refusal("P7\nBREADTH 1\nENDHDR\n"));
}

TEST(pnm_file, what_is_encoded_is_decoded_again) {
    for (const int channels : {1, 3}) {
        Image image;
        image.mat_create(2, 3, channels, 0);
        for (int i = 0; i < 6 * channels; ++i) image.data[i] = static_cast<unsigned char>(i * 31);
        const Bytes pnm = docprep::encode_pnm(image);
        EXPECT_EQ(channels == 1 ? '5' : '6', pnm[1]);
        expect_pixels(std::string(pnm.begin(), pnm.end()), 2, 3, channels,
                      Bytes(image.data, image.data + 6 * channels));
    }
}
