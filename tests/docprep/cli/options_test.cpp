#include "cli/options.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "cli/unknown_name.h"

using Names = std::vector<std::string>;

TEST(options, text_is_split_at_every_separator) {
    EXPECT_EQ((Names{"a", "bc", "d"}), docprep::split("a,bc,d", ','));
    EXPECT_EQ((Names{"", "a", "", ""}), docprep::split(",a,,", ','));
    EXPECT_EQ(Names{""}, docprep::split("", ','));
}

TEST(options, spaces_round_parts_do_not_count) {
    EXPECT_EQ((Names{"a", "b c", "", "d"}), docprep::split(" a,b c ,  ,d", ','));
}

TEST(options, binarise_is_spelled_either_way) {
    const Names names = {"rows", "binarise", "resize"};
    EXPECT_EQ(1u, docprep::position_of("--stages", "binarise", names));
    EXPECT_EQ(1u, docprep::position_of("--stages", "binarize", names));
    EXPECT_EQ(2u, docprep::position_of("--stages", "resise", names));
}

TEST(options, an_unknown_name_says_which_are_known) {
    try {
        docprep::position_of("--op", "opne", {"open", "close"});
        FAIL();
    } catch (const docprep::UnknownName& error) {
        EXPECT_STREQ("--op: 'opne' is not one of open, close", error.what());
        EXPECT_EQ((Names{"open", "close"}), error.names());
    }
}

TEST(options, names_are_found_by_their_whole_text) {
    const Names names = {"open", "opener"};
    EXPECT_EQ(0u, docprep::position_of("--op", "open", names));
    EXPECT_EQ(1u, docprep::position_of("--op", "opener", names));
    for (const char* text : {"", "ope", "openers", "Open", "open "})
        EXPECT_THROW(docprep::position_of("--op", text, names), CLI::ValidationError) << text;
}
