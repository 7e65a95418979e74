#include "pipeline/stages.h"

#include <gtest/gtest.h>

using docprep::Stage;
using docprep::Stages;

namespace {

const std::vector<Stage> kStages = {Stage::kSharpness, Stage::kBinarise, Stage::kPage,    Stage::kComponents,
                                    Stage::kRows,      Stage::kSeal,     Stage::kSaliency};

/// The names of the stages that are needed when one is chosen.
std::vector<std::string> needed_by(Stage chosen) {
    Stages stages;
    stages.choose(chosen);
    std::vector<std::string> names;
    for (const Stage stage : kStages)
        if (stages.needed(stage)) names.push_back(docprep::stage_names()[static_cast<size_t>(stage)]);
    return names;
}

}  // namespace

TEST(stages, a_stage_needs_those_that_it_builds_on) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(Names{"binarise"}, needed_by(Stage::kBinarise));
    EXPECT_EQ((Names{"sharpness", "binarise"}), needed_by(Stage::kSharpness));
    EXPECT_EQ((Names{"binarise", "page", "seal"}), needed_by(Stage::kPage));
    EXPECT_EQ((Names{"binarise", "page", "components", "seal"}), needed_by(Stage::kComponents));
    EXPECT_EQ((Names{"binarise", "page", "components", "rows", "seal"}), needed_by(Stage::kRows));
    EXPECT_EQ((Names{"binarise", "seal"}), needed_by(Stage::kSeal));
    EXPECT_EQ(Names{"saliency"}, needed_by(Stage::kSaliency));
}

TEST(stages, only_chosen_ones_are_chosen) {
    Stages stages;
    stages.choose(Stage::kRows);
    stages.choose(Stage::kSaliency);
    for (const Stage stage : kStages)
        EXPECT_EQ(stage == Stage::kRows || stage == Stage::kSaliency, stages.chosen(stage));
}

TEST(stages, all_are_chosen_in_all_and_none_at_first) {
    for (const Stage stage : kStages) {
        EXPECT_TRUE(Stages::all().chosen(stage));
        EXPECT_FALSE(Stages().needed(stage));
    }
}

TEST(stages, what_is_needed_is_not_chosen) {
    Stages stages;
    stages.need(Stage::kBinarise);
    EXPECT_TRUE(stages.needed(Stage::kBinarise));
    EXPECT_FALSE(stages.chosen(Stage::kBinarise));
    for (const Stage stage :
         {Stage::kSharpness, Stage::kPage, Stage::kComponents, Stage::kRows, Stage::kSeal, Stage::kSaliency})
        EXPECT_FALSE(stages.needed(stage)) << static_cast<int>(stage);
}

TEST(stages, what_is_needed_needs_what_it_builds_on) {
    Stages stages;
    stages.need(Stage::kRows);
    EXPECT_TRUE(stages.needed(Stage::kComponents));
    EXPECT_TRUE(stages.needed(Stage::kPage));
    EXPECT_TRUE(stages.needed(Stage::kBinarise));
    EXPECT_FALSE(stages.chosen(Stage::kRows));
}
