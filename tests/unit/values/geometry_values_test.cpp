#include <gtest/gtest.h>

#include <climits>

#include "cv_geometry.h"

namespace testing_support {
namespace {

using namespace orvex_cv_991;

TEST(Geometry, right_bottom_is_the_last_covered_pixel) {
    EXPECT_TRUE(Rect(2, 3, 4, 5).right_bottom() == Point(5, 7));
    EXPECT_TRUE(Rect(2, 3, 4, 5).left_top() == Point(2, 3));
    EXPECT_TRUE(Rect(INT_MAX, 0, 2, 1).right_bottom() == Point(INT_MIN, 0));
}

TEST(Geometry, comparators_are_strict) {
    EXPECT_TRUE(Rect::cmpX(Rect(1, 9, 9, 9), Rect(2, 0, 0, 0)));
    EXPECT_FALSE(Rect::cmpX(Rect(2, 0, 0, 0), Rect(2, 1, 1, 1)));
    EXPECT_TRUE(Rect::cmpArea(Rect(0, 0, 2, 3), Rect(0, 0, 7, 1)));
    EXPECT_FALSE(Rect::cmpArea(Rect(0, 0, 2, 3), Rect(0, 0, 6, 1)));
    EXPECT_FALSE(Rect::cmpArea(Rect(0, 0, 65536, 65536), Rect(5, 5, 0, 9)));  // the product wraps to 0
}

TEST(Geometry, defaults_are_zero) {
    EXPECT_TRUE(Point() == Point(0, 0));
    EXPECT_EQ(Point32f().x, 0.0f);
    EXPECT_FALSE(Size(0, 0) != Size());
    EXPECT_TRUE(Size(1, 2) != Size(2, 2));
    EXPECT_TRUE(Size(1, 2) != Size(1, 3));
    EXPECT_EQ(Rect().width, 0);
    EXPECT_EQ(RotatedRect().pts.size, 0);
}

}  // namespace
}  // namespace testing_support
