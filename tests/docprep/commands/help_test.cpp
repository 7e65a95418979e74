// docprep help.
#include <gtest/gtest.h>

#include "cli/exit_codes.h"
#include "commands.h"
#include "commands/operations.h"
#include "pipeline/stages.h"

namespace {

std::string help_on(const std::string& word) {
    const Outcome outcome = docprep_with({"help", word});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ("", outcome.err);
    return outcome.out;
}

void expect_words(const std::string& text, const Names& words) {
    for (const std::string& word : words)
        EXPECT_NE(std::string::npos, text.find(word)) << word << "\n" << text;
}

}  // namespace

TEST(help, alone_it_names_commands_and_topics) {
    const Outcome outcome = docprep_with({"help"});
    EXPECT_EQ(0, outcome.exit_code);
    expect_words(outcome.out,
                 {docprep_with({"--help"}).out, "\n  warp ", "\n  op ", "formats stages exit-codes"});
}

TEST(help, on_a_command_is_what_its_help_option_prints) {
    for (const char* command : {"warp", "morph", "op", "list", "help", "man", "completion"})
        expect_words(help_on(command), {docprep_with({command, "--help"}).out});
    EXPECT_EQ(docprep_with({"--help"}).out, help_on("docprep"));
}

TEST(help, on_an_operation_is_what_its_help_option_prints) {
    for (const docprep::Operation& operation : docprep::operations())
        expect_words(help_on(operation.name), {docprep_with({"op", operation.name, "--help"}).out});
}

TEST(help, a_command_and_an_operation_of_one_name_are_both_told_about) {
    expect_words(help_on("resize"), {"Usage: docprep resize ", "Usage: docprep op resize "});
}

TEST(help, on_an_option_says_which_commands_have_it) {
    for (const char* word : {"--page", "page"})
        expect_words(help_on(word), {"docprep --page KIND\n    What page.png is"});
    expect_words(help_on("matrix"),
                 {"docprep warp --matrix a,b,c,d,e,f\n", "docprep op warpAffine --matrix "});
    expect_words(help_on("-o"), {"docprep -o,--output FOLDER\n", "docprep resize -o,--output FILE\n"});
    expect_words(help_on("--binarize"), {"docprep --binarize,--binarise METHOD\n"});
}

TEST(help, on_topics_has_every_stage_and_exit_code) {
    for (const std::string& stage : docprep::stage_names())
        expect_words(help_on("stages"), {"\n  " + stage + " "});
    for (const docprep::ExitCode& code : docprep::kExitCodes)
        expect_words(help_on("exit-codes"), {"\n  " + std::to_string(code.code) + " ", code.meaning});
    expect_words(help_on("formats"), {"JPEG", "PNG", "NV21", "TIFF", ".webp"});
}

TEST(help, without_a_meaning_a_word_is_refused_with_a_near_one) {
    expect_wrong_usage({"help", "otso"},
                       "there is no help on 'otso'; did you mean 'otsu'? (docprep help --help");
    expect_wrong_usage({"help", "--stagse"}, "did you mean '--stages'?");
    expect_wrong_usage({"help", "formts"}, "did you mean 'formats'?");
    expect_wrong_usage({"help", "elephant"}, "there is no help on 'elephant' (");
    expect_wrong_usage({"help", "warp", "morph"}, "morph");
}
