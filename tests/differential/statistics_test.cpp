#include "statistics.h"

#include <cmath>
#include <limits>

#include "images.h"
#include "outcome.h"

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

// Not-a-number as such: its sign and payload are the processor's.
float canonical(float value) {
    return std::isnan(value) ? std::numeric_limits<float>::quiet_NaN() : value;
}

template <class T>
T canonical(T value) {
    return value;
}

template <class T>
void compare_number(const char* name, const U8& src, T (*library)(const U8&),
                    T (*plain)(const Image<Byte>&)) {
    T number{1}, expected{1};
    auto got = of_library([&] { number = library(src); });
    auto want = of_reference([&] { expected = plain(to_reference(src)); });
    ASSERT_TRUE(same(got.with("number", canonical(number)), want.with("number", canonical(expected))))
        << name << " of " << shape_of(src);
}

void compare_numbers(const U8& src) {
    const Image<Byte> image = to_reference(src);
    float mean = 5, stddev = 6, expected_mean = 5, expected_stddev = 6;
    auto got = of_library([&] { CImgproc::meanStdDev(src, mean, stddev); });
    auto want = of_reference([&] { reference::meanStdDev(image, expected_mean, expected_stddev); });
    got.with("mean", canonical(mean)).with("stddev", canonical(stddev));
    want.with("mean", canonical(expected_mean)).with("stddev", canonical(expected_stddev));
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

void compare_adaptive(const U8& src, const U8& previous, bool in_place, int block, double ratio,
                      bool inverse) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    auto got =
        of_library([&] { CImgproc::adaptiveThreshold(in_place ? dst : src, dst, block, ratio, inverse); });
    auto want = of_reference(
        [&] { reference::adaptiveThreshold(to_reference(src), expected, block, ratio, inverse); });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
        << shape_of(src) << " block " << block << " ratio " << ratio;
}

double any_ratio(Random& random) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (random.chance(30)) return 0;
    if (random.chance(8)) return random.pick({kInfinity, -kInfinity, std::nan(""), 1e300, -1e300, 1e-300});
    if (random.chance(40)) return random.range(-8, 8) / 8.0;
    return (random.range(0, 1 << 20) - (1 << 19)) / static_cast<double>(1 << 18);
}

TEST(Differential, adaptiveThreshold_equals_the_reference) {
    Random random(103);
    for (int round = 0; round < 2500; ++round) {
        U8 src = any_image(random, random.chance(3) ? 3 : 1, random.range(1, 40), random.range(1, 40));
        // Few levels make means that meet pixel values exactly.
        if (random.chance(30))
            for (int i = 0; i < src.rows * src.cols; ++i)
                src.data[i] = static_cast<unsigned char>(src.data[i] & 3);
        int block = random.range(-4, 45);
        if (random.chance(5)) block = random.pick({INT32_MAX, INT32_MIN, 1000, -1000});
        compare_adaptive(src, any_previous(random), random.chance(25), block, any_ratio(random),
                         random.chance(50));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, adaptiveThreshold_with_large_blocks_equals_the_reference) {
    Random random(104);
    for (const int block : {15, 31, 51, 101, 300, 519}) {
        const U8 src = any_image(random, 1, random.range(60, 130), random.range(60, 130));
        compare_adaptive(src, U8(), false, block, any_ratio(random), false);
    }
    compare_adaptive(text_page(160, 200, 5), U8(), false, 51, -0.2, true);
}

// Columns of more than 257 bright rows, whose sums 16 bits do not hold, beside ones that they just hold.
TEST(Differential, adaptiveThreshold_of_tall_bright_windows_equals_the_reference) {
    Random random(106);
    for (const int block : {601, 513, 301, 259, 257, 255}) {
        U8 src = filled(300, 4, 1, 0);
        for (int i = 0; i < 300 * 4; ++i) src.data[i] = static_cast<unsigned char>(random.range(240, 255));
        compare_adaptive(src, U8(), false, block, 0.1, false);
        compare_adaptive(filled(300, 4, 1, 255), U8(), false, block, 0, true);
    }
}

TEST(Differential, adaptiveThreshold_of_odd_matrices_equals_the_reference) {
    for (const U8& src : odd_matrices())
        for (const bool in_place : {false, true})
            compare_adaptive(src, filled(2, 2, 2, 3), in_place, 3, 0.1, false);
}

void compare_sharpness(const U8& src, const U8* mask) {
    float score = -1, expected = -1;
    auto got =
        of_library([&] { score = mask ? CImgproc::getSharpness(src, *mask) : CImgproc::getSharpness(src); });
    auto want = of_reference([&] {
        expected = mask ? reference::getSharpness(to_reference(src), to_reference(*mask))
                        : reference::getSharpness(to_reference(src));
    });
    ASSERT_TRUE(same(got.with("score", score), want.with("score", expected))) << shape_of(src);
}

TEST(Differential, getSharpness_equals_the_reference) {
    Random random(105);
    for (int round = 0; round < 1500; ++round) {
        const U8 src = any_image(random, random.pick({1, 1, 3, 3, 2}));
        compare_sharpness(src, nullptr);
        U8 mask = any_image(random, random.chance(4) ? 3 : 1, src.rows, src.cols);
        if (random.chance(30)) mask = filled(src.rows, src.cols, 1, random.pick({0, 1, 255}));
        if (random.chance(6)) mask = any_previous(random);
        compare_sharpness(src, &mask);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
    compare_sharpness(text_page(120, 300, 8), nullptr);
}

TEST(Differential, getSharpness_of_odd_matrices_equals_the_reference) {
    for (const U8& src : odd_matrices()) {
        compare_sharpness(src, nullptr);
        compare_sharpness(src, &src);
    }
}

}  // namespace
}  // namespace testing_support
