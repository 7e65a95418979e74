// docprep completion: the scripts are tried in the shells.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "commands.h"
#include "commands/operations.h"
#include "pipeline/stages.h"

namespace {

Names lines_of(const std::string& text) {
    Names lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

bool has(const std::string& program) {
    return run_program({"sh", "-c", "command -v " + program}).exit_code == 0;
}

/// A folder with a shell's script, a picture and a folder.
class Completion {
 public:
    explicit Completion(const std::string& shell) {
        const Outcome outcome = docprep_with({"completion", shell});
        EXPECT_EQ(0, outcome.exit_code);
        EXPECT_EQ("", outcome.err);
        script_ = folder_.write("script", outcome.out);
        folder_.write("my page.png", "");
        std::filesystem::create_directory(folder_.path("results"));
    }

    /// What bash proposes for the last word.
    Names in_bash(const Names& words) const {
        std::string command =
            "cd \"$1\"; . \"$2\"; shift 2; COMP_WORDS=(docprep \"$@\") COMP_CWORD=$#; _docprep; "
            "((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"";
        Names all = {"bash", "--norc", "-c", command, "bash", folder_.path(""), script_};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome outcome = run_program(all);
        EXPECT_EQ(0, outcome.exit_code);
        EXPECT_EQ("", outcome.err);
        Names proposals = lines_of(outcome.out);
        std::sort(proposals.begin(), proposals.end());
        return proposals;
    }

    /// What fish proposes for the end of a line, without its descriptions.
    Names in_fish(const std::string& line) const {
        const Outcome outcome = run_program({"env", "HOME=" + folder_.path(""), "fish", "--no-config", "-c",
                                             "cd $argv[1]; source $argv[2]; complete -C $argv[3]",
                                             folder_.path(""), script_, line});
        EXPECT_EQ(0, outcome.exit_code) << outcome.err;
        Names proposals = lines_of(outcome.out);
        for (std::string& proposal : proposals) proposal = proposal.substr(0, proposal.find('\t'));
        std::sort(proposals.begin(), proposals.end());
        return proposals;
    }

    const std::string& script() const { return script_; }

 private:
    TemporaryFolder folder_;
    std::string script_;
};

Names sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

TEST(completion, bash_proposes_commands_first_and_files) {
    const Completion completion("bash");
    const Names first = completion.in_bash({""});
    for (const char* word : {"warp", "op", "list", "help", "man", "completion", "my page.png"})
        EXPECT_EQ(1, std::count(first.begin(), first.end(), word)) << word;
    EXPECT_EQ(Names{"warp"}, completion.in_bash({"wa"}));
    EXPECT_EQ(Names{"my page.png"}, completion.in_bash({"warp", "my"}));
    EXPECT_EQ(Names{"my page.png"}, completion.in_bash({"-o", "results", "my"}));
    EXPECT_EQ(Names{}, completion.in_bash({"-o", "results", "wa"}));
}

TEST(completion, bash_proposes_options_of_the_command) {
    const Completion completion("bash");
    EXPECT_EQ(Names{"--stages"}, completion.in_bash({"page.jpg", "--st"}));
    EXPECT_EQ(Names{}, completion.in_bash({"warp", "p.png", "--st"}));
    EXPECT_EQ((Names{"--fit"}), completion.in_bash({"warp", "p.png", "--f"}));
    EXPECT_EQ(Names{"--threshold"}, completion.in_bash({"op", "thresholdSeg", "--thr"}));
    EXPECT_EQ(Names{"--json"}, completion.in_bash({"list", "--j"}));
}

TEST(completion, bash_proposes_values_of_options) {
    const Completion completion("bash");
    EXPECT_EQ(sorted({"soft", "binary", "gray"}), completion.in_bash({"page.jpg", "--page", ""}));
    EXPECT_EQ(Names{"soft"}, completion.in_bash({"page.jpg", "--page", "=", "so"}));
    EXPECT_EQ(sorted({"soft", "binary", "gray"}), completion.in_bash({"page.jpg", "--page", "="}));
    EXPECT_EQ(sorted({"dilate", "erode", "open", "close"}),
              completion.in_bash({"morph", "page.jpg", "--op", ""}));
    EXPECT_EQ(sorted({"dilate", "erode", "open", "close"}),
              completion.in_bash({"op", "morphologyBinary", "--type", ""}));
    EXPECT_EQ(Names{"results"}, completion.in_bash({"page.jpg", "-o", ""}));
    EXPECT_EQ(Names{"my page.png"}, completion.in_bash({"op", "otsu", "--mask", "my"}));
    EXPECT_EQ(Names{}, completion.in_bash({"page.jpg", "--nv21", ""}));
}

TEST(completion, bash_proposes_the_rest_of_a_list) {
    const Completion completion("bash");
    EXPECT_EQ(sorted(docprep::stage_names()), completion.in_bash({"page.jpg", "--stages", ""}));
    EXPECT_EQ(Names{"page,rows"}, completion.in_bash({"page.jpg", "--stages", "page,ro"}));
}

TEST(completion, bash_proposes_operations_shells_and_words_of_help) {
    const Completion completion("bash");
    EXPECT_EQ(sorted(docprep::operation_names()), completion.in_bash({"op", ""}));
    EXPECT_EQ(sorted({"bash", "zsh", "fish"}), completion.in_bash({"completion", ""}));
    EXPECT_EQ((Names{"formats"}), completion.in_bash({"help", "fo"}));
    EXPECT_EQ(Names{"--stages"}, completion.in_bash({"help", "--sta"}));
}

TEST(completion, fish_proposes_commands_options_and_values) {
    if (!has("fish")) GTEST_SKIP() << "there is no fish";
    const Completion completion("fish");
    EXPECT_EQ(Names{"warp"}, completion.in_fish("docprep wa"));
    EXPECT_EQ(Names{"--stages"}, completion.in_fish("docprep page.jpg --st"));
    EXPECT_EQ(Names{"--fit"}, completion.in_fish("docprep warp p.png --fi"));
    EXPECT_EQ(sorted({"soft", "binary", "gray"}), completion.in_fish("docprep page.jpg --page "));
    EXPECT_EQ(Names{"page,rows"}, completion.in_fish("docprep page.jpg --stages page,ro"));
    EXPECT_EQ(Names{"thresholdSeg"}, completion.in_fish("docprep op thresholdS"));
    EXPECT_EQ(Names{"--threshold"}, completion.in_fish("docprep op thresholdSeg --thr"));
    EXPECT_EQ(sorted({"bash", "zsh", "fish"}), completion.in_fish("docprep completion "));
    EXPECT_EQ(Names{"results/"}, completion.in_fish("docprep page.jpg -o res"));
}

TEST(completion, zsh_accepts_its_script) {
    if (!has("zsh")) GTEST_SKIP() << "there is no zsh";
    const Completion completion("zsh");
    const Outcome outcome = run_program({"zsh", "-f", "-n", completion.script()});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ("", outcome.err);
    const std::string script = text_of(completion.script());
    EXPECT_EQ(0u, script.find("#compdef docprep\n"));
    for (const std::string& name : docprep::operation_names())
        EXPECT_NE(std::string::npos, script.find("'op " + name + "')")) << name;
}

TEST(completion, an_unknown_shell_is_refused) {
    expect_wrong_usage({"completion", "csh"}, "shell: 'csh' is not one of bash, zsh, fish");
    expect_wrong_usage({"completion"}, "shell is required");
}
