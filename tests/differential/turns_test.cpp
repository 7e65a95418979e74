#include "turns.h"

#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;
using reference::Byte;
using reference::Image;

void compare_turn(const U8& src, const U8& previous, bool in_place, int n, int f) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    auto got = of_library([&] { CImgproc::rot90ClockWise_FlipLR(in_place ? dst : src, dst, n, f); });
    auto want =
        of_reference([&] { reference::rot90ClockWise_FlipLR(to_reference(src), expected, n, f, in_place); });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
        << shape_of(src) << " n " << n << " f " << f << (in_place ? " in place" : "");
    if (f != 0) return;
    dst = in_place ? src : previous;
    expected = to_reference(dst);
    got = of_library([&] { CImgproc::rot90AntiClockWise(in_place ? dst : src, dst, n); });
    want = of_reference([&] { reference::rot90AntiClockWise(to_reference(src), expected, n, in_place); });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
        << shape_of(src) << " anticlockwise " << n;
}

TEST(Differential, quarter_turns_equal_the_reference) {
    Random random(111);
    for (int round = 0; round < 6000; ++round) {
        const U8 src = any_image(random, random.range(1, 5));
        const int n = random.chance(90) ? random.range(-8, 8) : random.pick({INT32_MAX, INT32_MIN, 1001});
        compare_turn(src, any_previous(random), random.chance(30), n,
                     random.chance(50) ? 0 : random.range(-3, 3));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, quarter_turns_of_larger_images_equal_the_reference) {
    Random random(112);
    for (int round = 0; round < 60; ++round)
        compare_turn(any_image(random, random.range(1, 4), random.range(1, 300), random.range(1, 300)), U8(),
                     false, random.range(0, 3), random.range(0, 1));
}

TEST(Differential, quarter_turns_of_odd_matrices_equal_the_reference) {
    for (const U8& src : odd_matrices())
        for (int n = -3; n < 4; ++n)
            for (const int f : {0, 1})
                for (const bool in_place : {false, true})
                    compare_turn(src, filled(2, 2, 2, 3), in_place, n, f);
}

int any_coordinate(Random& random) {
    return random.chance(10) ? random.pick({INT32_MAX, INT32_MIN}) : random.range(-30, 60);
}

struct RectTurn {
    const char* name;
    Rect (*library)(const Rect&, const Size&, int);
};

// Both turn the same way: they differ for images alone.
constexpr RectTurn kRectTurns[] = {{"rot90ClockWise", CImgproc::rot90ClockWise},
                                   {"rot90AntiClockWise", CImgproc::rot90AntiClockWise}};

TEST(Differential, quarter_turns_of_points_and_rectangles_equal_the_reference) {
    Random random(113);
    for (int round = 0; round < 20000; ++round) {
        const Point pt(any_coordinate(random), any_coordinate(random));
        const Size size(any_coordinate(random), any_coordinate(random));
        const int n = random.range(-9, 9);
        const reference::Point expected =
            reference::rot90ClockWise(reference::Point{pt.x, pt.y}, {size.width, size.height}, n);
        EXPECT_TRUE(CImgproc::rot90ClockWise(pt, size, n) == Point(expected.x, expected.y));
        EXPECT_TRUE(CImgproc::rot90AntiClockWise(pt, size, n) == Point(expected.x, expected.y));

        const Rect rect(any_coordinate(random), any_coordinate(random), any_coordinate(random),
                        any_coordinate(random));
        for (const RectTurn& turn : kRectTurns) {
            Rect turned;
            reference::Rect expected_rect{0, 0, 0, 0};
            auto got = of_library([&] { turned = turn.library(rect, size, n); });
            auto want = of_reference([&] {
                expected_rect = reference::rot90ClockWise(
                    reference::Rect{rect.x, rect.y, rect.width, rect.height}, {size.width, size.height}, n);
            });
            ASSERT_TRUE(same(got.with("rect", turned), want.with("rect", expected_rect)))
                << turn.name << ", round " << round;
        }
    }
}

}  // namespace
}  // namespace testing_support
