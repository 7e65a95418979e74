#include "thresholds.h"

#include <cmath>
#include <limits>

#include "images.h"
#include "same.h"

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

}  // namespace
}  // namespace testing_support
