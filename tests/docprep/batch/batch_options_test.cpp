// What a batch is asked for, as words that travel to other machines.
#include "batch/batch_options.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <algorithm>

using docprep::BatchOptions;
using docprep::BatchPreparation;
using Words = std::vector<std::string>;

namespace {

BatchOptions parsed(Words arguments) {
    BatchOptions options;
    CLI::App app;
    add_batch(app, options);
    std::reverse(arguments.begin(), arguments.end());  // which it takes from the end
    app.parse(arguments);
    return options;
}

}  // namespace

TEST(batch_options, words_are_those_that_results_depend_on_in_a_fixed_order) {
    const BatchOptions options =
        parsed({"--crop", "-j", "3", "a.jpg", "--page", "binary", "-o", "out", "--resume", "--min-sharpness",
                " 110", "--turn=90", "--nv21", "64x32"});
    EXPECT_EQ((Words{"--nv21=64x32", "--turn=90", "--min-sharpness= 110", "--page=binary", "--crop=true"}),
              options.preparation_words);
    EXPECT_EQ(Words{}, parsed({"a.jpg", "-o", "out"}).preparation_words);
}

TEST(batch_options, words_make_the_preparation_that_they_were_made_of) {
    const BatchOptions options =
        parsed({"a.jpg", "-o", "out", "--crop", "--page", "binary", "--min-sharpness", " 110", "--turn=90",
                "--nv21", "64x32", "--pictures", "none", "--no-deskew"});
    const BatchPreparation& asked = options.preparation;
    const BatchPreparation made = docprep::batch_preparation(options.preparation_words);
    ASSERT_TRUE(made.frame_size);
    EXPECT_EQ(64, made.frame_size->cols);
    EXPECT_EQ(32, made.frame_size->rows);
    EXPECT_TRUE(made.options.crop && made.options.keep_skew && made.options.thumbnail);
    EXPECT_FALSE(made.options.report || made.options.timings || made.options.require_text);
    EXPECT_EQ(asked.options.page, made.options.page);
    EXPECT_EQ(asked.options.pictures, made.options.pictures);
    EXPECT_EQ(90, made.options.turn);
    EXPECT_EQ(110, made.options.min_sharpness);
}
