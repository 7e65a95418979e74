#include "pipeline/skew.h"

#include <gtest/gtest.h>

#include <cmath>

using docprep::estimate_skew;
using docprep::kMostSkew;
using docprep::TextComponents;
using orvex_cv_991::Rect;

namespace {

constexpr int kTextHeight = 20;

/// A component with the middle of its lower edge at (x, y) before it is turned clockwise about (0, 0).
Rect letter_at(double x, double y, double degrees, int width, int height) {
    const double radians = degrees * 3.14159265358979 / 180;
    const double turned_x = x * std::cos(radians) - y * std::sin(radians);
    const double turned_y = x * std::sin(radians) + y * std::cos(radians);
    return Rect(static_cast<int>(std::lround(turned_x)) - width / 2,
                static_cast<int>(std::lround(turned_y)) - height, width, height);
}

TextComponents text_of(const docprep::Rects& components) {
    TextComponents text;
    text.kept = components;
    text.text_height = kTextHeight;
    return text;
}

/// Lines of letters with ascenders, and every seventh with a descender, falling by an angle.
docprep::Rects lines(int n, double degrees) {
    docprep::Rects rects;
    for (int line = 0; line < n; ++line)
        for (int k = 0; k < 45; ++k) {
            const bool descends = k % 7 == 3;
            rects.push_back(letter_at(100 + 22 * k, 100 + 41 * line + (descends ? 6 : 0), degrees, 14 + k % 5,
                                      k % 3 == 0 ? 28 : 20));
        }
    return rects;
}

}  // namespace

TEST(skew, the_angle_of_lines_is_found_on_both_sides) {
    for (const double degrees : {-14.6, -7.0, -3.4, -0.5, 0.0, 0.2, 1.0, 2.3, 5.0, 9.9, 14.6})
        EXPECT_NEAR(degrees, estimate_skew(text_of(lines(12, degrees))), 0.06);
}

TEST(skew, one_line_is_enough) {
    EXPECT_NEAR(4, estimate_skew(text_of(lines(1, 4))), 0.1);
}

TEST(skew, a_seal_and_scattered_specks_do_not_mislead) {
    docprep::Rects rects = lines(10, 3);
    for (int k = 0; k < 60; ++k) {  // letters round a seal
        const double at = k * 0.1;
        rects.push_back(Rect(static_cast<int>(700 + 90 * std::cos(at)),
                             static_cast<int>(700 + 90 * std::sin(at)), 18, 22));
    }
    for (int k = 0; k < 60; ++k) rects.push_back(Rect(k * 7919 % 1200, k * 104729 % 900, 11, 12));
    EXPECT_NEAR(3, estimate_skew(text_of(rects)), 0.1);
}

TEST(skew, too_little_text_counts_as_level) {
    docprep::Rects rects;
    EXPECT_EQ(0, estimate_skew(text_of(rects)));
    const docprep::Rects line = lines(1, 5);
    for (int k = 0; k < 11; ++k) rects.push_back(line[k]);
    EXPECT_EQ(0, estimate_skew(text_of(rects)));
    rects.push_back(line[11]);
    EXPECT_NE(0, estimate_skew(text_of(rects)));
}

TEST(skew, scattered_marks_count_as_level) {
    docprep::Rects rects;
    unsigned state = 1;
    const auto next = [&](unsigned below) {
        state = state * 1664525 + 1013904223;
        return static_cast<int>((state >> 8) % below);
    };
    for (int k = 0; k < 1000; ++k) {
        const int x = next(1500);
        rects.push_back(Rect(x, next(1500), 15, 20));
    }
    EXPECT_EQ(0, estimate_skew(text_of(rects)));
}

TEST(skew, the_angle_is_never_far_beyond_the_limit) {
    EXPECT_LE(std::fabs(estimate_skew(text_of(lines(12, 25)))), kMostSkew + 1);
}
