#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;

// threshold() with what it prints dropped.
int thresholded(const U8& src, U8& dst, int type, const U8& mask = U8()) {
    int t = -1;
    printed_by([&] { t = CImgproc::threshold(src, dst, 0, 255, type, mask); });
    return t;
}

// The code and the message of threshold() without a mask.
std::string message_of(int low, int high, int type) {
    U8 dst;
    const Result result =
        result_of([&] { CImgproc::threshold(filled(2, 2, 1, 0), dst, low, high, type, U8()); });
    EXPECT_EQ(result.printed, "");
    return std::to_string(result.code) + " " + result.message;
}

TEST(Otsu, a_mask_that_selects_nothing_gives_0) {
    EXPECT_EQ(CImgproc::otsu(filled(3, 3, 1, 90), filled(3, 3, 1, 0)), 0);
}

TEST(Otsu, an_empty_source_gives_0) {
    EXPECT_EQ(CImgproc::otsu(filled(0, 7, 1, 0)), 0);
}

TEST(Otsu, a_constant_image_gives_0_or_its_value_and_turns_white) {
    for (const int value : {0, 1, 7, 128, 255}) {
        for (const int side : {1, 3, 10, 41, 100}) {
            U8 dst;
            const int t = thresholded(filled(side, side, 1, value), dst, 8);
            EXPECT_TRUE(t == 0 || t == value) << t;
            EXPECT_EQ(count(dst, 255), side * side);
            thresholded(filled(side, side, 1, value), dst, 9);
            EXPECT_EQ(count(dst, 0), side * side);
        }
    }
}

TEST(Otsu, two_levels_give_the_lower_one_and_both_turn_white) {
    U8 m = filled(10, 10, 1, 200);
    for (int i = 0; i < 37; ++i) m.data[i] = 60;
    EXPECT_EQ(CImgproc::otsu(m), 60);
    U8 dst;
    EXPECT_EQ(thresholded(m, dst, 8), 60);
    EXPECT_EQ(count(dst, 255), 100);
}

TEST(Otsu, splits_two_clusters_between_them) {
    U8 m = filled(1, 8, 1, 0);
    const int values[] = {10, 12, 11, 13, 200, 210, 205, 201};
    std::copy(values, values + 8, m.data);
    EXPECT_EQ(CImgproc::otsu(m), 13);
}

TEST(Otsu, counts_only_the_masked_pixels) {
    const U8 m = image({{10, 12, 250, 90, 92}});
    EXPECT_EQ(CImgproc::otsu(m, image({{1, 255, 0, 7, 1}})), 12);
}

TEST(ThresholdSeg, threshold_0_makes_everything_white) {
    U8 dst;
    printed_by([&] { CImgproc::thresholdSeg(image({{0, 1, 255}}), dst, 0); });
    EXPECT_EQ(count(dst, 255), 3);
}

TEST(ThresholdSeg, threshold_255_keeps_only_255) {
    U8 dst;
    printed_by([&] { CImgproc::thresholdSeg(image({{0, 254, 255}}), dst, 255); });
    EXPECT_EQ(count(dst, 255), 1);
    EXPECT_EQ(dst.data[2], 255);
}

TEST(ThresholdSeg, writes_an_output_of_the_same_size_in_place_whatever_its_channels) {
    U8 dst = filled(1, 2, 3, 7);
    const unsigned char* const block = dst.data;
    printed_by([&] { CImgproc::thresholdSeg(image({{0, 255}}), dst, 9); });
    EXPECT_EQ(dst.data, block);
    EXPECT_EQ(dst.channels, 3);
    const int bytes[] = {0, 255, 7, 7, 7, 7};
    EXPECT_TRUE(std::equal(bytes, bytes + 6, dst.data));
}

TEST(ThresholdSeg, an_output_of_the_same_size_without_bytes_throws_code_3) {
    U8 dst = filled(1, 2, 0, 0);
    EXPECT_EQ(code_of([&] { CImgproc::thresholdSeg(image({{0, 255}}), dst, 9); }), 3);
}

TEST(Threshold, without_the_otsu_bit_is_refused_before_the_bounds_are_looked_at) {
    EXPECT_EQ(message_of(0, 255, 0), "1 only support otsu binary mode");
    EXPECT_EQ(message_of(5, 7, 1), "1 only support otsu binary mode");
}

TEST(Threshold, other_bounds_are_refused) {
    EXPECT_EQ(message_of(1, 255, 8), "1 currently low_th must be 0  and high_th must be 255");
    EXPECT_EQ(message_of(0, 254, 8), "1 currently low_th must be 0  and high_th must be 255");
}

TEST(Threshold, inverted_is_the_complement_with_the_same_level) {
    const U8 page = text_page(40, 60, 3);
    U8 plain, inverted;
    EXPECT_EQ(thresholded(page, plain, 8), thresholded(page, inverted, 9));
    for (int i = 0; i < 40 * 60; ++i) ASSERT_EQ(plain.data[i], 255 - inverted.data[i]);
}

TEST(Threshold, a_mask_of_another_size_is_refused_before_the_output_is_touched) {
    U8 dst = filled(2, 2, 1, 9);
    const Result taller =
        result_of([&] { CImgproc::threshold(filled(2, 2, 1, 0), dst, 0, 255, 8, filled(3, 2, 1, 0)); });
    EXPECT_EQ(taller.code, 1);
    EXPECT_EQ(normalised(taller.printed),
              "D cv_imgproc.cpp:#] [warn] input error src.rows == mask.rows \n"
              "[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, function: otsu\n\n");
    const Result wider =
        result_of([&] { CImgproc::threshold(filled(2, 2, 1, 0), dst, 0, 255, 8, filled(2, 3, 1, 0)); });
    EXPECT_EQ(wider.code, 1);
    EXPECT_EQ(normalised(wider.printed),
              "D cv_imgproc.cpp:#] [warn] input error src.cols == mask.cols \n"
              "[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, function: otsu\n\n");
    EXPECT_EQ(count(dst, 9), 4);
}

TEST(Threshold, pixels_outside_the_mask_are_0_inverted_or_not) {
    const U8 src = image({{10, 200, 10, 200}}), mask = image({{255, 255, 0, 0}});
    U8 dst = filled(1, 4, 1, 7);
    EXPECT_EQ(thresholded(src, dst, 8, mask), 10);
    const int plain[] = {255, 255, 0, 0};
    EXPECT_TRUE(std::equal(plain, plain + 4, dst.data));
    thresholded(src, dst, 9, mask);
    EXPECT_EQ(count(dst, 0), 4);
}

TEST(Threshold, masked_form_prints_nothing_and_needs_an_output_with_room) {
    U8 dst = filled(1, 3, 1, 7);
    const Result result =
        result_of([&] { CImgproc::threshold(filled(1, 4, 1, 3), dst, 0, 255, 8, filled(1, 4, 1, 1)); });
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.printed, "");
    EXPECT_EQ(count(dst, 7), 3);
    dst = filled(2, 5, 1, 7);  // larger is fine: only the first bytes change
    thresholded(filled(1, 4, 1, 3), dst, 8, filled(1, 4, 1, 1));
    EXPECT_EQ(count(dst, 7), 6);
}

// ---- Adaptive threshold ----

U8 adaptively_thresholded(const U8& src, int block, double ratio, bool inverse = false) {
    U8 dst;
    EXPECT_EQ(printed_by([&] { CImgproc::adaptiveThreshold(src, dst, block, ratio, inverse); }), "");
    return dst;
}

TEST(AdaptiveThreshold, a_window_of_one_pixel_is_never_below_it) {
    const U8 page = text_page(20, 30, 1);
    for (const int block : {-1, 0, 1}) {
        EXPECT_EQ(count(adaptively_thresholded(page, block, 0), 0), 600);
        EXPECT_EQ(count(adaptively_thresholded(page, block, 0, true), 255), 600);
    }
}

TEST(AdaptiveThreshold, a_constant_image_is_0_whatever_the_ratio) {
    for (const double ratio : {-3.0, 0.0, 0.5}) {
        EXPECT_EQ(count(adaptively_thresholded(filled(8, 8, 1, 90), 5, ratio), 0), 64);
        EXPECT_EQ(count(adaptively_thresholded(filled(8, 8, 1, 90), 5, ratio, true), 255), 64);
    }
}

TEST(AdaptiveThreshold, a_negative_ratio_turns_flat_areas_white) {
    U8 m = filled(21, 21, 1, 90);
    m.at(20, 20) = 250;  // a deviation above 0
    EXPECT_EQ(adaptively_thresholded(m, 5, -0.5).at(3, 3), 255);
    EXPECT_EQ(adaptively_thresholded(m, 5, 0.5).at(3, 3), 0);
}

TEST(AdaptiveThreshold, an_empty_window_has_nothing_above_it) {
    EXPECT_EQ(count(adaptively_thresholded(text_page(9, 9, 1), -3, -5), 0), 81);
    EXPECT_EQ(count(adaptively_thresholded(text_page(9, 9, 1), -3, -5, true), 255), 81);
}

TEST(AdaptiveThreshold, a_deviation_that_is_not_a_number_leaves_nothing_above) {
    Random random(3);
    for (int round = 0; round < 2000; ++round) {
        U8 m = filled(random.range(50, 99), random.range(50, 99), 1, random.range(100, 254));
        m.data[7] = static_cast<unsigned char>(m.data[7] + 1);
        float mean = 0, stddev = 0;
        CImgproc::meanStdDev(m, mean, stddev);
        if (!std::isnan(stddev)) continue;
        EXPECT_EQ(count(adaptively_thresholded(m, 3, -1), 0), m.rows * m.cols);
        EXPECT_EQ(count(adaptively_thresholded(m, 3, -1, true), 255), m.rows * m.cols);
        return;
    }
    FAIL() << "no image had such a deviation";
}

TEST(AdaptiveThreshold, windows_are_cut_at_the_corner) {
    U8 m = filled(6, 6, 1, 0);
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 3; ++col) m.at(row, col) = 10;
    m.at(0, 0) = 9;
    const U8 dst = adaptively_thresholded(m, 5, 0);
    EXPECT_EQ(dst.at(0, 0), 0);    // below 89 / 9; padded to 25 pixels the mean would be 3.6
    EXPECT_EQ(dst.at(2, 2), 255);  // above 89 / 25
}

// Sums are taken in 32 bits, which wrap for windows of more than 8.4 million white pixels.
TEST(AdaptiveThreshold, sums_of_huge_windows_wrap) {
    const U8 white = filled(2902, 2902, 1, 255);  // 2902^2 * 255 is just above 2^31
    EXPECT_EQ(adaptively_thresholded(white, 2147483647, 0).data[0], 255);
    EXPECT_EQ(adaptively_thresholded(filled(2900, 2900, 1, 255), 2147483647, 0).data[0], 0);
}

}  // namespace
}  // namespace testing_support
