#include "output/output_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "base/failure.h"
#include "formats/file_bytes.h"
#include "test_files.h"

namespace fs = std::filesystem;
using docprep::OutputFiles;
using Names = std::vector<std::string>;

namespace {

std::string refusal(OutputFiles& files, const std::string& input = "") {
    try {
        files.publish(input);
        return "";
    } catch (const docprep::Failure& failure) {
        return failure.file() + ": " + failure.what();
    }
}

/// With two files to write.
class TwoFiles : public OutputFiles {
 public:
    explicit TwoFiles(const std::string& folder) : OutputFiles(folder) {
        add("a.txt", bytes_of("first"));
        add("b.txt", bytes_of("second"));
    }
};

std::string refusal_of_two(const std::string& folder, const std::string& input = "") {
    TwoFiles files(folder);
    return refusal(files, input);
}

}  // namespace

TEST(output_files, the_folder_and_its_parents_are_created) {
    const TemporaryFolder folder;
    EXPECT_EQ("", refusal_of_two(folder.path("x/y/z/")));
    EXPECT_EQ((Names{"x", "x/y", "x/y/z", "x/y/z/a.txt", "x/y/z/b.txt"}), folder.content());
    EXPECT_EQ("second", text_of(folder.path("x/y/z/b.txt")));
}

TEST(output_files, a_new_folder_stays_even_without_files) {
    const TemporaryFolder folder;
    OutputFiles files(folder.path("out"));
    EXPECT_EQ("", refusal(files));
    EXPECT_EQ(Names{"out"}, folder.content());
}

TEST(output_files, paths_come_in_the_order_of_adding_without_removed_files) {
    TwoFiles files("nowhere/");
    files.remove("c.txt");
    files.add("d.txt", {});
    EXPECT_EQ((Names{"nowhere/a.txt", "nowhere/b.txt", "nowhere/d.txt"}), files.paths());
}

TEST(output_files, an_empty_folder_is_the_current_one) {
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path(""));
    const std::string reason = refusal_of_two("");
    std::filesystem::current_path(before);
    EXPECT_EQ("", reason);
    EXPECT_EQ((Names{"a.txt", "b.txt"}), folder.content());
    EXPECT_EQ((Names{"a.txt", "b.txt"}), TwoFiles("").paths());
}

TEST(output_files, nothing_is_written_before_publishing) {
    const TemporaryFolder folder;
    const TwoFiles files(folder.path("out"));
    EXPECT_EQ(Names{}, folder.content());
}

TEST(output_files, files_of_an_earlier_run_are_replaced_and_others_stay) {
    const TemporaryFolder folder;
    folder.write("a.txt", "something older and longer");
    folder.write("c.txt", "mine");
    EXPECT_EQ("", refusal_of_two(folder.path("")));
    EXPECT_EQ((Names{"a.txt", "b.txt", "c.txt"}), folder.content());
    EXPECT_EQ("first", text_of(folder.path("a.txt")));
    EXPECT_EQ("mine", text_of(folder.path("c.txt")));
}

TEST(output_files, permissions_follow_the_mask) {
    const TemporaryFolder folder;
    const mode_t mask = umask(027);
    const std::string reason = refusal_of_two(folder.path("out"));
    umask(mask);
    EXPECT_EQ("", reason);
    struct stat status {};
    ASSERT_EQ(0, stat(folder.path("out/a.txt").c_str(), &status));
    EXPECT_EQ(0640u, status.st_mode & 0777u);
}

TEST(output_files, leftovers_of_killed_runs_are_removed) {
    const TemporaryFolder folder;
    folder.write("a.txt.docprep-" + std::to_string(getpid()) + "-0.tmp", "half");
    folder.write("other.png.docprep-1-17.tmp", "half");
    for (const char* mine : {"a.docprep-x-0.tmp", "a.docprep-.tmp", "a.docprep-1-0.tmp.png", "docprep.tmp"})
        folder.write(mine, "mine");
    EXPECT_EQ("", refusal_of_two(folder.path("")));
    EXPECT_EQ((Names{"a.docprep-.tmp", "a.docprep-1-0.tmp.png", "a.docprep-x-0.tmp", "a.txt", "b.txt",
                     "docprep.tmp"}),
              folder.content());
}

TEST(output_files, files_that_another_run_is_writing_stay) {
    const TemporaryFolder folder;
    const std::string other = folder.write("c.txt.docprep-1-0.tmp", "half");
    const docprep::Descriptor theirs(open(other.c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(0, flock(theirs.get(), LOCK_EX));
    EXPECT_EQ("", refusal_of_two(folder.path("")));
    EXPECT_EQ("half", text_of(other));
}

TEST(output_files, a_file_in_place_of_the_folder_is_refused) {
    const TemporaryFolder folder;
    const std::string file = folder.write("out", "a file");
    EXPECT_EQ(file + ": is not a folder", refusal_of_two(file));
    EXPECT_EQ(file + ": is not a folder", refusal_of_two(file + "/deeper/still"));
    EXPECT_EQ(Names{"out"}, folder.content());
}

TEST(output_files, folders_made_on_the_way_to_a_failure_are_removed) {
    const TemporaryFolder folder;
    const std::string too_long(300, 'n');
    EXPECT_NE("", refusal_of_two(folder.path("x/y/" + too_long)));
    EXPECT_EQ(Names{}, folder.content());
}

TEST(output_files, a_folder_in_place_of_a_file_is_refused_before_anything_changes) {
    const TemporaryFolder folder;
    folder.write("a.txt", "old");
    std::filesystem::create_directory(folder.path("b.txt"));
    EXPECT_EQ(folder.path("b.txt") + ": is a folder", refusal_of_two(folder.path("")));
    EXPECT_EQ((Names{"a.txt", "b.txt"}), folder.content());
    EXPECT_EQ("old", text_of(folder.path("a.txt")));
}

TEST(output_files, the_input_is_never_replaced) {
    const TemporaryFolder folder;
    const std::string input = folder.write("b.txt", "the photograph");
    std::filesystem::create_symlink(input, folder.path("link"));
    EXPECT_EQ(input + ": is the input and would be replaced",
              refusal_of_two(folder.path(""), folder.path("link")));
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
    {
        OutputFiles files(folder.path("x/out"));
        files.add("large.txt", docprep::Bytes(100000, 'x'));
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
    TwoFiles files(folder.path(""));
    files.remove("old.txt");
    EXPECT_EQ("", refusal(files));
    EXPECT_EQ((Names{"a.txt", "b.txt", "mine.txt"}), folder.content());
}

TEST(output_files, there_need_not_be_anything_to_remove) {
    const TemporaryFolder folder;
    TwoFiles files(folder.path("out"));
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
    TwoFiles files(folder.path(""));
    files.remove("old.txt");
    EXPECT_EQ(input + ": is the input and would be removed", refusal(files, input));
    EXPECT_EQ(Names{"old.txt"}, folder.content());
}

TEST(output_files, a_folder_is_never_removed) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("old.txt"));
    TwoFiles files(folder.path(""));
    files.remove("old.txt");
    EXPECT_EQ(folder.path("old.txt") + ": is a folder", refusal(files));
    EXPECT_EQ(Names{"old.txt"}, folder.content());
}

// ---- Links, pipes and devices ----

TEST(output_files, a_link_stays_and_its_file_is_replaced) {
    const TemporaryFolder folder;
    fs::create_directory(folder.path("elsewhere"));
    folder.write("elsewhere/real.txt", "old");
    fs::create_symlink("elsewhere/real.txt", folder.path("link"));
    fs::create_symlink("link", folder.path("a.txt"));
    EXPECT_EQ("", refusal_of_two(folder.path("")));
    EXPECT_EQ("first", text_of(folder.path("elsewhere/real.txt")));
    EXPECT_TRUE(fs::is_symlink(folder.path("a.txt")));
    EXPECT_EQ((Names{"a.txt", "b.txt", "elsewhere", "elsewhere/real.txt", "link"}), folder.content());
}

TEST(output_files, a_link_to_nothing_yet_leads_to_a_new_file) {
    const TemporaryFolder folder;
    fs::create_symlink("new.txt", folder.path("a.txt"));
    EXPECT_EQ("", refusal_of_two(folder.path("")));
    EXPECT_EQ("first", text_of(folder.path("new.txt")));
    EXPECT_TRUE(fs::is_symlink(folder.path("a.txt")));
}

TEST(output_files, links_in_a_circle_are_refused) {
    const TemporaryFolder folder;
    fs::create_symlink("b.txt", folder.path("a.txt"));
    fs::create_symlink("a.txt", folder.path("b.txt"));
    EXPECT_NE(std::string::npos, refusal_of_two(folder.path("")).find("Too many levels of symbolic links"));
    EXPECT_EQ((Names{"a.txt", "b.txt"}), folder.content());
}

TEST(output_files, a_pipe_takes_its_content_and_stays_a_pipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, mkfifo(folder.path("a.txt").c_str(), 0600));
    const docprep::Descriptor reader(open(folder.path("a.txt").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_EQ("", refusal_of_two(folder.path("")));
    char content[6] = "";
    EXPECT_EQ(5, read(reader.get(), content, sizeof content));
    EXPECT_STREQ("first", content);
    EXPECT_TRUE(fs::is_fifo(folder.path("a.txt")));
}

TEST(output_files, a_full_device_fails_and_stays_a_device) {
    const TemporaryFolder folder;
    fs::create_symlink("/dev/full", folder.path("a.txt"));
    EXPECT_EQ(folder.path("a.txt") + ": No space left on device", refusal_of_two(folder.path("")));
    EXPECT_EQ(Names{"a.txt"}, folder.content());
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(output_files, a_socket_is_refused) {
    const TemporaryFolder folder;
    const docprep::Descriptor socket_file(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.path("b.txt");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(0, bind(socket_file.get(), reinterpret_cast<sockaddr*>(&address), sizeof address));
    EXPECT_EQ(path + ": is not a file, a pipe or a character device", refusal_of_two(folder.path("")));
    EXPECT_EQ(Names{"b.txt"}, folder.content());
}

// ---- Two runs ----

TEST(output_files, a_locked_folder_is_not_locked_again_until_it_is_free) {
    const TemporaryFolder folder;
    OutputFiles second(folder.path("out"));
    {
        OutputFiles first(folder.path("out"));
        first.lock();
        try {
            second.lock();
            ADD_FAILURE() << "two runs have one folder";
        } catch (const docprep::Failure& failure) {
            EXPECT_EQ(folder.path("out"), failure.file());
            EXPECT_STREQ("another docprep is writing into this folder", failure.what());
        }
    }
    EXPECT_EQ(Names{}, folder.content()) << "what was made for nothing is removed";
    second.lock();
    EXPECT_EQ(Names{"out"}, folder.content());
}
