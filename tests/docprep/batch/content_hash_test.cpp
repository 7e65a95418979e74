#include "batch/content_hash.h"

#include <gtest/gtest.h>

#include "base/utf8.h"
#include "test_files.h"

TEST(content_hash, is_the_one_that_others_compute) {
    // By the definition of XXH3: without a seed, 128 bits, the upper half first.
    EXPECT_EQ("99aa06d3014798d86001c324468d497f", docprep::content_hash({}));
    EXPECT_EQ(32u, docprep::content_hash(bytes_of("a")).size());
}

TEST(content_hash, differs_for_every_single_byte) {
    docprep::Bytes content(1000, 7);
    const std::string before = docprep::content_hash(content);
    for (unsigned char& byte : content) {
        byte = 8;
        EXPECT_NE(before, docprep::content_hash(content));
        byte = 7;
    }
    EXPECT_EQ(before, docprep::content_hash(content));
    content.push_back(7);
    EXPECT_NE(before, docprep::content_hash(content));
}

TEST(utf8, is_told_from_other_bytes) {
    for (const char* text : {"", "a", "\xc3\xa9", "\xe2\x82\xac", "\xf0\x9f\x98\x80"})
        EXPECT_TRUE(docprep::is_utf8(text)) << text;
    for (const char* text : {"\xe9", "a\x80", "\xc0\xaf", "\xed\xa0\x80", "\xf5\x80\x80\x80", "\xc3"})
        EXPECT_FALSE(docprep::is_utf8(text)) << text;
    EXPECT_FALSE(docprep::is_utf8(std::string("a\0b", 3)));
}

TEST(utf8, other_bytes_become_the_sign_for_them) {
    EXPECT_EQ(
        "a\xef\xbf\xbd"
        "b",
        docprep::as_utf8("a\xe9"
                         "b"));
    EXPECT_EQ("\xc3\xa9", docprep::as_utf8("\xc3\xa9"));
}
