#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

#include "capture.h"
#include "images.h"
#include "seals.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using orvex_991::vector;
using orvex_cv_991::CImgproc;

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

// ---- Saliency ----

TEST(Saliency, a_mask_that_selects_nothing_gives_128_everywhere) {
    U8 dst;
    vector<unsigned char> levels;
    CImgproc::saliencyDetect(text_page(20, 20, 1), dst, filled(20, 20, 1, 0), levels);
    EXPECT_EQ(std::count(levels.data, levels.data + 256, 128), 256);
    EXPECT_EQ(std::count(dst.data, dst.data + 400, 128), 400);
}

TEST(Saliency, one_level_is_0_there_and_255_at_the_farther_end) {
    U8 dst;
    vector<unsigned char> levels(3, 7);
    CImgproc::saliencyDetect(filled(4, 4, 1, 100), dst, filled(4, 4, 1, 1), levels);
    EXPECT_EQ(levels.size, 256);
    EXPECT_EQ(levels[100], 0);
    EXPECT_EQ(levels[255], 255);
    EXPECT_EQ(levels[0], 164);  // 100 / 155 of 255
    EXPECT_EQ(dst.data[0], 0);
}

TEST(Saliency, pixels_outside_the_mask_are_mapped_too) {
    U8 dst;
    vector<unsigned char> levels;
    CImgproc::saliencyDetect(image({{0, 255}}), dst, image({{1, 0}}), levels);
    EXPECT_EQ(dst.data[0], 0);
    EXPECT_EQ(dst.data[1], 255);
}

TEST(Saliency, the_mask_may_be_the_destination) {
    const U8 src = text_page(9, 31, 2);
    U8 mask = filled(9, 31, 1, 0), dst;
    for (int i = 0; i < 150; ++i) mask.data[i] = 1;
    vector<unsigned char> levels, other_levels;
    CImgproc::saliencyDetect(src, dst, mask, levels);
    CImgproc::saliencyDetect(src, mask, mask, other_levels);
    EXPECT_TRUE(std::equal(dst.data, dst.data + 279, mask.data));
    EXPECT_TRUE(std::equal(levels.data, levels.data + 256, other_levels.data));
}

TEST(Saliency, three_channels_are_refused_with_a_message_and_without_a_line) {
    U8 dst;
    vector<unsigned char> levels;
    const Result result =
        result_of([&] { CImgproc::saliencyDetect(filled(2, 2, 3, 0), dst, filled(2, 2, 1, 1), levels); });
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.message, "saliency detection input format error");
    EXPECT_EQ(result.printed, "");
}

// Masks that differ from the image in one way only, and channels of either image alone.
TEST(Saliency, a_mask_of_other_rows_or_other_columns_is_refused) {
    const U8 gray = filled(4, 5, 1, 9);
    for (const U8& mask : {filled(3, 5, 1, 1), filled(4, 3, 1, 1), filled(5, 4, 1, 1), filled(4, 5, 3, 1)}) {
        U8 dst = filled(1, 1, 1, 7);
        vector<unsigned char> levels(2, 3);
        const Result result = result_of([&] { CImgproc::saliencyDetect(gray, dst, mask, levels); });
        EXPECT_EQ(result.code, 1) << shape_of(mask);
        EXPECT_EQ(result.message, "saliency detection input format error");
        EXPECT_EQ(dst.data[0], 7);
        EXPECT_EQ(levels.size, 2);
    }
}

// ---- Red seals ----

struct Detection : Result {
    U8 mask;
};

Detection detect(const U8& photo, bool relaxed = false) {
    U8 mask;
    Result result = result_of([&] { CImgproc::redColorDetect(photo, mask, relaxed); });
    result.printed = normalised(result.printed);
    return {std::move(result), std::move(mask)};
}

bool on(const Detection& detection, int row, int col) {
    return detection.mask.data[row * detection.mask.cols + col] == 255;
}

int lit(const Detection& detection) {
    return static_cast<int>(std::count(detection.mask.data,
                                       detection.mask.data + detection.mask.rows * detection.mask.cols, 255));
}

const U8 kPaper = colour_image(200, 200, 255, 255, 255);

TEST(RedSeal, a_grey_image_gives_a_zero_mask_without_a_timing_line) {
    const Detection detection = detect(colour_image(50, 60, 90, 90, 90));
    EXPECT_EQ(detection.code, 0);
    EXPECT_EQ(lit(detection), 0);
    EXPECT_EQ(detection.mask.rows, 50);
    EXPECT_EQ(
        detection.printed,
        "D cv_imgproc.cpp:#] begin to red color detection\nD cv_imgproc.cpp:#] linear\n"
        "D cv_imgproc.cpp:#] warpaffine cost time: #ms\nD cv_imgproc.cpp:#] image resize cost time: #ms\n");
}

TEST(RedSeal, uniform_red_ends_early_too) {
    const Detection detection = detect(colour_image(50, 60, 10, 10, 240));
    EXPECT_EQ(detection.code, 0);
    EXPECT_EQ(lit(detection), 0);
}

TEST(RedSeal, a_solid_disc_is_found) {
    U8 photo = kPaper;
    draw_ring(photo, 100, 90, 0, 20, 30, 30, 220);
    const Detection detection = detect(photo);
    EXPECT_EQ(detection.code, 0);
    EXPECT_TRUE(on(detection, 90, 100));
    EXPECT_FALSE(on(detection, 20, 20));
    EXPECT_NE(detection.printed.find("red color detection done (#ms)\n"), std::string::npos);
}

TEST(RedSeal, the_lines_of_a_detection_come_in_the_order_of_its_steps) {
    U8 photo = kPaper;
    draw_ring(photo, 100, 90, 0, 20, 30, 30, 220);
    const std::string prefix = "D cv_imgproc.cpp:#] ";
    std::string expected;
    for (const char* line :
         {"begin to red color detection", "linear", "warpaffine cost time: #ms",
          "image resize cost time: #ms", "binary image dilate cost time: #ms", "bwlabel cost time: #ms",
          "connect component got cost time: #ms", "binary image dilate cost time: #ms", "linear",
          "warpaffine cost time: #ms", "image resize cost time: #ms", "thresholdSeg cost time: #ms",
          "red color detection done (#ms)"})
        expected += prefix + line + "\n";
    EXPECT_EQ(detect(photo).printed, expected);
}

TEST(RedSeal, a_disc_taller_than_half_the_image_counts_only_when_relaxed) {
    U8 photo = kPaper;
    draw_ring(photo, 100, 100, 0, 60, 30, 30, 220);
    EXPECT_EQ(detect(photo, false).code, 2);
    EXPECT_EQ(detect(photo, true).code, 0);
}

TEST(RedSeal, a_thin_ring_counts_only_where_nothing_is_filled_better) {
    U8 photo = kPaper;
    draw_ring(photo, 60, 60, 21, 28, 30, 30, 220);  // fills a third of its rectangle
    EXPECT_EQ(detect(photo).code, 0);
    EXPECT_TRUE(on(detect(photo), 60, 60 - 25));
    draw_ring(photo, 150, 150, 0, 15, 30, 30, 220);
    const Detection both = detect(photo);
    EXPECT_TRUE(on(both, 150, 150));
    EXPECT_FALSE(on(both, 60, 60 - 25));
}

TEST(RedSeal, a_fragment_next_to_a_seal_is_kept_and_a_far_one_is_erased) {
    U8 photo = kPaper;
    draw_ring(photo, 100, 100, 0, 20, 30, 30, 220);
    draw_box(photo, 92, 124, 16, 6, 30, 30, 220);  // within a quarter of 41 below the seal
    draw_box(photo, 92, 160, 16, 6, 30, 30, 220);
    const Detection detection = detect(photo);
    EXPECT_TRUE(on(detection, 126, 100));
    EXPECT_FALSE(on(detection, 162, 100));
    EXPECT_NE(detection.printed.find("D cv_imgproc.cpp:#] set 1 near 0 to be true \n"), std::string::npos);
}

TEST(RedSeal, a_flat_wide_fragment_is_not_rescued) {
    U8 photo = kPaper;
    draw_ring(photo, 100, 100, 0, 20, 30, 30, 220);
    draw_box(photo, 92, 125, 12, 4, 30, 30, 220);
    draw_box(photo, 112, 125, 5, 4, 30, 30, 220);  // narrow: rescued whatever its height
    const Detection detection = detect(photo);
    EXPECT_FALSE(on(detection, 127, 94));
    EXPECT_TRUE(on(detection, 127, 114));
}

TEST(RedSeal, specks_are_code_2_with_the_message_on_an_error_line) {
    U8 photo = kPaper;
    draw_box(photo, 20, 20, 6, 6, 30, 30, 220);
    draw_box(photo, 120, 90, 5, 7, 30, 30, 220);
    const Detection detection = detect(photo);
    EXPECT_EQ(detection.code, 2);
    EXPECT_EQ(detection.message, "could not find any valid red circle");
    const std::string last = "E cv_imgproc.cpp:#] could not find any valid red circle\n";
    ASSERT_GE(detection.printed.size(), last.size());
    EXPECT_EQ(detection.printed.substr(detection.printed.size() - last.size()), last);
    EXPECT_EQ(lit(detection), 0);
    EXPECT_EQ(detection.mask.rows, 200);
}

TEST(RedSeal, one_channel_is_code_1_after_the_start_line) {
    const Detection detection = detect(filled(20, 20, 1, 9));
    EXPECT_EQ(detection.code, 1);
    EXPECT_EQ(detection.printed.find("D cv_imgproc.cpp:#] begin to red color detection\n"), 0u);
    EXPECT_EQ(detection.mask.data, nullptr);
}

TEST(RedSeal, a_640_by_480_photo_is_analysed_at_320_by_240) {
    U8 photo = colour_image(480, 640, 255, 255, 255);
    draw_ring(photo, 300, 200, 0, 40, 30, 30, 220);
    EXPECT_TRUE(on(detect(photo), 200, 300));
    // A disc that is 10 wide here has 5 columns there, too few.
    U8 small = colour_image(480, 640, 255, 255, 255);
    draw_ring(small, 300, 200, 0, 5, 30, 30, 220);
    EXPECT_EQ(detect(small).code, 2);
    U8 same_size = colour_image(240, 320, 255, 255, 255);
    draw_ring(same_size, 150, 100, 0, 5, 30, 30, 220);
    EXPECT_EQ(detect(same_size).code, 0);
}

TEST(RedSeal, very_wide_photos_end_in_the_check_of_the_reduction) {
    const Detection detection = detect(colour_image(1, 700, 10, 10, 240));
    EXPECT_EQ(detection.code, 1);
    EXPECT_NE(detection.printed.find("out_size.height > 0"), std::string::npos);
    EXPECT_EQ(lit(detection), 0);
    EXPECT_EQ(detection.mask.cols, 700);
}

TEST(RedSeal, too_few_rows_for_the_closing_end_in_its_check) {
    U8 photo = colour_image(2, 100, 255, 255, 255);
    draw_box(photo, 10, 0, 20, 2, 30, 30, 220);
    const Detection detection = detect(photo);
    EXPECT_EQ(detection.code, 1);
    EXPECT_NE(detection.printed.find("src.rows >= size.height"), std::string::npos);
    EXPECT_EQ(detection.mask.rows, 2);
}

}  // namespace
}  // namespace testing_support
