#include "html/html_text.h"

#include <gtest/gtest.h>

#include <string>

using docprep::base64;
using docprep::escaped;

namespace {

std::string base64_of(const std::string& text) {
    return base64(docprep::Bytes(text.begin(), text.end()));
}

constexpr const char* kReplacement = "\xef\xbf\xbd";

}  // namespace

TEST(html_text, what_has_a_meaning_in_html_is_escaped) {
    EXPECT_EQ("&lt;a href=&quot;x&quot; b=&#39;y&#39;&gt; &amp;amp;", escaped("<a href=\"x\" b='y'> &amp;"));
}

TEST(html_text, text_in_utf8_stays_as_it_is) {
    const std::string text = "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x93\x84 \xf4\x8f\xbf\xbd";
    EXPECT_EQ(text, escaped(text));
}

TEST(html_text, bytes_that_are_no_utf8_are_replaced_one_by_one) {
    EXPECT_EQ(std::string("a") + kReplacement + "b", escaped("a\xff"
                                                             "b"));
    EXPECT_EQ(std::string(kReplacement) + "&lt;", escaped("\xc3<")) << "cut short before a tag";
    EXPECT_EQ(std::string(kReplacement) + kReplacement, escaped("\xc0\xbc"))
        << "< written longer than need be";
    EXPECT_EQ(std::string(kReplacement) + kReplacement + kReplacement, escaped("\xed\xa0\x80"))
        << "a surrogate";
    EXPECT_EQ(4 * std::string(kReplacement).size(), escaped("\xf4\x90\x80\x80").size()) << "beyond the last";
}

TEST(html_text, what_xml_does_not_allow_is_replaced) {
    EXPECT_EQ(std::string(kReplacement) + kReplacement + kReplacement, escaped(std::string("\0\n\x7f", 3)));
    EXPECT_EQ(kReplacement, escaped("\xef\xbf\xbf"));
}

TEST(html_text, base64_is_that_of_its_definition) {
    EXPECT_EQ("", base64_of(""));
    EXPECT_EQ("Zg==", base64_of("f"));
    EXPECT_EQ("Zm8=", base64_of("fo"));
    EXPECT_EQ("Zm9v", base64_of("foo"));
    EXPECT_EQ("Zm9vYg==", base64_of("foob"));
    EXPECT_EQ("/+8AgA==", base64_of(std::string("\xff\xef\0\x80", 4)));
}
