#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using namespace orvex_cv_991;
using Operation = void (*)(const U8&, U8&, const Size&);

std::vector<int> applied(Operation operation, const U8& src, const Size& size) {
    U8 dst;
    printed_by([&] { operation(src, dst, size); });
    return std::vector<int>(dst.data, dst.data + dst.rows * dst.cols);
}

TEST(BinaryMorphology, a_window_as_large_as_the_image_is_allowed_and_one_larger_is_not) {
    U8 src = filled(3, 5, 1, 0), dst;
    src.at(1, 2) = 1;
    EXPECT_EQ(applied(CImgproc::dilateBinary, src, Size(5, 3)), std::vector<int>(15, 255));
    printed_by([&] {
        EXPECT_THROW(CImgproc::dilateBinary(src, dst, Size(6, 3)), CException);
        EXPECT_THROW(CImgproc::dilateBinary(src, dst, Size(5, 4)), CException);
        EXPECT_THROW(CImgproc::erodeBinary(src, dst, Size(6, 3)), CException);
    });
}

TEST(BinaryMorphology, a_window_of_one_only_binarises) {
    const U8 src = image({{0, 1, 127, 128, 255}});
    EXPECT_EQ(applied(CImgproc::dilateBinary, src, Size(1, 1)), (std::vector<int>{0, 255, 255, 255, 255}));
    EXPECT_EQ(applied(CImgproc::erodeBinary, src, Size(1, 1)), (std::vector<int>{0, 0, 0, 255, 255}));
}

TEST(BinaryMorphology, an_even_window_spreads_a_pixel_right_and_down) {
    U8 src = filled(4, 4, 1, 0);
    src.at(1, 1) = 255;
    EXPECT_EQ(applied(CImgproc::dilateBinary, src, Size(2, 2)),
              (std::vector<int>{0, 0, 0, 0, 0, 255, 255, 0, 0, 255, 255, 0, 0, 0, 0, 0}));
}

TEST(BinaryMorphology, a_value_of_100_is_set_for_dilation_and_clear_for_erosion) {
    EXPECT_EQ(applied(CImgproc::dilateBinary, filled(3, 3, 1, 100), Size(3, 3)), std::vector<int>(9, 255));
    EXPECT_EQ(applied(CImgproc::erodeBinary, filled(3, 3, 1, 100), Size(3, 3)), std::vector<int>(9, 0));
}

TEST(BinaryMorphology, the_border_does_not_erode) {
    EXPECT_EQ(applied(CImgproc::erodeBinary, filled(4, 5, 1, 255), Size(3, 3)), std::vector<int>(20, 255));
}

TEST(BinaryMorphology, dilation_of_three_channels_takes_the_first_bytes_as_one) {
    U8 src = filled(2, 3, 3, 0);
    src.data[4] = 7;
    src.data[6] = 7;  // beyond rows * cols
    U8 dst;
    printed_by([&] { CImgproc::dilateBinary(src, dst, Size(1, 1)); });
    EXPECT_EQ(dst.channels, 1);
    EXPECT_EQ(std::vector<int>(dst.data, dst.data + 6), (std::vector<int>{0, 0, 0, 0, 255, 0}));
}

TEST(BinaryMorphology, an_unknown_type_throws_code_1_and_prints_nothing) {
    U8 dst;
    for (const int type : {-1, 4}) {
        const Result result = result_of([&] {
            CImgproc::morphologyBinary(filled(3, 3, 1, 0), dst, Size(1, 1), static_cast<MORPH_TYPE>(type));
        });
        EXPECT_EQ(result.code, 1);
        EXPECT_EQ(result.printed, "");
    }
}

TEST(BinaryMorphology, opening_and_closing_print_the_line_of_their_dilation_once) {
    for (const Operation operation : {CImgproc::openBinary, CImgproc::closeBinary}) {
        U8 dst;
        EXPECT_EQ(normalised(printed_by([&] { operation(filled(3, 3, 1, 255), dst, Size(3, 3)); })),
                  "D cv_imgproc.cpp:#] binary image dilate cost time: #ms\n");
    }
}

TEST(BinaryMorphology, opening_removes_specks_and_closing_fills_holes) {
    U8 src = filled(7, 7, 1, 0);
    for (int row = 2; row < 5; ++row)
        for (int col = 2; col < 5; ++col) src.at(row, col) = 255;
    src.at(0, 0) = 255;
    src.at(3, 3) = 0;
    U8 closed, opened;
    printed_by([&] { CImgproc::closeBinary(src, closed, Size(3, 3)); });
    EXPECT_EQ(closed.at(3, 3), 255);
    printed_by([&] { CImgproc::openBinary(closed, opened, Size(3, 3)); });
    EXPECT_EQ(opened.at(0, 6), 0);
    EXPECT_EQ(opened.at(3, 3), 255);
}

TEST(BinaryMorphology, dilateRect_grows_by_the_full_amount_although_it_stops_at_0) {
    Rect grown;
    CImgproc::dilateRect(Rect(5, 3, 10, 10), grown, Size(8, 8));
    EXPECT_TRUE(grown.x == 0 && grown.y == 0 && grown.width == 26 && grown.height == 26);
}

TEST(GrayMorphology, a_window_of_one_copies) {
    const U8 src = image({{0, 1, 127, 128, 255}});
    EXPECT_EQ(applied(CImgproc::dilateGray, src, Size(1, 1)), (std::vector<int>{0, 1, 127, 128, 255}));
    EXPECT_EQ(applied(CImgproc::erodeGray, src, Size(1, 1)), (std::vector<int>{0, 1, 127, 128, 255}));
}

TEST(GrayMorphology, a_bright_pixel_becomes_a_block_and_vanishes_under_erosion) {
    U8 src = filled(5, 5, 1, 0);
    src.at(2, 2) = 200;
    const std::vector<int> dilated = applied(CImgproc::dilateGray, src, Size(3, 3));
    EXPECT_EQ(std::count(dilated.begin(), dilated.end(), 200), 9);
    EXPECT_EQ(dilated[1 * 5 + 1], 200);
    EXPECT_EQ(applied(CImgproc::erodeGray, src, Size(3, 3)), std::vector<int>(25, 0));
}

TEST(GrayMorphology, the_outside_is_neutral) {
    EXPECT_EQ(applied(CImgproc::dilateGray, filled(4, 5, 1, 100), Size(3, 3)), std::vector<int>(20, 100));
    EXPECT_EQ(applied(CImgproc::erodeGray, filled(4, 5, 1, 100), Size(3, 3)), std::vector<int>(20, 100));
}

TEST(GrayMorphology, the_gradient_of_a_level_image_is_white_by_its_threshold_of_0) {
    EXPECT_EQ(applied(CImgproc::morphGradient, filled(4, 5, 1, 100), Size(3, 3)), std::vector<int>(20, 255));
}

TEST(GrayMorphology, the_gradient_marks_edges) {
    U8 src = filled(9, 12, 1, 20);
    for (int row = 0; row < 9; ++row)
        for (int col = 6; col < 12; ++col) src.at(row, col) = static_cast<unsigned char>(200 + row % 2);
    const std::vector<int> gradient = applied(CImgproc::morphGradient, src, Size(3, 3));
    EXPECT_EQ(gradient[4 * 12 + 5], 255);
    EXPECT_EQ(gradient[4 * 12 + 6], 255);
    EXPECT_EQ(gradient[4 * 12 + 2], 0);
}

TEST(GrayMorphology, a_bad_window_is_code_2_from_the_gradient_with_the_inner_warning) {
    U8 dst = filled(1, 1, 1, 9);
    const Result result = result_of([&] { CImgproc::morphGradient(filled(3, 4, 1, 9), dst, Size(0, 3)); });
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.message, "");
    EXPECT_EQ(normalised(result.printed),
              "D cv_imgproc.cpp:#] [warn] input error size.width > 0 \n"
              "[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, function: dilateGray\n\n");
    EXPECT_EQ(dst.rows, 3);
    EXPECT_EQ(std::count(dst.data, dst.data + 12, 0), 12);
}

TEST(GrayMorphology, three_channels_are_code_1_from_the_gradient) {
    U8 dst;
    EXPECT_EQ(code_of([&] { CImgproc::morphGradient(filled(3, 4, 3, 9), dst, Size(3, 3)); }), 1);
}

TEST(GrayMorphology, a_window_as_large_as_a_large_image_is_quick) {
    U8 src = text_page(1000, 1000, 1), dst;
    printed_by([&] {
        CImgproc::dilateGray(src, dst, Size(1000, 1000));
        EXPECT_EQ(dst.at(500, 500), *std::max_element(src.data, src.data + 1000000));
        CImgproc::dilateBinary(src, dst, Size(1000, 1000));
    });
    EXPECT_EQ(std::count(dst.data, dst.data + 1000000, 255), 1000000);
}

}  // namespace
}  // namespace testing_support
