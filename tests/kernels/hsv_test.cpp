// Kernels of the conversion to hue, saturation and value.
#include <algorithm>
#include <array>
#include <vector>

#include "kernel_case.h"

namespace testing_support {
namespace {

namespace kernels = orvex_cv_991::kernels;
using orvex_cv_991::Isa;

// 255 * 4096 / x rounded to nearest, in integers.
int division(int x) {
    return x == 0 ? 0 : (2 * 1044480 + x) / (2 * x);
}

// What a colour's H and S are made of: the largest channel, its distance from the smallest one,
// and the hue's numerator.
struct Parts {
    int v, diff, h;

    int hue() const { return ((division(diff) * h * 15 + 262144) >> 19) + (h < 0 ? 180 : 0); }
    int saturation() const { return division(v) * diff >> 12; }
};

Parts parts_of(int b, int g, int r) {
    const int v = std::max({b, g, r}), diff = v - std::min({b, g, r});
    return {v, diff, v == r ? g - b : v == g ? b - r + 2 * diff : r - g + 4 * diff};
}

// H, S, V by the definition.
void expect_hsv(const uint8_t* hsv, int b, int g, int r) {
    const Parts parts = parts_of(b, g, r);
    ASSERT_EQ(hsv[0], parts.hue());
    ASSERT_EQ(hsv[1], parts.saturation());
    ASSERT_EQ(hsv[2], parts.v);
}

TEST(Kernels, hsv_from_bgr) {
    Random random(53);
    for_every_case([&](Isa isa, size_t n, size_t offset) {
        Input<uint8_t> bgr(random, 3 * n, offset);
        Output<uint8_t> hsv(random, 3 * n, offset);
        kernels::hsv_from_bgr(isa, bgr.data(), hsv.data(), static_cast<ptrdiff_t>(n));
        for (size_t i = 0; i < n; ++i)
            ASSERT_NO_FATAL_FAILURE(expect_hsv(&hsv[3 * i], bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2]));
        ASSERT_TRUE(hsv.guards_hold());
    });
}

TEST(Kernels, hsv_from_strided) {
    Random random(54);
    for (const size_t stride : {0, 1, 2, 4, 5}) {
        for_every_case([&](Isa isa, size_t n, size_t offset) {
            Input<uint8_t> pixels(random, stride * n, offset);
            Output<uint8_t> hsv(random, 3 * n, offset);
            kernels::hsv_from_strided(isa, pixels.data(), static_cast<ptrdiff_t>(stride * n),
                                      static_cast<ptrdiff_t>(stride), hsv.data(), static_cast<ptrdiff_t>(n));
            const auto byte = [&](size_t at) { return at < stride * n ? pixels[at] : 0; };
            for (size_t i = 0; i < n; ++i)
                ASSERT_NO_FATAL_FAILURE(
                    expect_hsv(&hsv[3 * i], byte(stride * i), byte(stride * i + 1), byte(stride * i + 2)));
            ASSERT_TRUE(hsv.guards_hold());
        });
    }
}

// A colour of these parts: h ranges from -diff over the red ones, up to 3 * diff over the green ones and to
// below 5 * diff over the blue ones.
std::array<uint8_t, 3> colour_of(const Parts& parts) {
    const int sector = parts.h <= parts.diff ? 0 : parts.h <= 3 * parts.diff ? 1 : 2;
    const int difference = parts.h - 2 * parts.diff * sector;  // of the channels that are not the largest
    const int smallest = parts.v - parts.diff;
    std::array<uint8_t, 3> bgr;
    const auto set = [&](int channel, int value) {
        bgr[static_cast<size_t>(channel % 3)] = static_cast<uint8_t>(value);
    };
    set(2 - sector, parts.v);
    set(3 - sector, smallest + std::max(-difference, 0));
    set(4 - sector, smallest + std::max(difference, 0));
    return bgr;
}

// Every product that the division by x enters: S with all distances, H with all numerators. Where a quotient
// that is off by one changes any colour, it changes one of these. For each x it does so on one side at least,
// but none tells apart those too large by one for 1 .. 6, 8, 10 .. 20, 24, 28 .. 32, 34, 39, 42, 45, 47, 49,
// 51 and 55, nor those too small by one for 7, 9, 21 .. 23, 25, 26, 36, 37, 41, 43, 44, 52, 53, 83 and 127.
TEST(Kernels, hsv_division_equals_the_rounded_quotient) {
    std::vector<Parts> colours;
    for (int x = 1; x < 256; ++x) {
        for (int diff = 0; diff <= x; ++diff) colours.push_back({x, diff, 0});
        for (int h = -x; h < 5 * x; ++h) colours.push_back({255, x, h});
    }
    std::vector<uint8_t> bgr, expected;
    for (const Parts& parts : colours) {
        for (const uint8_t byte : colour_of(parts)) bgr.push_back(byte);
        for (const int value : {parts.hue(), parts.saturation(), parts.v})
            expected.push_back(static_cast<uint8_t>(value));
    }
    for (const Isa isa : every_isa()) {
        // 15 pixels fill no vector; 32 are whole vectors in every set.
        for (const size_t width : {size_t{15}, size_t{32}, size_t{47}, colours.size()}) {
            std::vector<uint8_t> hsv(bgr.size());
            for (size_t at = 0; at < colours.size(); at += width)
                kernels::hsv_from_bgr(isa, &bgr[3 * at], &hsv[3 * at],
                                      static_cast<ptrdiff_t>(std::min(width, colours.size() - at)));
            const auto wrong = std::mismatch(hsv.begin(), hsv.end(), expected.begin());
            if (wrong.first == hsv.end()) continue;
            const size_t byte = static_cast<size_t>(wrong.first - hsv.begin());
            const Parts& parts = colours[byte / 3];
            FAIL() << "HSV"[byte % 3] << " is " << int{*wrong.first} << ", expected " << int{*wrong.second}
                   << ": largest " << parts.v << ", distance " << parts.diff << ", numerator " << parts.h
                   << ", instruction set " << static_cast<int>(isa) << ", width " << width;
        }
    }
}

}  // namespace
}  // namespace testing_support
