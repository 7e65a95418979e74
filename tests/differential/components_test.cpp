#include "components.h"

#include <algorithm>

#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using reference::Byte;
using reference::Image;
using reference::List;

void compare_labels(const U8& src) {
    Mat<int> dst;
    dst.mat_create(2, 3, 1, 7);
    int num = -5;
    Image<int> expected = to_reference(dst);
    int expected_num = -5;
    auto got = of_library([&] { CImgproc::bwlabel(src, dst, num); });
    auto want = of_reference([&] { reference::bwlabel(to_reference(src), expected, expected_num); });
    got.with("dst", dst).with("num", num);
    want.with("dst", expected).with("num", expected_num);
    ASSERT_TRUE(same(got, want)) << shape_of(src);
}

void compare_components(const U8& src, bool with_points) {
    orvex_991::vector<Rect> rects(3, Rect(1, 2, 3, 4));
    orvex_991::vector<orvex_991::vector<Point>> points(2);
    List<reference::Rect> expected_rects;
    expected_rects.resize(3);
    for (auto& rect : expected_rects.items) rect = {1, 2, 3, 4};
    List<List<reference::Point>> expected_points;
    expected_points.resize(2);
    auto got = of_library([&] { CImgproc::connectdComponent(src, rects, with_points ? &points : nullptr); });
    auto want = of_reference([&] {
        reference::connectdComponent(to_reference(src), expected_rects,
                                     with_points ? &expected_points : nullptr);
    });
    got.with("rects", rects).with("points", points);
    want.with("rects", expected_rects).with("points", expected_points);
    ASSERT_TRUE(same(got, want)) << shape_of(src) << (with_points ? " with points" : "");
}

TEST(Differential, bwlabel_equals_the_reference) {
    Random random(31);
    for (int round = 0; round < 4000; ++round) compare_labels(any_image(random, random.chance(3) ? 3 : 1));
}

TEST(Differential, bwlabel_of_tiny_images_equals_the_reference) {
    // Every binary image of up to 12 pixels: all ways in which a forest of half as many labels
    // can be too small.
    for (int rows = 1; rows <= 12; ++rows) {
        for (int cols = 1; rows * cols <= 12; ++cols) {
            for (int bits = 0; bits < 1 << (rows * cols); ++bits) {
                U8 src = filled(rows, cols, 1, 0);
                for (int i = 0; i < rows * cols; ++i) src.data[i] = bits >> i & 1 ? 255 : 0;
                compare_labels(src);
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST(Differential, connectdComponent_equals_the_reference) {
    Random random(32);
    for (int round = 0; round < 3000; ++round)
        compare_components(any_image(random, random.chance(3) ? 3 : 1), random.chance(50));
}

TEST(Differential, connectdComponent_orders_many_ties_as_the_reference) {
    Random random(33);
    for (int round = 0; round < 400; ++round) {
        // Isolated bars of few different sizes.
        U8 src = filled(random.range(20, 61), random.range(20, 61), 1, 0);
        for (int row = 1; row + 2 < src.rows; row += 3)
            for (int col = 1; col + 3 < src.cols; col += 4)
                for (int k = random.range(0, 3); k > 0; --k) src.data[row * src.cols + col + k - 1] = 255;
        compare_components(src, random.chance(50));
    }
}

TEST(Differential, labels_and_components_of_odd_matrices_equal_the_reference) {
    for (const U8& src : odd_matrices()) {
        compare_labels(src);
        compare_components(src, false);
        compare_components(src, true);
    }
}

TEST(Differential, divideComponentsToRows_equals_the_reference) {
    Random random(34);
    for (int round = 0; round < 6000; ++round) {
        orvex_991::vector<Rect> rects;
        List<reference::Rect> expected_rects;
        const int n = random.range(0, round % 20 ? 30 : 700);
        const bool hostile = random.chance(15);
        const int spread = random.pick({10, 60, 400});
        for (int k = 0; k < n; ++k) {
            const int y = hostile && random.chance(10) ? random.pick({-1, -7, 5000, INT32_MIN})
                                                       : random.range(0, spread);
            int height = random.range(1, 12);
            if (hostile && random.chance(20)) height = random.pick({0, -1, -20, INT32_MIN, INT32_MAX});
            // Sums may wrap, but not to a bottom so large that the reference would need gigabytes.
            if (reference::wrapping(static_cast<int64_t>(y) + height) > 100000) height = 0;
            const reference::Rect rect{random.range(-5, 40), y, random.range(0, 9), height};
            rects.push_back(Rect(rect.x, rect.y, rect.width, rect.height));
            expected_rects.push_back(rect);
        }
        orvex_991::vector<orvex_991::vector<Rect>> groups(3);
        List<List<reference::Rect>> expected;
        expected.resize(3);
        auto got = of_library([&] { CImgproc::divideComponentsToRows(rects, groups); });
        auto want = of_reference([&] { reference::divideComponentsToRows(expected_rects, expected); });
        ASSERT_TRUE(same(got.with("rows", groups), want.with("rows", expected))) << "round " << round;
    }
}

// By all digits of a number but the last two, or by none.
struct Order {
    const char* name;
    bool (*before)(int, int);
};

constexpr Order kOrders[] = {
    {"descending", [](int a, int b) { return a / 100 > b / 100; }},
    {"ascending", [](int a, int b) { return a / 100 < b / 100; }},
    {"intransitive",
     [](int a, int b) {  // who goes first is drawn by lot for every pair
         const unsigned lot = static_cast<unsigned>(std::min(a, b)) * 2654435761u ^
                              static_cast<unsigned>(std::max(a, b)) * 40503u;
         return a != b && ((lot >> 13 & 1) != 0) == (a < b);
     }},
};

TEST(Differential, quick_partition_equals_the_reference) {
    Random random(35);
    for (int round = 0; round < 3000; ++round) {
        orvex_991::vector<int> v;
        List<int> expected;
        const int n = random.range(0, 60);
        const int levels = random.pick({1, 2, 5, 1000});
        for (int k = 0; k < n; ++k) {
            v.push_back(random.range(1, levels) * 100 + k);  // the last two digits tell equal elements apart
            expected.push_back(v[k]);
        }
        const Order& order = kOrders[random.range(0, 2)];
        const int low = random.chance(80) ? 0 : random.range(-2, n);
        const int high = random.chance(80) ? n - 1 : random.range(-2, n + 1);
        auto got = of_library([&] { orvex_991::quick_partition(v, low, high, order.before); });
        auto want = of_reference([&] { reference::quick_partition(expected, low, high, order.before); });
        ASSERT_TRUE(same(got.with("v", v), want.with("v", expected)))
            << order.name << " order, round " << round;
    }
}

}  // namespace
}  // namespace testing_support
