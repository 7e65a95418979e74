#include "color.h"

#include <algorithm>
#include <vector>

#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using reference::Byte;
using reference::Image;

struct Conversion {
    const char* name;
    void (*library)(const U8&, U8&);
    void (*plain)(Image<Byte>, Image<Byte>&);
};

constexpr Conversion kToGray{"bgr2gray", CImgproc::bgr2gray, reference::bgr2gray};
constexpr Conversion kToHsv{"bgr2hsv", CImgproc::bgr2hsv, reference::bgr2hsv};

void compare(const Conversion& conversion, const U8& src, const U8& previous, bool in_place) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    const auto got = of_library([&] { conversion.library(in_place ? dst : src, dst); }).with("dst", dst);
    const auto want =
        of_reference([&] { conversion.plain(to_reference(src), expected); }).with("dst", expected);
    ASSERT_TRUE(same(got, want)) << conversion.name << " of " << shape_of(src)
                                 << (in_place ? " in place" : "");
}

TEST(Differential, bgr2gray_equals_the_reference) {
    Random random(11);
    for (int round = 0; round < 1500; ++round) {
        const U8 src = any_image(random, random.pick({1, 3, 3, 3, 3, 2, 4}));
        compare(kToGray, src, any_previous(random), random.chance(30));
    }
}

TEST(Differential, bgr2hsv_equals_the_reference) {
    Random random(12);
    for (int round = 0; round < 1500; ++round) {
        const U8 src = any_image(random, random.pick({3, 3, 3, 3, 1, 2, 4}));
        compare(kToHsv, src, any_previous(random), random.chance(30));
    }
}

TEST(Differential, conversions_of_odd_matrices_equal_the_reference) {
    for (const U8& src : odd_matrices()) {
        for (const bool in_place : {false, true})
            for (const Conversion& conversion : {kToGray, kToHsv})
                compare(conversion, src, filled(2, 2, 2, 3), in_place);
    }
}

TEST(Differential, yuv2bgr_equals_the_reference_and_reads_only_its_pixels) {
    Random random(13);
    for (int round = 0; round < 1500; ++round) {
        const int rows = random.chance(5) ? random.range(-3, 0) : any_side(random);
        const int cols = random.chance(5) ? random.range(-3, 0) : any_side(random);
        // Exactly the bytes that the pixels address, so that a sanitizer sees a read beyond them.
        const int last_chroma = ((rows - 1) / 2 + rows) * cols;
        const int bytes = rows > 0 && cols > 0 ? last_chroma + (cols + 1) / 2 * 2 : 0;
        std::vector<Byte> frame(static_cast<size_t>(bytes));
        const bool extremes = random.chance(30);
        for (Byte& byte : frame)
            byte =
                static_cast<Byte>(extremes ? random.pick({0, 15, 16, 17, 254, 255}) : random.range(0, 255));
        frame.shrink_to_fit();
        U8 dst = any_previous(random);
        Image<Byte> expected = to_reference(dst);
        const auto got =
            of_library([&] { CImgproc::yuv2bgr(frame.data(), rows, cols, dst); }).with("dst", dst);
        const auto want =
            of_reference([&] { reference::yuv2bgr(frame, rows, cols, expected); }).with("dst", expected);
        ASSERT_TRUE(same(got, want)) << rows << " x " << cols;
    }
}

TEST(Differential, yuv2bgr_equals_the_reference_for_every_luma_and_chroma) {
    // One row a (U, V) pair out of a grid that holds the extremes; every luma in it.
    constexpr int kCols = 512;
    for (int u = 0; u < 256; u += 5) {
        std::vector<Byte> frame(static_cast<size_t>(2 * kCols + kCols));
        for (int v = 0; v < 256; v += 5) {
            for (int i = 0; i < 2 * kCols; ++i) frame[static_cast<size_t>(i)] = static_cast<Byte>(i / 2);
            for (int i = 0; i < kCols; i += 2) {
                frame[static_cast<size_t>(2 * kCols + i)] = static_cast<Byte>(v);
                frame[static_cast<size_t>(2 * kCols + i + 1)] = static_cast<Byte>(u);
            }
            U8 dst;
            Image<Byte> expected;
            const auto got =
                of_library([&] { CImgproc::yuv2bgr(frame.data(), 2, kCols, dst); }).with("dst", dst);
            const auto want =
                of_reference([&] { reference::yuv2bgr(frame, 2, kCols, expected); }).with("dst", expected);
            ASSERT_TRUE(same(got, want)) << "u " << u << " v " << v;
        }
    }
}

TEST(Differential, yuv2bgr_of_impossible_sizes_equals_the_reference) {
    const int sizes[][2] = {{65536, 65536},  {32768, 65536}, {2, -3},        {-2, -3},      {-1, 4},
                            {65536, -65535}, {0, -7},        {INT32_MAX, 0}, {0, INT32_MAX}};
    for (const auto& size : sizes) {
        U8 dst = filled(2, 2, 1, 1);
        Image<Byte> expected = to_reference(dst);
        const auto got =
            of_library([&] { CImgproc::yuv2bgr(nullptr, size[0], size[1], dst); }).with("dst", dst);
        const auto want =
            of_reference([&] { reference::yuv2bgr({}, size[0], size[1], expected); }).with("dst", expected);
        ASSERT_TRUE(same(got, want)) << size[0] << " x " << size[1];
    }
}

// Every colour: 16 images of 1024 x 1024.
TEST(Differential, every_colour_converts_to_gray_and_hsv_as_defined) {
    int division[256] = {};
    for (int i = 1; i < 256; ++i) division[i] = (2 * 1044480 + i) / (2 * i);
    for (int high = 0; high < 16; ++high) {
        U8 colours = filled(1024, 1024, 3, 0);
        for (int i = 0; i < 1 << 20; ++i) {
            colours.data[3 * i] = static_cast<Byte>(i);
            colours.data[3 * i + 1] = static_cast<Byte>(i >> 8);
            colours.data[3 * i + 2] = static_cast<Byte>(i >> 16 | high << 4);
        }
        U8 gray, hsv;
        printed_by([&] {
            CImgproc::bgr2gray(colours, gray);
            CImgproc::bgr2hsv(colours, hsv);
        });
        int wrong = 0;
        for (int i = 0; i < 1 << 20; ++i) {
            const int b = colours.data[3 * i], g = colours.data[3 * i + 1], r = colours.data[3 * i + 2];
            wrong += gray.data[i] != (107 * b + 601 * g + 306 * r + 512) >> 10;
            const int v = std::max({b, g, r}), diff = v - std::min({b, g, r});
            const int h = v == r ? g - b : v == g ? b - r + 2 * diff : r - g + 4 * diff;
            const int hue = ((division[diff] * h * 15 + 262144) >> 19) + (h < 0 ? 180 : 0);
            wrong += hsv.data[3 * i] != hue || hsv.data[3 * i + 1] != division[v] * diff >> 12 ||
                     hsv.data[3 * i + 2] != v;
        }
        ASSERT_EQ(wrong, 0) << "red from " << (high << 4);
    }
}

}  // namespace
}  // namespace testing_support
