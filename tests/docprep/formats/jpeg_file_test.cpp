#include "formats/jpeg_file.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "base/failure.h"
#include "encoders.h"

using docprep::Bytes;
using docprep::Photo;

namespace {

// Blocks of 8 x 8 pixels of one colour each come through the transform nearly unchanged.
int blocks(int row, int col, int k) {
    return 20 + (row / 8 * 50 + col / 8 * 90 + k * 60) % 220;
}

/// Fills many bytes after the headers.
int noise(int row, int col, int k) {
    return (row * 113 + col * 29 + k * 71) % 256;
}

std::string refusal(const Bytes& bytes) {
    try {
        docprep::decode_jpeg(bytes, "photo");
        return "";
    } catch (const docprep::Failure& failure) {
        return failure.what();
    }
}

/// Every sample within 3 of expected(row, col, channel).
void expect_pixels(const Photo& photo, int channels, const Samples& expected) {
    ASSERT_EQ(16, photo.pixels.rows);
    ASSERT_EQ(16, photo.pixels.cols);
    ASSERT_EQ(channels, photo.pixels.channels);
    for (int row = 0; row < 16; ++row)
        for (int col = 0; col < 16; ++col)
            for (int k = 0; k < channels; ++k)
                ASSERT_NEAR(expected(row, col, k), photo.pixels.data[(row * 16 + col) * channels + k], 3)
                    << "row " << row << " col " << col << " channel " << k;
}

int bgr_of_blocks(int row, int col, int k) {
    return blocks(row, col, 2 - k);
}

/// Of CMYK as Adobe stores it: 255 is no ink.
int bgr_of_inverted_inks(int row, int col, int k) {
    return blocks(row, col, 2 - k) * blocks(row, col, 3) / 255;
}

JpegRequest request_of(JpegKind kind) {
    JpegRequest request;
    request.kind = kind;
    return request;
}

}  // namespace

TEST(jpeg_file, gray_has_one_channel) {
    const Photo photo = docprep::decode_jpeg(make_jpeg(request_of(JpegKind::kGray), blocks), "photo");
    EXPECT_STREQ("JPEG", photo.format);
    expect_pixels(photo, 1, blocks);
}

TEST(jpeg_file, colours_come_as_blue_green_red) {
    for (const JpegKind kind : {JpegKind::kYcc, JpegKind::kRgb})
        expect_pixels(docprep::decode_jpeg(make_jpeg(request_of(kind), blocks), "photo"), 3, bgr_of_blocks);
}

TEST(jpeg_file, progressive_files_are_read) {
    JpegRequest request;
    request.progressive = true;
    expect_pixels(docprep::decode_jpeg(make_jpeg(request, blocks), "photo"), 3, bgr_of_blocks);
}

TEST(jpeg_file, adobe_inks_are_inverted) {
    for (const JpegKind kind : {JpegKind::kCmyk, JpegKind::kYcck})
        expect_pixels(docprep::decode_jpeg(make_jpeg(request_of(kind), blocks), "photo"), 3,
                      bgr_of_inverted_inks);
}

TEST(jpeg_file, inks_without_the_adobe_marker_are_plain) {
    JpegRequest request = request_of(JpegKind::kCmyk);
    request.adobe_marker = false;
    const auto inverted = [](int row, int col, int k) { return 255 - blocks(row, col, k); };
    expect_pixels(docprep::decode_jpeg(make_jpeg(request, inverted), "photo"), 3, bgr_of_inverted_inks);
}

TEST(jpeg_file, unnamed_colour_components_are_refused) {
    EXPECT_EQ("JPEGs with 2 unnamed colour components are not supported",
              refusal(make_jpeg(request_of(JpegKind::kUnnamed2), blocks)));
}

TEST(jpeg_file, arithmetic_coding_is_refused) {
    JpegRequest request;
    request.arithmetic = true;
    EXPECT_EQ("arithmetic-coded JPEGs are not supported", refusal(make_jpeg(request, blocks)));
}

TEST(jpeg_file, a_missing_end_is_called_truncated) {
    Bytes jpeg = make_jpeg({}, noise);
    jpeg.resize(jpeg.size() - 100);
    EXPECT_EQ("truncated JPEG (Premature end of JPEG file)", refusal(jpeg));
}

TEST(jpeg_file, a_missing_end_marker_alone_is_warned_of) {
    JpegRequest several_scans;
    several_scans.one_scan_a_component = true;
    JpegRequest progressive;
    progressive.progressive = true;
    for (const JpegRequest& request : {JpegRequest(), several_scans, progressive}) {
        const Bytes whole = make_jpeg(request, blocks);
        EXPECT_TRUE(docprep::decode_jpeg(whole, "photo").warnings.empty());
        for (const size_t missing : {1u, 2u}) {
            const Bytes cut(whole.begin(), whole.end() - static_cast<ptrdiff_t>(missing));
            const Photo photo = docprep::decode_jpeg(cut, "photo");
            EXPECT_EQ(std::vector<std::string>{"lacks its end"}, photo.warnings);
            expect_pixels(photo, 3, bgr_of_blocks);
        }
        for (size_t n = 0; n + 2 < whole.size(); ++n)
            EXPECT_NE("", refusal(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(n)))) << n;
    }
}

TEST(jpeg_file, what_is_encoded_is_decoded_again) {
    for (const int channels : {1, 3}) {
        docprep::Image image;
        image.mat_create(16, 16, channels, 0);
        const auto level = [&](int row, int col, int k) { return 90 + 4 * row + 3 * col + 10 * k; };
        for (int i = 0; i < 256 * channels; ++i)
            image.data[i] =
                static_cast<unsigned char>(level(i / channels / 16, i / channels % 16, i % channels));
        expect_pixels(docprep::decode_jpeg(docprep::encode_jpeg(image, 95), "photo"), channels, level);
    }
}

TEST(jpeg_file, less_quality_takes_fewer_bytes) {
    docprep::Image image;
    image.mat_create(200, 300, 1, 0);
    for (int i = 0; i < 200 * 300; ++i) image.data[i] = static_cast<unsigned char>(int64_t{i} * i / 100);
    const size_t good = docprep::encode_jpeg(image, 85).size();
    EXPECT_LT(docprep::encode_jpeg(image, 30).size(), good);
    EXPECT_GT(docprep::encode_jpeg(image, 98).size(), good);
    EXPECT_EQ(good, docprep::encode_jpeg(image).size());
}

TEST(jpeg_file, the_resolution_is_in_the_header) {
    docprep::Image image;
    image.mat_create(2, 2, 1, 9);
    const Bytes jpeg = docprep::encode_jpeg(image, 85, 300);
    EXPECT_EQ(Bytes({'J', 'F', 'I', 'F', 0, 1, 1, 1, 1, 44, 1, 44}),
              Bytes(jpeg.begin() + 6, jpeg.begin() + 18));
}

TEST(jpeg_file, an_early_end_marker_is_called_damaged) {
    Bytes jpeg = make_jpeg({}, noise);
    jpeg.resize(jpeg.size() - 100);
    jpeg.insert(jpeg.end(), {0xff, 0xd9});
    EXPECT_EQ("damaged JPEG (Corrupt JPEG data: premature end of data segment)", refusal(jpeg));
}

TEST(jpeg_file, stray_bytes_between_segments_do_no_harm) {
    Bytes jpeg = make_jpeg({}, blocks);
    const size_t huffman_tables = find_marker(jpeg, 0xc4);
    jpeg.insert(jpeg.begin() + static_cast<ptrdiff_t>(huffman_tables), {1, 2, 3});
    expect_pixels(docprep::decode_jpeg(jpeg, "photo"), 3, bgr_of_blocks);
}

TEST(jpeg_file, very_many_scans_are_refused) {
    JpegRequest request;
    request.one_scan_a_component = true;
    const Bytes jpeg = make_jpeg(request, blocks);
    constexpr int kScan = 0xda;
    const size_t second = find_marker(jpeg, kScan, find_marker(jpeg, kScan) + 1);
    const size_t last = find_marker(jpeg, kScan, second + 1);
    const auto with_repeats = [&](int repeats) {
        Bytes repeated(jpeg.begin(), jpeg.begin() + static_cast<ptrdiff_t>(last));
        for (int k = 0; k <= repeats; ++k)
            repeated.insert(repeated.end(), jpeg.begin() + static_cast<ptrdiff_t>(last), jpeg.end() - 2);
        repeated.insert(repeated.end(), {0xff, 0xd9});
        return repeated;
    };
    EXPECT_EQ("", refusal(with_repeats(50)));
    EXPECT_EQ("not a readable JPEG (More than 100 scans)", refusal(with_repeats(500)));
}

TEST(jpeg_file, the_exif_orientation_is_found) {
    for (int orientation = 1; orientation <= 8; ++orientation) {
        JpegRequest request;
        request.exif = exif_with_orientation(orientation);
        EXPECT_EQ(orientation, docprep::decode_jpeg(make_jpeg(request, blocks), "photo").orientation);
    }
}

TEST(jpeg_file, without_exif_the_orientation_is_upright) {
    EXPECT_EQ(1, docprep::decode_jpeg(make_jpeg({}, blocks), "photo").orientation);
    JpegRequest request;
    request.exif = {'h', 't', 't', 'p', ':', 0, 'x'};  // another use of the same segment
    EXPECT_EQ(1, docprep::decode_jpeg(make_jpeg(request, blocks), "photo").orientation);
}
