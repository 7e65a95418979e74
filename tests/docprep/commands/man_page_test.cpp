// docprep man.
#include <gtest/gtest.h>

#include <algorithm>

#include "commands.h"
#include "commands/operations.h"
#include "pipeline/stages.h"

namespace {

bool has(const std::string& program) {
    return run_program({"sh", "-c", "command -v " + program}).exit_code == 0;
}

}  // namespace

TEST(man_page, names_every_command_option_operation_and_stage) {
    const Outcome outcome = docprep_with({"man"});
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_EQ("", outcome.err);
    Names words = {".TH DOCPREP 1", "docprep warp", "docprep completion", "\\-\\-no\\-deskew",
                   "\\-\\-block\\-size"};
    for (const std::string& stage : docprep::stage_names()) words.push_back("\\fB" + stage + "\\fR\n");
    for (const docprep::Operation& operation : docprep::operations())
        words.push_back("\\fB" + operation.name + "\\fR\n" + operation.description);
    for (const std::string& word : words) EXPECT_NE(std::string::npos, outcome.out.find(word)) << word;
}

TEST(man_page, mandoc_finds_nothing_but_the_missing_date) {
    if (!has("mandoc")) GTEST_SKIP() << "there is no mandoc";
    const TemporaryFolder folder;
    const std::string page = folder.write("docprep.1", docprep_with({"man"}).out);
    const Outcome outcome = run_program({"mandoc", "-Tlint", "-Wwarning", page});
    EXPECT_EQ(1, std::count(outcome.out.begin(), outcome.out.end(), '\n')) << outcome.out;
    EXPECT_NE(std::string::npos, outcome.out.find("missing date")) << outcome.out;
}

TEST(man_page, reads_as_text) {
    if (!has("mandoc")) GTEST_SKIP() << "there is no mandoc";
    const TemporaryFolder folder;
    const std::string page = folder.write("docprep.1", docprep_with({"man"}).out);
    // Bold is a letter over itself.
    const std::string command = "mandoc -Tascii -Owidth=200 \"$0\" | sed 's/.\x08//g'";
    const std::string text = run_program({"sh", "-c", command, page}).out;
    EXPECT_NE(std::string::npos, text.find("--stages LIST")) << text;
    EXPECT_NE(std::string::npos, text.find("(a x + b y + c, d x + e y + f)")) << text;
}
