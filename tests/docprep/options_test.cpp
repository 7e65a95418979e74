#include "options.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

using Names = std::vector<std::string>;

TEST(options, text_is_split_at_every_separator) {
    EXPECT_EQ((Names{"a", "bc", "d"}), docprep::split("a,bc,d", ','));
    EXPECT_EQ((Names{"", "a", "", ""}), docprep::split(",a,,", ','));
    EXPECT_EQ(Names{""}, docprep::split("", ','));
}

TEST(options, names_are_found_by_their_whole_text) {
    const Names names = {"open", "opener"};
    EXPECT_EQ(0u, docprep::position_of("--op", "open", names));
    EXPECT_EQ(1u, docprep::position_of("--op", "opener", names));
    for (const char* text : {"", "ope", "openers", "Open", "open "})
        EXPECT_THROW(docprep::position_of("--op", text, names), CLI::ValidationError) << text;
}
