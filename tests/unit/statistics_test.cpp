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

}  // namespace
}  // namespace testing_support
