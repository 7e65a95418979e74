// Which components of a red mask are a seal's marks.
#include "algorithms/seal_rules.h"

#include <gtest/gtest.h>

namespace orvex_cv_991 {
namespace {

/// Whether a full rectangle of that size is a mark on paper of 200 x 200.
bool is_mark(int width, int height) {
    orvex_991::vector<Rect> rects;
    rects.push_back(Rect(20, 30, width, height));
    orvex_991::vector<orvex_991::vector<Point>> pixels(1);
    pixels[0] = orvex_991::vector<Point>(width * height, Point());
    return select_seals(rects, pixels, Size(200, 200), false).keep[0];
}

TEST(SealRules, a_mark_is_at_most_three_times_as_long_as_broad) {
    EXPECT_TRUE(is_mark(20, 60));
    EXPECT_FALSE(is_mark(20, 61));
    EXPECT_TRUE(is_mark(60, 20));
    EXPECT_FALSE(is_mark(61, 20));
}

TEST(SealRules, a_mark_has_sides_of_at_least_10) {
    EXPECT_TRUE(is_mark(10, 10));
    EXPECT_FALSE(is_mark(9, 10));
    EXPECT_FALSE(is_mark(10, 9));
}

TEST(SealRules, a_mark_is_at_most_half_as_long_as_the_paper) {
    EXPECT_TRUE(is_mark(100, 100));
    EXPECT_FALSE(is_mark(101, 100));
    EXPECT_FALSE(is_mark(100, 101));
}

}  // namespace
}  // namespace orvex_cv_991
