#include "pipeline/affine.h"

#include <gtest/gtest.h>

using docprep::AffineMatrix;
using docprep::Image;

namespace {

Image picture_of(int rows, int cols) {
    Image picture;
    picture.mat_create(rows, cols, 1, 0);
    return picture;
}

void expect_near(const AffineMatrix& expected, const AffineMatrix& found) {
    for (size_t k = 0; k < expected.size(); ++k) EXPECT_NEAR(expected[k], found[k], 1e-4) << k;
}

}  // namespace

TEST(affine, a_turn_is_anticlockwise_about_the_centre) {
    // The right end of the middle row goes to the top of the middle column.
    expect_near({0, 1, 0, -1, 0, 4}, docprep::turn_about_centre(90, 1, picture_of(5, 5)));
    expect_near({0, 2, -2, -2, 0, 6}, docprep::turn_about_centre(90, 2, picture_of(5, 5)));
}

TEST(affine, a_mapped_picture_fits_into_its_extents_and_lies_in_their_middle) {
    const Image picture = picture_of(30, 40);
    AffineMatrix matrix = docprep::turn_about_centre(30, 1, picture);
    const docprep::WideExtents extents = docprep::mapped_extents(matrix, picture);
    EXPECT_EQ(50, extents.cols);  // 40 cos + 30 sin = 49.6
    EXPECT_EQ(46, extents.rows);  // 30 cos + 40 sin = 45.98
    docprep::centre_in(matrix, picture, 50, 46);
    EXPECT_NEAR(24.5, matrix[0] * 19.5 + matrix[1] * 14.5 + matrix[2], 1e-4);
    EXPECT_NEAR(22.5, matrix[3] * 19.5 + matrix[4] * 14.5 + matrix[5], 1e-4);
}

TEST(affine, the_inverse_maps_back) {
    expect_near({0.5f, 0, -1.5f, 0, 0.25f, 1}, docprep::inverse({2, 0, 3, 0, 4, -4}));
    const AffineMatrix turned = docprep::turn_about_centre(12, 1, picture_of(1000, 2000));
    const AffineMatrix back = docprep::inverse(turned);
    const double x = turned[0] * 1900.0 + turned[1] * 70.0 + turned[2];
    const double y = turned[3] * 1900.0 + turned[4] * 70.0 + turned[5];
    EXPECT_NEAR(1900, back[0] * x + back[1] * y + back[2], 0.01);
    EXPECT_NEAR(70, back[3] * x + back[4] * y + back[5], 0.01);
}
