#include <gtest/gtest.h>

#include <utility>

#include "util_string.h"

namespace testing_support {
namespace {

using orvex_991::String;

TEST(String, copies_and_moves_its_text) {
    String text("seal");
    const String copy(text);
    String moved(std::move(text));
    EXPECT_STREQ(copy.c_str(), "seal");
    EXPECT_STREQ(moved.c_str(), "seal");
    EXPECT_STREQ(text.c_str(), "");
    text = copy;
    EXPECT_EQ(text.length(), 4);
    String& same = text;
    text = same;
    EXPECT_STREQ(text.c_str(), "seal");
    text = String();
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(String("a") == String("a"));
    EXPECT_TRUE(String("a") != String());
    EXPECT_STREQ(String(nullptr).c_str(), "");
}

}  // namespace
}  // namespace testing_support
