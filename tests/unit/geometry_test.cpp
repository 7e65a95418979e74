#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using namespace orvex_cv_991;

Mat<float> matrix_of(std::initializer_list<float> elements) {
    Mat<float> m;
    m.mat_create(2, 3, 1, 0);
    std::copy(elements.begin(), elements.end(), m.data);
    return m;
}

U8 warped(const U8& src, const Mat<float>& matrix, const Size& size, U8* mask = nullptr) {
    U8 dst;
    printed_by([&] { CImgproc::warpAffine(src, dst, matrix, size, INTERP_LINEAR, mask); });
    return dst;
}

TEST(RotationMatrix, of_angle_0_is_exactly_the_identity) {
    const Mat<float> m = CImgproc::getRotationMatrix2D(Point32f(10, 20), 0, 1);
    const float identity[] = {1, 0, 0, 0, 1, 0};
    EXPECT_TRUE(std::equal(identity, identity + 6, m.data));
    EXPECT_TRUE(std::signbit(m.data[3]));
}

TEST(RotationMatrix, a_positive_angle_turns_anticlockwise_on_screen) {
    const Mat<float> m = CImgproc::getRotationMatrix2D(Point32f(0, 0), 90, 1);
    EXPECT_NEAR(m.data[0], 0, 1e-5);
    EXPECT_NEAR(m.data[3], -1, 1e-5);  // (1, 0), to the right, goes to (0, -1), up
}

TEST(RotationMatrix, the_centre_maps_to_itself) {
    const Mat<float> m = CImgproc::getRotationMatrix2D(Point32f(30, 70), 33, 1.7f);
    EXPECT_TRUE(CImgproc::pointAffine(Point(30, 70), m, 1, Point(0, 0)) == Point(30, 70) ||
                std::abs(m.data[0] * 30 + m.data[1] * 70 + m.data[2] - 30) < 1e-3);
}

TEST(RotationMatrix, scale_0_throws) {
    EXPECT_EQ(code_of([] { CImgproc::getRotationMatrix2D(Point32f(1, 1), 5, 0); }), 1);
    EXPECT_EQ(code_of([] { CImgproc::getRotationMatrix2D(Point32f(1, 1), 5, std::nanf("")); }), 1);
}

TEST(Warp, the_identity_reproduces_the_source_and_marks_the_last_row_and_column_as_copied) {
    Random random(1);
    const U8 src = content(random, 5, 7, 3, Content::kNoise);
    U8 mask = filled(5, 7, 1, 9);
    const U8 dst = warped(src, matrix_of({1, 0, 0, 0, 1, 0}), Size(7, 5), &mask);
    EXPECT_TRUE(std::equal(src.data, src.data + 105, dst.data));
    for (int row = 0; row < 5; ++row)
        for (int col = 0; col < 7; ++col) EXPECT_EQ(mask.at(row, col), row < 4 && col < 6);
}

TEST(Warp, half_of_100_is_50) {
    EXPECT_EQ(warped(image({{0, 100}, {0, 100}}), matrix_of({1, 0, 0.5f, 0, 1, 0}), Size(2, 2)).data[1], 50);
}

TEST(Warp, half_of_101_is_truncated) {
    EXPECT_EQ(warped(image({{0, 101}, {0, 101}}), matrix_of({1, 0, 0.5f, 0, 1, 0}), Size(2, 2)).data[1], 50);
}

TEST(Warp, outside_everything_is_a_clamped_copy) {
    U8 mask = filled(3, 4, 1, 9);
    const U8 dst = warped(image({{1, 2}, {3, 4}}), matrix_of({1, 0, 100, 0, 1, 0}), Size(4, 3), &mask);
    const int column[] = {1, 3, 3};
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 4; ++col) EXPECT_EQ(dst.data[row * 4 + col], column[row]);
    EXPECT_EQ(std::count(mask.data, mask.data + 12, 0), 12);
}

TEST(Warp, a_singular_matrix_samples_the_source_at_its_origin) {
    const U8 dst = warped(image({{7, 8}, {9, 10}}), matrix_of({1, 2, 5, 2, 4, 5}), Size(3, 2));
    EXPECT_EQ(std::count(dst.data, dst.data + 6, 7), 6);
}

TEST(Warp, other_interpolation_gives_zeros_without_the_linear_line) {
    U8 dst, mask = filled(2, 2, 1, 9);
    const std::string printed = normalised(printed_by([&] {
        CImgproc::warpAffine(filled(2, 2, 1, 50), dst, matrix_of({1, 0, 0, 0, 1, 0}), Size(2, 2),
                             static_cast<INTERP_TYPE>(1), &mask);
    }));
    EXPECT_EQ(printed, "D cv_imgproc.cpp:#] warpaffine cost time: #ms\n");
    EXPECT_EQ(std::count(dst.data, dst.data + 4, 0), 4);
    EXPECT_EQ(std::count(mask.data, mask.data + 4, 9), 4);
}

TEST(Warp, prints_linear_and_its_time) {
    U8 dst;
    EXPECT_EQ(normalised(printed_by([&] {
                  CImgproc::warpAffine(filled(2, 2, 1, 50), dst, matrix_of({1, 0, 0, 0, 1, 0}), Size(2, 2),
                                       INTERP_LINEAR, nullptr);
              })),
              "D cv_imgproc.cpp:#] linear\nD cv_imgproc.cpp:#] warpaffine cost time: #ms\n");
}

TEST(Warp, an_output_that_is_too_large_is_code_3_before_the_linear_line) {
    U8 dst = filled(1, 1, 1, 4);
    for (const Size& size : {Size(32768, 65536), Size(65536, 65536), Size(65536, 65537)}) {
        const Result result = result_of([&] {
            CImgproc::warpAffine(filled(2, 2, 1, 50), dst, matrix_of({1, 0, 0, 0, 1, 0}), size, INTERP_LINEAR,
                                 nullptr);
        });
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.printed, "");
        EXPECT_EQ(dst.data[0], 4);
    }
}

TEST(Warp, without_channels_any_size_is_done_at_once) {
    const U8 dst = warped(filled(2, 2, 0, 0), matrix_of({1, 0.5f, 0, 0, 1, 0}), Size(2147483647, 2147483647));
    EXPECT_EQ(dst.rows, 2147483647);
}

TEST(Warp, a_mask_without_room_is_code_3) {
    U8 mask = filled(1, 3, 1, 9);
    EXPECT_EQ(code_of([&] {
                  warped(filled(2, 2, 1, 5), matrix_of({1, 0, 0, 0, 1, 0}), Size(2, 2), &mask);
              }),
              3);
    EXPECT_EQ(std::count(mask.data, mask.data + 3, 9), 3);
}

TEST(Warp, a_matrix_without_elements_is_code_3) {
    Mat<float> none;
    none.mat_create(2, 3, 0, 0);
    EXPECT_EQ(code_of([&] { warped(filled(2, 2, 1, 5), none, Size(2, 2)); }), 3);
}

TEST(Warp, the_mask_may_be_the_source_or_the_destination) {
    const U8 src = text_page(12, 15, 3);
    const Mat<float> turn = CImgproc::getRotationMatrix2D(Point32f(6, 6), 20, 1);
    U8 mask = filled(12, 15, 1, 0);
    const U8 expected = warped(src, turn, Size(15, 12), &mask);
    U8 both = src;
    const U8 from_both = warped(both, turn, Size(15, 12), &both);
    EXPECT_TRUE(std::equal(expected.data, expected.data + 180, from_both.data));
    EXPECT_TRUE(std::equal(mask.data, mask.data + 180, both.data));
    U8 dst = filled(12, 15, 1, 0);
    printed_by([&] { CImgproc::warpAffine(src, dst, turn, Size(15, 12), INTERP_LINEAR, &dst); });
    EXPECT_TRUE(std::equal(expected.data, expected.data + 180, dst.data));
}

TEST(Resize, halving_takes_the_truncated_mean_of_four) {
    U8 src = filled(4, 4, 1, 0);
    src.at(0, 0) = 10, src.at(0, 1) = 20, src.at(1, 0) = 30, src.at(1, 1) = 40;
    U8 dst;
    printed_by([&] { CImgproc::resize(src, dst, Size(2, 2), INTERP_LINEAR); });
    EXPECT_EQ(dst.data[0], 25);
}

TEST(Resize, doubling_copies_along_the_border) {
    U8 dst;
    printed_by([&] { CImgproc::resize(image({{0, 100}, {200, 40}}), dst, Size(4, 4), INTERP_LINEAR); });
    // Column 0 samples at -0.25, columns 1 and 2 at 0.25 and 0.75, column 3 at 1.25; rows likewise.
    for (const int i : {0, 1, 2, 4, 8}) EXPECT_EQ(dst.data[i], 0) << i;
    for (const int i : {3, 7, 11}) EXPECT_EQ(dst.data[i], 100) << i;
    for (const int i : {12, 13, 14}) EXPECT_EQ(dst.data[i], 200) << i;
    EXPECT_EQ(dst.data[15], 40);
    EXPECT_EQ(dst.data[5], (100 * 512 * 1536 + 200 * 1536 * 512 + 40 * 512 * 512) >> 22);
}

TEST(Resize, by_a_factor_truncates_the_size) {
    U8 dst;
    printed_by([&] { CImgproc::resize(filled(3, 5, 1, 9), dst, 0.5f, INTERP_LINEAR); });
    EXPECT_EQ(dst.cols, 2);
    EXPECT_EQ(dst.rows, 1);
}

TEST(Resize, a_factor_that_leaves_no_row_is_refused_before_the_columns_are_looked_at) {
    U8 dst;
    const std::string printed = normalised(printed_by(
        [&] { EXPECT_THROW(CImgproc::resize(filled(3, 1, 1, 9), dst, 0.3f, INTERP_LINEAR), CException); }));
    EXPECT_NE(printed.find("src.rows * scale >= 1"), std::string::npos);
}

TEST(Resize, factors_that_are_not_positive_are_refused) {
    for (const float scale : {0.0f, -2.0f, std::nanf("")}) {
        U8 dst;
        const std::string printed = normalised(printed_by([&] {
            EXPECT_THROW(CImgproc::resize(filled(3, 3, 1, 9), dst, scale, INTERP_LINEAR), CException);
        }));
        EXPECT_NE(printed.find("input error scale > 0.f "), std::string::npos);
    }
}

TEST(Resize, an_infinite_factor_is_code_3) {
    U8 dst;
    EXPECT_EQ(code_of([&] { CImgproc::resize(filled(3, 3, 1, 9), dst, HUGE_VALF, INTERP_LINEAR); }), 3);
}

TEST(Resize, other_interpolation_gives_zeros_of_the_size) {
    U8 dst;
    const std::string printed = normalised(printed_by(
        [&] { CImgproc::resize(filled(3, 3, 3, 9), dst, Size(2, 5), static_cast<INTERP_TYPE>(7)); }));
    EXPECT_EQ(dst.rows, 5);
    EXPECT_EQ(std::count(dst.data, dst.data + 30, 0), 30);
    EXPECT_EQ(
        printed,
        "D cv_imgproc.cpp:#] warpaffine cost time: #ms\nD cv_imgproc.cpp:#] image resize cost time: #ms\n");
}

TEST(Resize, prints_the_lines_of_the_warp_before_its_own) {
    U8 dst;
    EXPECT_EQ(normalised(printed_by([&] { CImgproc::resize(filled(3, 3, 1, 9), dst, 2.0f, INTERP_LINEAR); })),
              "D cv_imgproc.cpp:#] linear\nD cv_imgproc.cpp:#] warpaffine cost time: #ms\n"
              "D cv_imgproc.cpp:#] image resize cost time: #ms\n");
}

bool equal(const Rect& a, const Rect& b) {
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

TEST(RectAffine, the_identity_returns_the_rectangle) {
    EXPECT_TRUE(
        equal(CImgproc::rectAffine(Rect(3, 4, 5, 6), matrix_of({1, 0, 0, 0, 1, 0})), Rect(3, 4, 5, 6)));
}

TEST(RectAffine, a_half_turn_gives_2_minus_the_extents) {
    const Rect turned = CImgproc::rectAffine(Rect(10, 20, 30, 40), matrix_of({-1, 0, 100, 0, -1, 100}));
    EXPECT_EQ(turned.width, 2 - 30);
    EXPECT_EQ(turned.height, 2 - 40);
}

TEST(CheckRect, outside_collapses_onto_the_nearest_edge) {
    EXPECT_TRUE(equal(CImgproc::checkRectInMat(Size(10, 10), Rect(-5, -5, 3, 3)), Rect(0, 0, 1, 1)));
}

TEST(CheckRect, inside_is_unchanged_and_beyond_is_cut) {
    EXPECT_TRUE(equal(CImgproc::checkRectInMat(Size(10, 10), Rect(2, 3, 4, 5)), Rect(2, 3, 4, 5)));
    EXPECT_TRUE(equal(CImgproc::checkRectInMat(Size(10, 10), Rect(2, 3, 20, 20)), Rect(2, 3, 8, 7)));
}

TEST(PointAffine, maps_forward_scales_shifts_and_truncates) {
    const Mat<float> m = matrix_of({2, 0, 0.75f, 0, 1, -0.5f});
    EXPECT_TRUE(CImgproc::pointAffine(Point(3, 0), m, 1, Point(0, 0)) == Point(6, 0));
    EXPECT_TRUE(CImgproc::pointAffine(Point(3, 5), m, 2, Point(10, -20)) == Point(23, -11));
}

TEST(PointAffine, of_a_3_by_2_matrix_throws) {
    Mat<float> m;
    m.mat_create(3, 2, 1, 0);
    EXPECT_EQ(code_of([&] { CImgproc::pointAffine(Point(), m, 1, Point()); }), 1);
    EXPECT_EQ(code_of([&] { CImgproc::rectAffine(Rect(), m); }), 1);
}

TEST(PointAffine, of_a_matrix_of_two_channels_ends_in_the_check_of_at) {
    Mat<float> m;
    m.mat_create(2, 3, 2, 0);
    EXPECT_NE(normalised(printed_by([&] {
                  EXPECT_THROW(CImgproc::pointAffine(Point(), m, 1, Point()), CException);
              })).find("function: at"),
              std::string::npos);
}

}  // namespace
}  // namespace testing_support
