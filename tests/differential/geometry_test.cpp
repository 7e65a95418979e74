#include "geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;
using reference::Byte;
using reference::Image;

float uniform(Random& random, float low, float high) {
    return low + (high - low) * static_cast<float>(random.range(0, 1 << 20)) / static_cast<float>(1 << 20);
}

Mat<float> matrix_of(std::initializer_list<float> elements) {
    Mat<float> m;
    m.mat_create(2, 3, 1, 0);
    std::copy(elements.begin(), elements.end(), m.data);
    return m;
}

// Turns, scalings, shears, mirrors; singular ones, and now and then an element that is not
// a number or infinite.
Mat<float> any_matrix(Random& random) {
    const auto element = [&](float spread) { return uniform(random, -spread, spread); };
    const int kind = random.range(0, 9);
    Mat<float> m;
    if (kind < 3) {
        m = CImgproc::getRotationMatrix2D(Point32f(element(40), element(40)), element(400),
                                          uniform(random, 0.1f, 4));
    } else if (kind < 5) {  // axis-aligned, also mirrored
        m = matrix_of(
            {element(3), 0, element(30), random.chance(50) ? 0.0f : -0.0f, element(3), element(30)});
    } else if (kind < 6) {
        m = matrix_of(
            {1, 0, static_cast<float>(random.range(-5, 5)), 0, 1, static_cast<float>(random.range(-5, 5))});
    } else if (kind < 7) {
        const float a = element(2), b = element(2);
        m = matrix_of({a, b, element(9), 2 * a, 2 * b, element(9)});
    } else {
        m = matrix_of({element(2), element(2), element(40), element(2), element(2), element(40)});
    }
    if (random.chance(12)) {
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        m.data[random.range(0, 5)] =
            random.pick({kInfinity, -kInfinity, std::nanf(""), 1e38f, -1e38f, 1e-40f, 0.0f});
    }
    return m;
}

void compare_warp(const U8& src, const Mat<float>& matrix, const Size& size, int interp, bool in_place,
                  bool masked) {
    U8 dst = in_place ? src : filled(3, 2, 1, 9);
    Image<Byte> expected = to_reference(dst);
    U8 mask = masked ? filled(1, std::abs(size.width * size.height) + 5, 1, 7) : U8();
    Image<Byte> expected_mask = to_reference(mask);
    auto got = of_library([&] {
        CImgproc::warpAffine(in_place ? dst : src, dst, matrix, size, static_cast<INTERP_TYPE>(interp),
                             masked ? &mask : nullptr);
    });
    auto want = of_reference([&] {
        reference::warpAffine(to_reference(src), expected, to_reference(matrix), {size.width, size.height},
                              interp, masked ? &expected_mask : nullptr);
    });
    got.with("dst", dst).with("mask", mask);
    want.with("dst", expected).with("mask", expected_mask);
    ASSERT_TRUE(same(got, want)) << shape_of(src) << " to " << size.height << " x " << size.width << " by "
                                 << matrix.data[0] << " " << matrix.data[1] << " " << matrix.data[2] << " "
                                 << matrix.data[3] << " " << matrix.data[4] << " " << matrix.data[5];
}

TEST(Differential, warpAffine_equals_the_reference) {
    Random random(71);
    for (int round = 0; round < 8000; ++round) {
        const U8 src = any_image(random, random.pick({1, 1, 3, 3, 2, 4}));
        const Size size(any_side(random), any_side(random));
        compare_warp(src, any_matrix(random), size, random.chance(95) ? 0 : random.pick({1, -1, 7}),
                     random.chance(20), random.chance(40));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, warpAffine_of_larger_images_equals_the_reference) {
    Random random(72);
    for (int round = 0; round < 60; ++round) {
        const U8 src =
            any_image(random, random.pick({1, 3, 4}), random.range(100, 400), random.range(100, 400));
        const Mat<float> matrix = CImgproc::getRotationMatrix2D(Point32f(120, 90), uniform(random, -180, 180),
                                                                uniform(random, 0.3f, 3));
        compare_warp(src, matrix, Size(random.range(100, 400), random.range(100, 400)), 0, false, true);
    }
}

TEST(Differential, warpAffine_of_odd_matrices_and_sizes_equals_the_reference) {
    const Mat<float> turn = CImgproc::getRotationMatrix2D(Point32f(1, 1), 30, 1);
    const Mat<float> scale = matrix_of({2, 0, 0.5f, 0, 2, 0.5f});
    const int sizes[][2] = {{4, 3}, {0, 3}, {3, 0}, {-2, 3}, {-2, -3}, {65536, 65536}, {65537, 65536}};
    for (const U8& src : odd_matrices()) {
        for (const auto& size : sizes) {
            // Without channels these fit into no bytes, and the reference would walk them.
            if (static_cast<int64_t>(size[0]) * size[1] > 100000 && src.channels == 0) continue;
            for (const int interp : {0, 1}) {
                compare_warp(src, turn, Size(size[0], size[1]), interp, false, false);
                compare_warp(src, scale, Size(size[0], size[1]), interp, true, false);
            }
        }
    }
    for (const auto& size : sizes) {
        compare_warp(filled(3, 4, 3, 5), turn, Size(size[0], size[1]), 0, false, false);
        compare_warp(filled(3, 4, 1, 5), scale, Size(size[0], size[1]), 0, false, false);
    }
}

void compare_resize(const U8& src, const U8& previous, bool in_place, const Size& size, int interp) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    auto got = of_library(
        [&] { CImgproc::resize(in_place ? dst : src, dst, size, static_cast<INTERP_TYPE>(interp)); });
    auto want = of_reference([&] {
        reference::resize(to_reference(src), expected, {size.width, size.height}, interp);
    });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
        << shape_of(src) << " to " << size.height << " x " << size.width;
}

TEST(Differential, resize_to_a_size_equals_the_reference) {
    Random random(73);
    for (int round = 0; round < 10000; ++round) {
        const U8 src = any_image(random, random.range(1, 4));
        Size size(any_side(random), any_side(random));
        if (random.chance(10)) size = Size((src.cols + 1) / 2, (src.rows + 1) / 2);
        if (random.chance(5)) size = Size(src.cols * 2, src.rows * 2);
        if (random.chance(3)) size = Size(random.range(-1, 1), random.range(-1, 1));
        compare_resize(src, any_previous(random), random.chance(25), size, random.chance(97) ? 0 : 1);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

// Rows are looked up in blocks, and columns in vectors: many of either, whole blocks and parts of one.
TEST(Differential, resize_of_long_images_equals_the_reference) {
    Random random(78);
    for (int round = 0; round < 600; ++round) {
        const int longer = random.pick({254, 256, 258, 512, 514, random.range(200, 800)});
        const int shorter = 2 * random.range(1, 20) + (random.chance(20) ? 1 : 0);
        const bool upright = random.chance(70);
        const U8 src =
            any_image(random, random.range(1, 4), upright ? longer : shorter, upright ? shorter : longer);
        const double factor = random.pick({0.5, 0.5, 0.27, 0.4, 0.9, 1.0, 1.7, 2.0});
        const Size size(std::max(1, static_cast<int>(src.cols * factor)),
                        std::max(1, static_cast<int>(src.rows * factor)));
        compare_resize(src, any_previous(random), random.chance(25), size, 0);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

// The same matrices by way of warpAffine with a mask: the axis-aligned shortcut fills it, too.
TEST(Differential, axis_aligned_warps_with_a_mask_equal_the_reference) {
    Random random(74);
    for (int round = 0; round < 4000; ++round) {
        const U8 src = any_image(random, random.range(1, 4));
        const Size size(any_side(random), random.chance(95) ? any_side(random) : random.range(128, 400));
        const float fx = static_cast<float>(size.width) / static_cast<float>(src.cols);
        const float fy = static_cast<float>(size.height) / static_cast<float>(src.rows);
        compare_warp(src, matrix_of({fx, 0, fx * 0.5f - 0.5f, 0, fy, fy * 0.5f - 0.5f}), size, 0, false,
                     true);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

// Pixels that are copies or means of two by two, of a part of the source, and of pixels beyond it on any side.
TEST(Differential, shifted_copies_and_halves_equal_the_reference) {
    Random random(79);
    for (int round = 0; round < 4000; ++round) {
        const U8 src = any_image(random, random.range(1, 4), random.range(2, 80), random.range(2, 160));
        const float factor = random.pick({0.5f, 0.5f, 1.0f});
        const float across = 0.25f * static_cast<float>(random.range(-60, 8)),
                    down = 0.25f * static_cast<float>(random.range(-60, 8));
        compare_warp(src, matrix_of({factor, 0, across, 0, factor, down}),
                     Size(random.range(1, 90), random.range(1, 50)), 0, false, random.chance(50));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, resize_by_a_factor_equals_the_reference) {
    Random random(75);
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (int round = 0; round < 3000; ++round) {
        const U8 src = any_image(random, random.pick({1, 3}));
        float scale = uniform(random, 0.01f, 3);
        if (random.chance(15))
            scale = random.pick({0.0f, -1.0f, std::nanf(""), kInfinity, 1e-30f, 1e30f, 0.5f, 1.0f});
        U8 dst = any_previous(random);
        Image<Byte> expected = to_reference(dst);
        auto got = of_library([&] { CImgproc::resize(src, dst, scale, orvex_cv_991::INTERP_LINEAR); });
        auto want = of_reference([&] { reference::resize(to_reference(src), expected, scale, 0); });
        ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
            << shape_of(src) << " by " << scale;
    }
}

TEST(Differential, rotation_matrices_equal_the_reference) {
    Random random(76);
    for (int round = 0; round < 20000; ++round) {
        const float x = uniform(random, -5000, 5000), y = uniform(random, -5000, 5000);
        const float angle =
            random.chance(5) ? random.pick({0.0f, 90.0f, 1e9f, std::nanf("")}) : uniform(random, -720, 720);
        const float scale =
            random.chance(5) ? random.pick({0.0f, -1.0f, std::nanf("")}) : uniform(random, 0, 9);
        Mat<float> matrix;
        Image<float> expected;
        auto got = of_library([&] { matrix = CImgproc::getRotationMatrix2D(Point32f(x, y), angle, scale); });
        auto want = of_reference([&] { expected = reference::getRotationMatrix2D(x, y, angle, scale); });
        if (std::isnan(angle)) continue;  // the bits of not-a-number are the processor's
        ASSERT_TRUE(same(got.with("matrix", matrix), want.with("matrix", expected)));
    }
}

// Coordinates from small to the ends of int.
int any_coordinate(Random& random) {
    if (random.chance(10)) return random.pick({INT32_MAX, INT32_MIN, INT32_MAX - 1, 0});
    return random.range(-3000, 3000);
}

TEST(Differential, points_and_rectangles_through_matrices_equal_the_reference) {
    Random random(77);
    for (int round = 0; round < 20000; ++round) {
        Mat<float> matrix = any_matrix(random);
        if (random.chance(3)) matrix.mat_create(3, 2, 1, 1);
        if (random.chance(3)) matrix.mat_create(2, 3, 2, 1);
        const Point pt(any_coordinate(random), any_coordinate(random));
        const Point origin(any_coordinate(random), any_coordinate(random));
        const float scale = uniform(random, -3, 3);
        Point mapped;
        reference::Point expected{0, 0};
        auto got = of_library([&] { mapped = CImgproc::pointAffine(pt, matrix, scale, origin); });
        auto want = of_reference([&] {
            expected =
                reference::pointAffine({pt.x, pt.y}, to_reference(matrix), scale, {origin.x, origin.y});
        });
        ASSERT_TRUE(same(got.with("point", mapped), want.with("point", expected))) << "round " << round;

        const Rect rect(any_coordinate(random), any_coordinate(random), any_coordinate(random),
                        any_coordinate(random));
        Rect box;
        reference::Rect expected_box{0, 0, 0, 0};
        got = of_library([&] { box = CImgproc::rectAffine(rect, matrix); });
        want = of_reference([&] {
            expected_box =
                reference::rectAffine({rect.x, rect.y, rect.width, rect.height}, to_reference(matrix));
        });
        ASSERT_TRUE(same(got.with("rect", box), want.with("rect", expected_box))) << "round " << round;

        const Size size(any_coordinate(random), any_coordinate(random));
        box = CImgproc::checkRectInMat(size, rect);
        expected_box =
            reference::checkRectInMat({size.width, size.height}, {rect.x, rect.y, rect.width, rect.height});
        ASSERT_TRUE(box.x == expected_box.x && box.y == expected_box.y && box.width == expected_box.width &&
                    box.height == expected_box.height);
    }
}

}  // namespace
}  // namespace testing_support
