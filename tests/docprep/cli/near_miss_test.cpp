#include "cli/near_miss.h"

#include <gtest/gtest.h>

using docprep::nearest;
using Names = std::vector<std::string>;

TEST(near_miss, one_change_is_near) {
    const Names names = {"resize", "erode", "open"};
    for (const char* text : {"resize", "resise", "reszie", "rsize", "resizee", "Resize"})
        EXPECT_EQ("resize", nearest(text, names)) << text;
}

TEST(near_miss, the_fewest_changes_win_and_then_the_first) {
    EXPECT_EQ("dilateGray", nearest("dilateGry", {"dilateBinary", "dilateGray"}));
    EXPECT_EQ("cat", nearest("bat", {"cat", "hat"}));
    EXPECT_EQ("hat", nearest("bat", {"hat", "cat"}));
}

TEST(near_miss, more_than_a_third_of_the_letters_is_too_far) {
    EXPECT_EQ("abcdef", nearest("abcdXY", {"abcdef"}));
    EXPECT_EQ("", nearest("abcXYZ", {"abcdef"}));
    EXPECT_EQ("n", nearest("m", {"n"}));  // one change is always allowed
    EXPECT_EQ("", nearest("", {"rows"}));
    EXPECT_EQ("", nearest("rows", {}));
    EXPECT_EQ("", nearest(std::string(1000000, 'a'), {"a"}));
}

TEST(near_miss, a_suggestion_is_a_question_or_nothing) {
    EXPECT_EQ("; did you mean 'otsu'?", docprep::suggestion("otso", {"otsu"}));
    EXPECT_EQ("", docprep::suggestion("gauss", {"otsu"}));
}
