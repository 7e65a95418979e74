#include "commands/warp.h"

#include <gtest/gtest.h>

using docprep::AffineMatrix;
using docprep::parse_matrix;

TEST(warp, a_matrix_is_six_numbers_with_commas_between) {
    for (const char* text : {"1,-.5,2e3,0,0.25,-7", "1, -.5, 2e3, 0, 0.25, -7"})
        EXPECT_EQ((AffineMatrix{1, -0.5f, 2e3f, 0, 0.25f, -7}), parse_matrix(text));
    for (const char* text :
         {"", "1", "1,2,3,4,5", "1,2,3,4,5,6,7", "1,2,3,4,5,", ",2,3,4,5,6", "1,2,3,4,5,x", "1,2,3,4,5,6x",
          "1,2,3,4,5,nan", "inf,2,3,4,5,6", "1,2,3,4,5,1e99", "1;2;3;4;5;6"})
        EXPECT_FALSE(parse_matrix(text)) << text;
}

TEST(warp, text_of_a_matrix_reads_as_the_same_matrix) {
    const AffineMatrix matrix = {1.0f / 3, -1e-30f, 3e38f, 16777218, 0.1f, -0.0f};
    EXPECT_EQ(matrix, parse_matrix(docprep::as_text(matrix)));
}
