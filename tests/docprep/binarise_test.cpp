#include "binarise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

/// What becomes of one row of gray levels.
std::vector<int> binary_of(const std::vector<int>& levels, int& threshold) {
    docprep::Image gray, binary;
    gray.mat_create(1, static_cast<int>(levels.size()), 1, 0);
    std::copy(levels.begin(), levels.end(), gray.data);
    threshold = docprep::binarise(gray, binary);
    return {binary.data, binary.data + levels.size()};
}

}  // namespace

TEST(binarise, dark_becomes_white_and_bright_black) {
    int threshold = 0;
    EXPECT_EQ((std::vector<int>{255, 0, 255, 0, 0}), binary_of({20, 200, 25, 210, 200}, threshold));
    EXPECT_EQ(25, threshold);
}

TEST(binarise, the_threshold_itself_is_dark) {
    int threshold = 0;
    EXPECT_EQ((std::vector<int>{255, 0, 0, 0}), binary_of({0, 255, 255, 255}, threshold));
    EXPECT_EQ(0, threshold);
}

TEST(binarise, white_alone_stays_background) {
    int threshold = 0;
    EXPECT_EQ((std::vector<int>{0, 0, 0}), binary_of({255, 255, 255}, threshold));
}
