#include "pipeline/deskew.h"

#include <gtest/gtest.h>

#include <algorithm>

using docprep::Deskew;
using docprep::Image;

namespace {

Image photo_of(int rows, int cols, int level) {
    Image photo;
    photo.mat_create(rows, cols, 1, level);
    return photo;
}

}  // namespace

TEST(deskew, small_skews_leave_the_photograph_as_it_is) {
    for (const double skew : {0.0, 0.09, -0.09}) {
        const Deskew deskew = docprep::plan_deskew(photo_of(30, 40, 0), skew);
        EXPECT_EQ(0, deskew.degrees);
        EXPECT_EQ((docprep::AffineMatrix{1, 0, 0, 0, 1, 0}), deskew.matrix);
        EXPECT_EQ(40, deskew.cols);
        EXPECT_EQ(30, deskew.rows);
    }
    EXPECT_EQ(0.1, docprep::plan_deskew(photo_of(30, 40, 0), 0.1).degrees);
}

TEST(deskew, rows_that_fall_to_the_right_become_level) {
    const Deskew deskew = docprep::plan_deskew(photo_of(1000, 1000, 0), 10);
    const auto& m = deskew.matrix;
    // Along (cos 10, sin 10) the page's y does not change.
    EXPECT_NEAR(0, m[3] * 0.98480775 + m[4] * 0.17364818, 1e-6);
    EXPECT_GT(m[0], 0);
}

TEST(deskew, no_corner_is_lost_and_what_lies_beyond_repeats_the_edge) {
    const Image photo = photo_of(60, 90, 77);
    const Deskew deskew = docprep::plan_deskew(photo, -8);
    EXPECT_EQ(98, deskew.cols);  // 90 cos + 60 sin = 97.5
    EXPECT_EQ(72, deskew.rows);  // 60 cos + 90 sin = 71.9
    Image inside;
    const Image page = docprep::deskewed(photo, deskew, inside);
    const ptrdiff_t n = 98 * 72;
    ASSERT_EQ(98, page.cols);
    ASSERT_EQ(72, page.rows);
    EXPECT_EQ(n, std::count(page.data, page.data + n, 77));
    // Each pixel of the photograph but those of its rim has its place.
    const auto shown = std::count(inside.data, inside.data + n, 1);
    EXPECT_NEAR(59 * 89, static_cast<double>(shown), 40);
    EXPECT_EQ(n, shown + std::count(inside.data, inside.data + n, 0));
    EXPECT_EQ(0, inside.data[0]);

    const Image on_white = docprep::deskewed_on_white(photo, deskew);
    for (ptrdiff_t i = 0; i < n; ++i) ASSERT_EQ(inside.data[i] == 1 ? 77 : 255, on_white.data[i]);
}

TEST(deskew, a_strip_whose_page_would_be_too_large_stays) {
    const Deskew deskew = docprep::plan_deskew(photo_of(1, 1 << 17, 0), 15);
    EXPECT_EQ(0, deskew.degrees);
    EXPECT_EQ(1, deskew.rows);
}
