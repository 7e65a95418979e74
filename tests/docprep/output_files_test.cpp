#include "output_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "failure.h"
#include "test_files.h"

using docprep::OutputFiles;
using Names = std::vector<std::string>;

namespace {

std::string refusal(const OutputFiles& files, const std::string& input = "") {
    try {
        files.publish(input);
        return "";
    } catch (const docprep::Failure& failure) {
        return failure.file() + ": " + failure.what();
    }
}

OutputFiles two_files(const std::string& folder) {
    OutputFiles files(folder);
    files.add("a.txt", bytes_of("first"));
    files.add("b.txt", bytes_of("second"));
    return files;
}

}  // namespace

TEST(output_files, the_folder_and_its_parents_are_created) {
    const TemporaryFolder folder;
    EXPECT_EQ("", refusal(two_files(folder.path("x/y/z/"))));
    EXPECT_EQ((Names{"x", "x/y", "x/y/z", "x/y/z/a.txt", "x/y/z/b.txt"}), folder.content());
    EXPECT_EQ("second", text_of(folder.path("x/y/z/b.txt")));
}

TEST(output_files, a_new_folder_stays_even_without_files) {
    const TemporaryFolder folder;
    EXPECT_EQ("", refusal(OutputFiles(folder.path("out"))));
    EXPECT_EQ(Names{"out"}, folder.content());
}

TEST(output_files, paths_come_in_the_order_of_adding_without_removed_files) {
    OutputFiles files = two_files("nowhere/");
    files.remove("c.txt");
    files.add("d.txt", {});
    EXPECT_EQ((Names{"nowhere/a.txt", "nowhere/b.txt", "nowhere/d.txt"}), files.paths());
}

TEST(output_files, an_empty_folder_is_the_current_one) {
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path(""));
    const std::string reason = refusal(two_files(""));
    std::filesystem::current_path(before);
    EXPECT_EQ("", reason);
    EXPECT_EQ((Names{"a.txt", "b.txt"}), folder.content());
    EXPECT_EQ((Names{"a.txt", "b.txt"}), two_files("").paths());
}

TEST(output_files, nothing_is_written_before_publishing) {
    const TemporaryFolder folder;
    two_files(folder.path("out"));
    EXPECT_EQ(Names{}, folder.content());
}

TEST(output_files, files_of_an_earlier_run_are_replaced_and_others_stay) {
    const TemporaryFolder folder;
    folder.write("a.txt", "something older and longer");
    folder.write("c.txt", "mine");
    EXPECT_EQ("", refusal(two_files(folder.path(""))));
    EXPECT_EQ((Names{"a.txt", "b.txt", "c.txt"}), folder.content());
    EXPECT_EQ("first", text_of(folder.path("a.txt")));
    EXPECT_EQ("mine", text_of(folder.path("c.txt")));
}

TEST(output_files, permissions_follow_the_mask) {
    const TemporaryFolder folder;
    const mode_t mask = umask(027);
    const std::string reason = refusal(two_files(folder.path("out")));
    umask(mask);
    EXPECT_EQ("", reason);
    struct stat status {};
    ASSERT_EQ(0, stat(folder.path("out/a.txt").c_str(), &status));
    EXPECT_EQ(0640u, status.st_mode & 0777u);
}

TEST(output_files, leftovers_of_a_killed_run_are_neither_used_nor_removed) {
    const TemporaryFolder folder;
    const std::string leftover = "a.txt.tmp-" + std::to_string(getpid()) + "-0";
    folder.write(leftover, "half");
    EXPECT_EQ("", refusal(two_files(folder.path(""))));
    EXPECT_EQ((Names{"a.txt", leftover, "b.txt"}), folder.content());
    EXPECT_EQ("half", text_of(folder.path(leftover)));
}

TEST(output_files, a_file_in_place_of_the_folder_is_refused) {
    const TemporaryFolder folder;
    const std::string file = folder.write("out", "a file");
    EXPECT_EQ(file + ": is not a folder", refusal(two_files(file)));
    EXPECT_EQ(file + ": is not a folder", refusal(two_files(file + "/deeper/still")));
    EXPECT_EQ(Names{"out"}, folder.content());
}

TEST(output_files, folders_made_on_the_way_to_a_failure_are_removed) {
    const TemporaryFolder folder;
    const std::string too_long(300, 'n');
    EXPECT_NE("", refusal(two_files(folder.path("x/y/" + too_long))));
    EXPECT_EQ(Names{}, folder.content());
}

TEST(output_files, a_folder_in_place_of_a_file_is_refused_before_anything_changes) {
    const TemporaryFolder folder;
    folder.write("a.txt", "old");
    std::filesystem::create_directory(folder.path("b.txt"));
    EXPECT_EQ(folder.path("b.txt") + ": is a folder", refusal(two_files(folder.path(""))));
    EXPECT_EQ((Names{"a.txt", "b.txt"}), folder.content());
    EXPECT_EQ("old", text_of(folder.path("a.txt")));
}

TEST(output_files, the_input_is_never_replaced) {
    const TemporaryFolder folder;
    const std::string input = folder.write("b.txt", "the photograph");
    std::filesystem::create_symlink(input, folder.path("link"));
    EXPECT_EQ(input + ": is the input and would be replaced",
              refusal(two_files(folder.path("")), folder.path("link")));
    EXPECT_EQ("the photograph", text_of(input));
    EXPECT_EQ((Names{"b.txt", "link"}), folder.content());
}

TEST(output_files, a_full_disk_leaves_everything_as_it_was) {
    const TemporaryFolder folder;
    folder.write("small.txt", "old");
    OutputFiles files(folder.path(""));
    files.add("small.txt", bytes_of("new"));
    files.add("large.txt", docprep::Bytes(100000, 'x'));
    std::string reason;
    {
        const FileSizeLimit limit(4096);
        reason = refusal(files);
    }
    EXPECT_EQ(folder.path("large.txt") + ": File too large", reason);
    EXPECT_EQ(Names{"small.txt"}, folder.content());
    EXPECT_EQ("old", text_of(folder.path("small.txt")));
}

TEST(output_files, a_full_disk_leaves_no_new_folder) {
    const TemporaryFolder folder;
    OutputFiles files(folder.path("x/out"));
    files.add("large.txt", docprep::Bytes(100000, 'x'));
    {
        const FileSizeLimit limit(4096);
        EXPECT_NE("", refusal(files));
    }
    EXPECT_EQ(Names{}, folder.content());
}

// ---- Removing ----

TEST(output_files, a_file_of_an_earlier_run_is_removed) {
    const TemporaryFolder folder;
    folder.write("old.txt", "old");
    folder.write("mine.txt", "mine");
    OutputFiles files = two_files(folder.path(""));
    files.remove("old.txt");
    EXPECT_EQ("", refusal(files));
    EXPECT_EQ((Names{"a.txt", "b.txt", "mine.txt"}), folder.content());
}

TEST(output_files, there_need_not_be_anything_to_remove) {
    const TemporaryFolder folder;
    OutputFiles files = two_files(folder.path("out"));
    files.remove("old.txt");
    EXPECT_EQ("", refusal(files));
    EXPECT_EQ((Names{"out", "out/a.txt", "out/b.txt"}), folder.content());
}

TEST(output_files, nothing_is_removed_when_writing_fails) {
    const TemporaryFolder folder;
    folder.write("old.txt", "old");
    OutputFiles files(folder.path(""));
    files.remove("old.txt");
    files.add("large.txt", docprep::Bytes(100000, 'x'));
    {
        const FileSizeLimit limit(4096);
        EXPECT_NE("", refusal(files));
    }
    EXPECT_EQ(Names{"old.txt"}, folder.content());
}

TEST(output_files, the_input_is_never_removed) {
    const TemporaryFolder folder;
    const std::string input = folder.write("old.txt", "the photograph");
    OutputFiles files = two_files(folder.path(""));
    files.remove("old.txt");
    EXPECT_EQ(input + ": is the input and would be removed", refusal(files, input));
    EXPECT_EQ(Names{"old.txt"}, folder.content());
}

TEST(output_files, a_folder_is_never_removed) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("old.txt"));
    OutputFiles files = two_files(folder.path(""));
    files.remove("old.txt");
    EXPECT_EQ(folder.path("old.txt") + ": is a folder", refusal(files));
    EXPECT_EQ(Names{"old.txt"}, folder.content());
}
