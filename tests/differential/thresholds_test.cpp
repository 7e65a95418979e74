#include "thresholds.h"

#include "images.h"
#include "outcome.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using reference::Byte;
using reference::Image;

// A mask of about the image's size: mostly equal, sometimes with more channels, sometimes of
// another size or empty.
U8 any_mask(Random& random, const U8& src) {
    if (random.chance(15)) return U8();
    if (random.chance(10))
        return filled(src.rows + random.range(0, 1), src.cols + random.range(0, 1), 1, 255);
    const int channels = random.chance(10) ? random.range(0, 3) : 1;
    if (random.chance(10)) return filled(src.rows, src.cols, channels, random.pick({0, 255}));
    return any_image(random, channels > 0 ? channels : 1, src.rows, src.cols);
}

void compare_otsu(const U8& src) {
    int got_level = -1, want_level = -1;
    auto got = of_library([&] { got_level = CImgproc::otsu(src); });
    auto want = of_reference([&] { want_level = reference::otsu(to_reference(src)); });
    ASSERT_TRUE(same(got.with("level", got_level), want.with("level", want_level))) << shape_of(src);
}

void compare_masked_otsu(const U8& src, const U8& mask) {
    int got_level = -1, want_level = -1;
    auto got = of_library([&] { got_level = CImgproc::otsu(src, mask); });
    auto want = of_reference([&] { want_level = reference::otsu(to_reference(src), to_reference(mask)); });
    ASSERT_TRUE(same(got.with("level", got_level), want.with("level", want_level))) << shape_of(src);
}

void compare_segment(const U8& src, const U8& previous, bool in_place, int level) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    auto got = of_library([&] { CImgproc::thresholdSeg(in_place ? dst : src, dst, level); });
    auto want = of_reference([&] { reference::thresholdSeg(to_reference(src), expected, level); });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
        << shape_of(src) << " level " << level;
}

void compare_threshold(const U8& src, const U8& previous, bool in_place, int low, int high, int type,
                       const U8& mask) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    int got_level = -1, want_level = -1;
    auto got = of_library(
        [&] { got_level = CImgproc::threshold(in_place ? dst : src, dst, low, high, type, mask); });
    auto want = of_reference([&] {
        want_level = reference::threshold(to_reference(src), expected, low, high, type, to_reference(mask));
    });
    got.with("dst", dst).with("level", got_level);
    want.with("dst", expected).with("level", want_level);
    ASSERT_TRUE(same(got, want)) << shape_of(src) << " mask " << shape_of(mask) << " type " << type;
}

TEST(Differential, otsu_equals_the_reference) {
    Random random(21);
    for (int round = 0; round < 3000; ++round) {
        const U8 src = any_image(random, random.chance(5) ? 3 : 1);
        compare_otsu(src);
        compare_masked_otsu(src, any_mask(random, src));
    }
}

// Two levels in every proportion, extreme ones included, where rounding decides.
TEST(Differential, otsu_of_two_levels_equals_the_reference) {
    Random random(22);
    for (int round = 0; round < 600; ++round) {
        const int rows = random.range(1, 300), cols = random.range(1, 300);
        U8 src = filled(rows, cols, 1, random.range(0, 255));
        const int others = random.chance(50) ? random.range(0, 3) : random.range(0, rows * cols);
        const Byte other = static_cast<Byte>(random.range(0, 255));
        for (int k = 0; k < others; ++k) src.data[random.range(0, rows * cols - 1)] = other;
        compare_otsu(src);
    }
}

TEST(Differential, thresholdSeg_equals_the_reference) {
    Random random(23);
    for (int round = 0; round < 3000; ++round) {
        const U8 src = any_image(random, random.chance(5) ? 3 : 1);
        U8 previous = any_previous(random);
        if (random.chance(40)) previous = filled(src.rows, src.cols, random.range(0, 3), 77);
        const int level =
            random.chance(10) ? random.pick({-1, 0, 1, 255, 256, 1 << 30}) : random.range(0, 255);
        compare_segment(src, previous, random.chance(25), level);
    }
}

TEST(Differential, threshold_equals_the_reference) {
    Random random(24);
    for (int round = 0; round < 4000; ++round) {
        const U8 src = any_image(random, random.chance(5) ? 3 : 1);
        U8 previous = any_previous(random);
        if (random.chance(70))
            previous = filled(src.rows, src.cols, random.chance(80) ? 1 : random.range(0, 3), 77);
        const int low = random.chance(4) ? 1 : 0;
        const int high = random.chance(4) ? 254 : 255;
        const int type = random.chance(10) ? random.range(-16, 31) : random.pick({8, 9});
        compare_threshold(src, previous, random.chance(25), low, high, type, any_mask(random, src));
    }
}

TEST(Differential, thresholds_of_odd_matrices_equal_the_reference) {
    for (const U8& src : odd_matrices()) {
        compare_otsu(src);
        for (const U8& mask : odd_matrices()) compare_masked_otsu(src, mask);
        for (const bool in_place : {false, true}) {
            compare_segment(src, filled(3, 3, 1, 1), in_place, 6);
            compare_segment(src, src, in_place, 6);
            compare_threshold(src, filled(3, 3, 1, 1), in_place, 0, 255, 8, U8());
            compare_threshold(src, filled(3, 3, 1, 1), in_place, 0, 255, 9, src);
        }
    }
}

}  // namespace
}  // namespace testing_support
