#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using orvex_991::vector;
using orvex_cv_991::CImgproc;

int count(const U8& m, int value) {
    return static_cast<int>(std::count(m.data, m.data + m.rows * m.cols, static_cast<unsigned char>(value)));
}

TEST(Equalize, a_constant_image_turns_white) {
    U8 dst;
    CImgproc::equalizeHist(filled(4, 5, 1, 7), dst);
    EXPECT_EQ(count(dst, 255), 20);
}

TEST(Equalize, half_black_half_white_maps_black_to_128) {
    U8 dst;
    CImgproc::equalizeHist(image({{0, 255}, {255, 0}}), dst);
    EXPECT_EQ(dst.data[0], 128);
    EXPECT_EQ(dst.data[1], 255);
}

TEST(Histogram, of_one_pixel_is_1_divided_by_the_guarded_count) {
    vector<float> h;
    CImgproc::hist(image({{9}}), h);
    EXPECT_EQ(h.size, 256);
    EXPECT_EQ(h[9], 1.0f / (1.0f + 1.1920929e-7f));
    EXPECT_LT(h[9], 1.0f);
    EXPECT_EQ(h[8], 0.0f);
}

TEST(Histogram, a_failed_check_leaves_it_empty) {
    vector<float> h(5, 1.0f);
    printed_by([&] { EXPECT_THROW(CImgproc::hist(U8(), h), CException); });
    EXPECT_EQ(h.size, 0);
    EXPECT_EQ(h.capacity, 0);
}

TEST(MeanStdDev, of_a_constant_image_is_its_value_and_0) {
    for (const int value : {0, 1, 100, 255}) {
        float mean = -1, stddev = -1;
        CImgproc::meanStdDev(filled(8, 8, 1, value), mean, stddev);
        EXPECT_EQ(mean, static_cast<float>(value));
        EXPECT_EQ(stddev, 0.0f);
    }
}

TEST(MeanStdDev, of_an_empty_image_is_0) {
    float mean = -1, stddev = -1;
    CImgproc::meanStdDev(filled(0, 5, 1, 0), mean, stddev);
    EXPECT_EQ(mean, 0.0f);
    EXPECT_EQ(stddev, 0.0f);
}

TEST(MeanStdDev, of_three_channels_looks_at_the_first_third) {
    U8 m = filled(1, 2, 3, 200);
    m.data[0] = 10, m.data[1] = 20;
    float mean = 0, stddev = 0;
    CImgproc::meanStdDev(m, mean, stddev);
    EXPECT_EQ(mean, 15.0f);
    EXPECT_EQ(stddev, 5.0f);
}

TEST(MeanStdDev, of_a_large_white_image_is_exact) {
    float mean = 0, stddev = 0;
    CImgproc::meanStdDev(filled(3000, 4000, 1, 255), mean, stddev);
    EXPECT_EQ(mean, 255.0f);
    EXPECT_EQ(stddev, 0.0f);
}

TEST(MinMax, minVal_looks_at_the_first_pixel_only) {
    EXPECT_EQ(CImgproc::minVal(image({{200, 0}, {0, 0}})), 200);
}

TEST(MinMax, maxVal_is_255) {
    EXPECT_EQ(CImgproc::maxVal(filled(3, 3, 1, 0)), 255);
}

TEST(CountNonZero, counts_bytes_that_are_not_0) {
    EXPECT_EQ(CImgproc::countNonZero(image({{0, 1, 255}, {0, 0, 128}})), 3);
    EXPECT_EQ(CImgproc::countNonZero(U8()), 0);
    EXPECT_EQ(CImgproc::countNonZero(filled(1000, 1000, 1, 1)), 1000000);
}

TEST(CountNonZero, the_rate_is_a_share_and_of_nothing_not_a_number) {
    EXPECT_EQ(CImgproc::countNonZeroRate(image({{0, 9}, {0, 0}})), 0.25f);
    EXPECT_TRUE(std::isnan(CImgproc::countNonZeroRate(U8())));
}

// ---- Adaptive threshold ----

U8 thresholded(const U8& src, int block, double ratio, bool inverse = false) {
    U8 dst;
    EXPECT_EQ(printed_by([&] { CImgproc::adaptiveThreshold(src, dst, block, ratio, inverse); }), "");
    return dst;
}

TEST(AdaptiveThreshold, a_window_of_one_pixel_is_never_below_it) {
    const U8 page = text_page(20, 30, 1);
    for (const int block : {-1, 0, 1}) {
        EXPECT_EQ(count(thresholded(page, block, 0), 0), 600);
        EXPECT_EQ(count(thresholded(page, block, 0, true), 255), 600);
    }
}

TEST(AdaptiveThreshold, a_constant_image_is_0_whatever_the_ratio) {
    for (const double ratio : {-3.0, 0.0, 0.5}) {
        EXPECT_EQ(count(thresholded(filled(8, 8, 1, 90), 5, ratio), 0), 64);
        EXPECT_EQ(count(thresholded(filled(8, 8, 1, 90), 5, ratio, true), 255), 64);
    }
}

TEST(AdaptiveThreshold, a_negative_ratio_turns_flat_areas_white) {
    U8 m = filled(21, 21, 1, 90);
    m.at(20, 20) = 250;  // a deviation above 0
    EXPECT_EQ(thresholded(m, 5, -0.5).at(3, 3), 255);
    EXPECT_EQ(thresholded(m, 5, 0.5).at(3, 3), 0);
}

TEST(AdaptiveThreshold, an_empty_window_has_nothing_above_it) {
    EXPECT_EQ(count(thresholded(text_page(9, 9, 1), -3, -5), 0), 81);
    EXPECT_EQ(count(thresholded(text_page(9, 9, 1), -3, -5, true), 255), 81);
}

TEST(AdaptiveThreshold, a_deviation_that_is_not_a_number_leaves_nothing_above) {
    Random random(3);
    for (int round = 0; round < 2000; ++round) {
        U8 m = filled(random.range(50, 99), random.range(50, 99), 1, random.range(100, 254));
        m.data[7] = static_cast<unsigned char>(m.data[7] + 1);
        float mean = 0, stddev = 0;
        CImgproc::meanStdDev(m, mean, stddev);
        if (!std::isnan(stddev)) continue;
        EXPECT_EQ(count(thresholded(m, 3, -1), 0), m.rows * m.cols);
        EXPECT_EQ(count(thresholded(m, 3, -1, true), 255), m.rows * m.cols);
        return;
    }
    FAIL() << "no image had such a deviation";
}

TEST(AdaptiveThreshold, windows_are_cut_at_the_corner) {
    U8 m = filled(6, 6, 1, 0);
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 3; ++col) m.at(row, col) = 10;
    m.at(0, 0) = 9;
    const U8 dst = thresholded(m, 5, 0);
    EXPECT_EQ(dst.at(0, 0), 0);    // below 89 / 9; padded to 25 pixels the mean would be 3.6
    EXPECT_EQ(dst.at(2, 2), 255);  // above 89 / 25
}

// Sums are taken in 32 bits, which wrap for windows of more than 8.4 million white pixels.
TEST(AdaptiveThreshold, sums_of_huge_windows_wrap) {
    const U8 white = filled(2902, 2902, 1, 255);  // 2902^2 * 255 is just above 2^31
    EXPECT_EQ(thresholded(white, 2147483647, 0).data[0], 255);
    EXPECT_EQ(thresholded(filled(2900, 2900, 1, 255), 2147483647, 0).data[0], 0);
}

// ---- Sharpness ----

float sharpness(const U8& src, std::string* printed = nullptr) {
    float score = -1;
    const std::string text = printed_by([&] { score = CImgproc::getSharpness(src); });
    if (printed) *printed = normalised(text);
    return score;
}

TEST(Sharpness, of_a_uniform_image_is_0) {
    std::string printed;
    EXPECT_EQ(sharpness(filled(40, 60, 1, 77), &printed), 0.0f);
    EXPECT_NE(printed.find("max diff: 0\n"), std::string::npos);
}

TEST(Sharpness, of_a_page_falls_when_it_is_blurred) {
    const U8 page = text_page(15, 90, 4);
    U8 half, blurred;
    printed_by([&] {
        CImgproc::resize(page, half, 0.4f, orvex_cv_991::INTERP_LINEAR);
        CImgproc::resize(half, blurred, orvex_cv_991::Size(90, 15), orvex_cv_991::INTERP_LINEAR);
    });
    EXPECT_GT(sharpness(page), 1.5f * sharpness(blurred));
}

TEST(Sharpness, with_an_all_zero_mask_is_0) {
    const U8 page = text_page(30, 90, 4);
    printed_by([&] { EXPECT_EQ(CImgproc::getSharpness(page, filled(30, 90, 1, 0)), 0.0f); });
}

// The dilation comes before the filter, so too few columns end in its check and not in a score of 0.
TEST(Sharpness, of_fewer_than_3_reduced_columns_ends_in_the_check_of_the_dilation) {
    std::string printed;
    printed = normalised(
        printed_by([&] { EXPECT_THROW(CImgproc::getSharpness(filled(30, 5, 1, 9)), CException); }));
    EXPECT_NE(printed.find(
                  "input error src.cols >= size.width \n[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, "
                  "function: dilateGray"),
              std::string::npos);
    printed = normalised(
        printed_by([&] { EXPECT_THROW(CImgproc::getSharpness(filled(40, 2, 1, 9)), CException); }));
    EXPECT_NE(printed.find("out_size.width > 0"), std::string::npos);
}

TEST(Sharpness, prints_its_score_and_the_lines_of_its_steps) {
    const std::string d = "D cv_imgproc.cpp:#] ";
    const std::string resized =
        d + "linear\n" + d + "warpaffine cost time: #ms\n" + d + "image resize cost time: #ms\n";
    const std::string copied = d + "bgr2gray - source image is 1-channel\n" + d + "bgr2gray cost time: #ms\n";
    const std::string rest = copied + resized + resized + d + "max diff: 0\n" + d +
                             "thresholdSeg cost time: #ms\n" + d + "sharpness: 0.000000\n";
    std::string printed;
    sharpness(filled(20, 20, 3, 9), &printed);
    EXPECT_EQ(printed, d + "bgr2gray cost time: #ms\n" + rest);
    sharpness(filled(20, 20, 1, 9), &printed);
    EXPECT_EQ(printed, copied + rest);
    const U8 page = text_page(15, 60, 9);
    const float score = sharpness(page, &printed);
    EXPECT_NE(printed.find("sharpness: " + std::to_string(score) + "\n"), std::string::npos);
}

}  // namespace
}  // namespace testing_support
