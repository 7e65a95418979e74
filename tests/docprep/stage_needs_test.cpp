#include <gtest/gtest.h>

#include "stages.h"

using docprep::Stage;
using docprep::Stages;

TEST(stage_needs, components_and_rows_need_the_seals_whose_letters_are_no_text) {
    Stages components, rows;
    components.choose(Stage::kComponents);
    rows.choose(Stage::kRows);
    EXPECT_TRUE(components.needed(Stage::kSeal));
    EXPECT_TRUE(rows.needed(Stage::kSeal));
    EXPECT_FALSE(components.chosen(Stage::kSeal));
}

TEST(stage_needs, seals_need_the_print_that_shows_the_paper) {
    Stages seal;
    seal.choose(Stage::kSeal);
    EXPECT_TRUE(seal.needed(Stage::kBinarise));
    EXPECT_FALSE(seal.needed(Stage::kPage));
    EXPECT_FALSE(seal.chosen(Stage::kBinarise));
}

TEST(stage_needs, what_is_needed_is_not_chosen) {
    Stages stages;
    stages.need(Stage::kBinarise);
    EXPECT_TRUE(stages.needed(Stage::kBinarise));
    EXPECT_FALSE(stages.chosen(Stage::kBinarise));
    for (const Stage stage :
         {Stage::kSharpness, Stage::kPage, Stage::kComponents, Stage::kRows, Stage::kSeal, Stage::kSaliency})
        EXPECT_FALSE(stages.needed(stage)) << static_cast<int>(stage);
}

TEST(stage_needs, what_is_needed_needs_what_it_builds_on) {
    Stages stages;
    stages.need(Stage::kRows);
    EXPECT_TRUE(stages.needed(Stage::kComponents));
    EXPECT_TRUE(stages.needed(Stage::kPage));
    EXPECT_TRUE(stages.needed(Stage::kBinarise));
    EXPECT_FALSE(stages.chosen(Stage::kRows));
}
