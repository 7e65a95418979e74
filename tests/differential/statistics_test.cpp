#include "statistics.h"

#include <cmath>
#include <limits>

#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using reference::Byte;
using reference::Image;
using reference::List;

void compare_equalized(const U8& src, const U8& previous, bool in_place) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    auto got = of_library([&] { CImgproc::equalizeHist(in_place ? dst : src, dst); });
    auto want = of_reference([&] { reference::equalizeHist(to_reference(src), expected); });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected))) << shape_of(src);
}

template <class T>
void compare_number(const char* name, const U8& src, T (*library)(const U8&),
                    T (*plain)(const Image<Byte>&)) {
    T number{1}, expected{1};
    auto got = of_library([&] { number = library(src); });
    auto want = of_reference([&] { expected = plain(to_reference(src)); });
    ASSERT_TRUE(same(got.with("number", number), want.with("number", expected)))
        << name << " of " << shape_of(src);
}

void compare_numbers(const U8& src) {
    const Image<Byte> image = to_reference(src);
    float mean = 5, stddev = 6, expected_mean = 5, expected_stddev = 6;
    auto got = of_library([&] { CImgproc::meanStdDev(src, mean, stddev); });
    auto want = of_reference([&] { reference::meanStdDev(image, expected_mean, expected_stddev); });
    got.with("mean", mean).with("stddev", stddev);
    want.with("mean", expected_mean).with("stddev", expected_stddev);
    ASSERT_TRUE(same(got, want)) << shape_of(src);

    compare_number("minVal", src, CImgproc::minVal, reference::minVal);
    compare_number("maxVal", src, CImgproc::maxVal, reference::maxVal);
    compare_number("countNonZero", src, CImgproc::countNonZero, reference::countNonZero);
    compare_number("countNonZeroRate", src, CImgproc::countNonZeroRate, reference::countNonZeroRate);

    orvex_991::vector<float> h(3, 1.0f);
    List<float> expected_h;
    expected_h.resize(3);
    got = of_library([&] { CImgproc::hist(src, h); });
    want = of_reference([&] { reference::hist(image, expected_h); });
    ASSERT_TRUE(same(got.with("hist", h), want.with("hist", expected_h))) << shape_of(src);
}

TEST(Differential, statistics_equal_the_reference) {
    Random random(101);
    for (int round = 0; round < 3000; ++round) {
        const U8 src = any_image(random, random.chance(10) ? 3 : 1);
        compare_numbers(src);
        compare_equalized(src, any_previous(random), random.chance(25));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, statistics_of_odd_matrices_equal_the_reference) {
    for (const U8& src : odd_matrices()) {
        compare_numbers(src);
        for (const bool in_place : {false, true}) compare_equalized(src, filled(2, 2, 2, 3), in_place);
    }
}

// Nearly constant images, whose variance rounding can take below zero.
TEST(Differential, deviation_of_near_constant_images_equals_the_reference) {
    Random random(102);
    int not_a_number = 0;
    for (int round = 0; round < 2000; ++round) {
        // Drawn one after the other: compilers differ in the order of arguments, and such images are few.
        const int rows = random.range(1, 200), cols = random.range(1, 200), value = random.range(0, 255);
        U8 src = filled(rows, cols, 1, value);
        for (int k = random.range(0, 4); k > 0; --k) {
            const int at = random.range(0, src.rows * src.cols - 1);
            src.data[at] = static_cast<unsigned char>(random.range(0, 255));
        }
        compare_numbers(src);
        float mean = 0, stddev = 0;
        CImgproc::meanStdDev(src, mean, stddev);
        not_a_number += std::isnan(stddev);
    }
    EXPECT_GT(not_a_number, 0);
}

}  // namespace
}  // namespace testing_support
