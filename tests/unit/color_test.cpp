#include <gtest/gtest.h>

#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;

// One pixel through an operation.
std::vector<int> converted(void (*operation)(const U8&, U8&), int b, int g, int r) {
    U8 pixel = filled(1, 1, 3, b);
    pixel.data[1] = static_cast<unsigned char>(g);
    pixel.data[2] = static_cast<unsigned char>(r);
    U8 out;
    printed_by([&] { operation(pixel, out); });
    return std::vector<int>(out.data, out.data + out.channels);
}

TEST(Gray, white_maps_to_253) {
    EXPECT_EQ(converted(CImgproc::bgr2gray, 255, 255, 255), std::vector<int>{253});
}

TEST(Gray, pure_colours_map_to_their_weights) {
    EXPECT_EQ(converted(CImgproc::bgr2gray, 0, 0, 255), std::vector<int>{76});
    EXPECT_EQ(converted(CImgproc::bgr2gray, 255, 0, 0), std::vector<int>{27});
    EXPECT_EQ(converted(CImgproc::bgr2gray, 0, 255, 0), std::vector<int>{150});
}

TEST(Gray, of_an_empty_source_prints_its_line_and_empties_the_output) {
    U8 out = filled(3, 3, 3, 1);
    EXPECT_EQ(normalised(printed_by([&] { CImgproc::bgr2gray(U8(), out); })),
              "D cv_imgproc.cpp:#] bgr2gray - source image is empty\n"
              "D cv_imgproc.cpp:#] bgr2gray cost time: #ms\n");
    EXPECT_EQ(out.rows, 0);
    EXPECT_EQ(out.cols, 0);
    EXPECT_EQ(out.channels, 1);
}

TEST(Gray, of_one_channel_is_a_copy_with_its_line) {
    U8 out;
    EXPECT_EQ(normalised(printed_by([&] {
                  CImgproc::bgr2gray(image({{1, 2}, {3, 4}}), out);
              })),
              "D cv_imgproc.cpp:#] bgr2gray - source image is 1-channel\n"
              "D cv_imgproc.cpp:#] bgr2gray cost time: #ms\n");
    EXPECT_EQ(std::vector<int>(out.data, out.data + 4), (std::vector<int>{1, 2, 3, 4}));
}

TEST(Gray, of_two_or_four_channels_is_black) {
    for (const int channels : {2, 4}) {
        U8 out;
        printed_by([&] { CImgproc::bgr2gray(filled(2, 2, channels, 200), out); });
        EXPECT_EQ(out.channels, 1);
        EXPECT_EQ(std::vector<int>(out.data, out.data + 4), std::vector<int>(4, 0));
    }
}

std::vector<int> converted_frame(int y, int u, int v) {
    const unsigned char luma = static_cast<unsigned char>(y);
    const unsigned char frame[] = {
        luma, luma, luma, luma, static_cast<unsigned char>(v), static_cast<unsigned char>(u)};
    U8 out;
    EXPECT_EQ(normalised(printed_by([&] { CImgproc::yuv2bgr(frame, 2, 2, out); })),
              "D cv_imgproc.cpp:#] yuv to bgr done (#ms)\n");
    EXPECT_EQ(std::vector<int>(out.data, out.data + 3), std::vector<int>(out.data + 9, out.data + 12));
    return std::vector<int>(out.data, out.data + 3);
}

TEST(Yuv, luma_16_is_black_and_235_is_254) {
    EXPECT_EQ(converted_frame(16, 128, 128), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(converted_frame(235, 128, 128), (std::vector<int>{254, 254, 254}));
}

TEST(Yuv, luma_below_16_counts_as_16) {
    EXPECT_EQ(converted_frame(0, 128, 128), (std::vector<int>{0, 0, 0}));
}

TEST(Yuv, luma_255_is_clamped_to_white) {
    EXPECT_EQ(converted_frame(255, 128, 128), (std::vector<int>{255, 255, 255}));
}

TEST(Yuv, the_first_chroma_byte_is_v) {
    EXPECT_EQ(converted_frame(81, 90, 240), (std::vector<int>{0, 0, 254}));  // red has a large V
}

TEST(Hsv, corner_colours_have_the_corner_hues) {
    const auto hsv = [](int b, int g, int r) { return converted(CImgproc::bgr2hsv, b, g, r); };
    EXPECT_EQ(hsv(0, 0, 255), (std::vector<int>{0, 255, 255}));
    EXPECT_EQ(hsv(0, 255, 255), (std::vector<int>{30, 255, 255}));
    EXPECT_EQ(hsv(0, 255, 0), (std::vector<int>{60, 255, 255}));
    EXPECT_EQ(hsv(255, 255, 0), (std::vector<int>{90, 255, 255}));
    EXPECT_EQ(hsv(255, 0, 0), (std::vector<int>{120, 255, 255}));
    EXPECT_EQ(hsv(255, 0, 255), (std::vector<int>{150, 255, 255}));
}

TEST(Hsv, gray_has_neither_hue_nor_saturation) {
    EXPECT_EQ(converted(CImgproc::bgr2hsv, 128, 128, 128), (std::vector<int>{0, 0, 128}));
    EXPECT_EQ(converted(CImgproc::bgr2hsv, 0, 0, 0), (std::vector<int>{0, 0, 0}));
}

TEST(Hsv, a_hue_just_below_red_reaches_180) {
    EXPECT_EQ(converted(CImgproc::bgr2hsv, 1, 0, 255)[0], 180);
}

TEST(Hsv, of_one_channel_reads_pixels_three_bytes_apart_and_zeros_beyond_the_end) {
    U8 out;
    CImgproc::bgr2hsv(image({{0, 0, 255, 0, 255}}), out);  // pixels (0,0,255), (0,255,-), three times (-,-,-)
    EXPECT_EQ(std::vector<int>(out.data, out.data + 15),
              (std::vector<int>{0, 255, 255, 60, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Hsv, of_two_channels_reads_pixels_three_bytes_apart) {
    U8 out, two = filled(1, 3, 2, 0);
    two.data[2] = two.data[3] = 255;  // pixels (0,0,255), (255,0,0), (-,-,-)
    CImgproc::bgr2hsv(two, out);
    EXPECT_EQ(std::vector<int>(out.data, out.data + 9),
              (std::vector<int>{0, 255, 255, 120, 255, 255, 0, 0, 0}));
}

TEST(Hsv, of_four_channels_reads_pixels_four_bytes_apart) {
    U8 out, four = filled(1, 2, 4, 9);
    for (int k = 0; k < 3; ++k) four.data[k] = four.data[4 + k] = static_cast<unsigned char>(k < 2 ? 0 : 255);
    CImgproc::bgr2hsv(four, out);
    EXPECT_EQ(std::vector<int>(out.data, out.data + 6), (std::vector<int>{0, 255, 255, 0, 255, 255}));
}

TEST(Hsv, of_no_rows_only_initialises_the_output) {
    U8 out = filled(2, 2, 1, 9);
    CImgproc::bgr2hsv(filled(0, 5, 3, 0), out);
    EXPECT_EQ(out.rows, 0);
    EXPECT_EQ(out.cols, 5);
    EXPECT_EQ(out.channels, 3);
}

}  // namespace
}  // namespace testing_support
