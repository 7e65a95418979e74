#include "base/extents.h"

#include <gtest/gtest.h>

using docprep::Extents;

TEST(extents, extents_are_two_whole_numbers) {
    Extents extents;
    ASSERT_TRUE(docprep::parse_extents("1280x720", extents));
    EXPECT_EQ(1280, extents.cols);
    EXPECT_EQ(720, extents.rows);
    for (const char* text :
         {"",          "x",         "1280",       "1280x",     "x720",         "1280 720",    "1280xx720",
          "1280x720 ", " 1280x720", "1280\tx720", "12 80x720", "0x720",        "1280x0",      "-2x720",
          "+2x720",    "2x-2",      "1280x720x3", "1e3x720",   "9999999999x2", "2x2147483648"})
        EXPECT_FALSE(docprep::parse_extents(text, extents)) << text;
    EXPECT_EQ(1280, extents.cols);
}

TEST(extents, the_sign_between_may_be_a_capital_and_stand_free) {
    for (const char* text : {"1280X720", "1280 x 720", "1280 X720", "1280x   720"}) {
        Extents extents;
        ASSERT_TRUE(docprep::parse_extents(text, extents)) << text;
        EXPECT_EQ(1280, extents.cols);
        EXPECT_EQ(720, extents.rows);
    }
}

TEST(extents, text_is_what_is_read) {
    EXPECT_EQ("1280x720", docprep::as_text(Extents{1280, 720}));
}
