#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using namespace orvex_cv_991;

std::vector<int> bytes(const U8& m) {
    return std::vector<int>(m.data, m.data + m.rows * m.cols * m.channels);
}

template <class Run>
U8 turned(Run run) {
    U8 dst;
    EXPECT_EQ(normalised(printed_by([&] { run(dst); })),
              "D cv_imgproc.cpp:#] image rotation (including flip) cost time: #ms\n");
    return dst;
}

const U8 kImage = image({{1, 2, 3}, {4, 5, 6}});

TEST(Turns, a_quarter_turn_in_place_reads_the_first_column_from_below) {
    U8 m = kImage;
    printed_by([&] { CImgproc::rot90ClockWise(m, m, 1); });
    EXPECT_EQ(m.rows, 3);
    EXPECT_EQ(m.cols, 2);
    EXPECT_EQ(bytes(m), (std::vector<int>{4, 1, 5, 2, 6, 3}));
}

TEST(Turns, one_anticlockwise_is_three_clockwise) {
    const U8 anticlockwise = turned([](U8& dst) { CImgproc::rot90AntiClockWise(kImage, dst, 1); });
    EXPECT_EQ(bytes(anticlockwise), bytes(turned([](U8& dst) { CImgproc::rot90ClockWise(kImage, dst, 3); })));
    EXPECT_EQ(bytes(anticlockwise), (std::vector<int>{3, 6, 2, 5, 1, 4}));
}

TEST(Turns, none_and_four_are_copies) {
    EXPECT_EQ(bytes(turned([](U8& dst) { CImgproc::rot90AntiClockWise(kImage, dst, 0); })), bytes(kImage));
    EXPECT_EQ(bytes(turned([](U8& dst) { CImgproc::rot90ClockWise(kImage, dst, 4); })), bytes(kImage));
}

TEST(Turns, a_negative_clockwise_count_gives_zeros_and_a_negative_anticlockwise_one_turns) {
    const U8 zeros = turned([](U8& dst) { CImgproc::rot90ClockWise(kImage, dst, -1); });
    EXPECT_EQ(zeros.rows, 2);
    EXPECT_EQ(bytes(zeros), std::vector<int>(6, 0));
    EXPECT_EQ(bytes(turned([](U8& dst) { CImgproc::rot90AntiClockWise(kImage, dst, -1); })),
              (std::vector<int>{4, 1, 5, 2, 6, 3}));
}

TEST(Turns, a_mirror_image_keeps_the_bytes_of_a_pixel_in_order) {
    U8 m = filled(1, 2, 3, 0);
    for (int i = 0; i < 6; ++i) m.data[i] = static_cast<unsigned char>(i);
    EXPECT_EQ(bytes(turned([&](U8& dst) { CImgproc::flipLR(m, dst); })),
              (std::vector<int>{3, 4, 5, 0, 1, 2}));
}

TEST(Turns, mirroring_comes_before_turning) {
    const U8 dst = turned([](U8& out) { CImgproc::rot90ClockWise_FlipLR(kImage, out, 1, -3); });
    EXPECT_EQ(bytes(dst), (std::vector<int>{6, 3, 5, 2, 4, 1}));
}

TEST(Turns, an_empty_source_keeps_its_other_extent_unless_it_is_the_destination) {
    const U8 dst = turned([](U8& out) {
        out = filled(2, 2, 1, 9);
        CImgproc::rot90ClockWise(filled(0, 5, 3, 0), out, 1);
    });
    EXPECT_EQ(dst.rows, 5);
    EXPECT_EQ(dst.cols, 0);
    EXPECT_EQ(dst.channels, 3);
    U8 both = filled(0, 5, 3, 0);
    printed_by([&] { CImgproc::rot90ClockWise(both, both, 1); });
    EXPECT_EQ(both.rows, 0);
    EXPECT_EQ(both.cols, 0);
    EXPECT_EQ(both.channels, 0);
}

TEST(Turns, points_are_clamped_first) {
    EXPECT_TRUE(CImgproc::rot90ClockWise(Point(5, 0), Size(4, 3), 1) == Point(0, 0));
    EXPECT_TRUE(CImgproc::rot90AntiClockWise(Point(5, 0), Size(4, 3), 1) == Point(0, 0));
    EXPECT_TRUE(CImgproc::rot90ClockWise(Point(-7, 9), Size(4, 3), 0) == Point(0, 2));
}

TEST(Turns, points_map_back_from_the_turned_image) {
    U8 m = filled(3, 4, 1, 0), dst;
    m.at(1, 3) = 255;
    printed_by([&] { CImgproc::rot90ClockWise(m, dst, 1); });
    Point lit;
    for (int row = 0; row < dst.rows; ++row)
        for (int col = 0; col < dst.cols; ++col)
            if (dst.at(row, col)) lit = Point(col, row);
    EXPECT_TRUE(CImgproc::rot90ClockWise(lit, Size(dst.cols, dst.rows), 1) == Point(3, 1));
}

TEST(Turns, negative_remainders_of_points_count_as_3) {
    EXPECT_TRUE(CImgproc::rot90ClockWise(Point(1, 1), Size(4, 3), -1) == Point(1, 1));
    EXPECT_TRUE(CImgproc::rot90ClockWise(Point(3, 0), Size(4, 3), -2) == Point(2, 3));
}

TEST(Turns, anticlockwise_forms_of_points_and_rectangles_are_the_clockwise_ones) {
    const Size size(7, 4);
    for (int n = -5; n <= 5; ++n) {
        EXPECT_TRUE(CImgproc::rot90AntiClockWise(Point(5, 1), size, n) ==
                    CImgproc::rot90ClockWise(Point(5, 1), size, n));
        const Rect turned = CImgproc::rot90AntiClockWise(Rect(1, 2, 3, 2), size, n);
        const Rect clockwise = CImgproc::rot90ClockWise(Rect(1, 2, 3, 2), size, n);
        EXPECT_TRUE(turned.left_top() == clockwise.left_top() &&
                    turned.right_bottom() == clockwise.right_bottom());
    }
    EXPECT_TRUE(CImgproc::rot90AntiClockWise(Point(5, 1), size, 1) == Point(1, 1));
}

TEST(Turns, a_half_turn_of_the_whole_image_starts_at_minus_1) {
    const Rect rect = CImgproc::rot90ClockWise(Rect(0, 0, 4, 3), Size(4, 3), 2);
    EXPECT_TRUE(rect.x == -1 && rect.y == -1 && rect.width == 4 && rect.height == 3);
}

TEST(Turns, a_rectangle_beyond_the_image_is_refused_under_the_clockwise_name) {
    for (const auto operation :
         {static_cast<Rect (*)(const Rect&, const Size&, int)>(CImgproc::rot90ClockWise),
          static_cast<Rect (*)(const Rect&, const Size&, int)>(CImgproc::rot90AntiClockWise)}) {
        EXPECT_EQ(normalised(printed_by(
                      [&] { EXPECT_THROW(operation(Rect(1, 0, 4, 3), Size(4, 3), 2), CException); })),
                  "D cv_imgproc.cpp:#] [warn] input error img_size.width >= src.x + src.width \n"
                  "[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, function: rot90ClockWise\n\n");
        EXPECT_EQ(normalised(printed_by(
                      [&] { EXPECT_THROW(operation(Rect(0, 1, 4, 3), Size(4, 3), 2), CException); })),
                  "D cv_imgproc.cpp:#] [warn] input error img_size.height >= src.y + src.height \n"
                  "[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, function: rot90ClockWise\n\n");
    }
}

TEST(Turns, without_channels_any_size_is_done_at_once) {
    const U8 none = filled(2147483647, 2147483647, 0, 0);
    for (const int n : {0, 1})
        EXPECT_EQ(turned([&](U8& dst) { CImgproc::rot90ClockWise_FlipLR(none, dst, n, 1); }).rows,
                  2147483647);
}

}  // namespace
}  // namespace testing_support
