// Runs that are ended from outside, and runs that meet.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "commands.h"
#include "formats/file_bytes.h"
#include "output/output_files.h"
#include "output/unfinished.h"

namespace fs = std::filesystem;

namespace {

/// docprep at work in a folder whose page.png is a pipe without a reader: it waits there, with every other file
/// under its temporary name.
class WaitingRun {
 public:
    explicit WaitingRun(const TemporaryFolder& folder, const Names& before = {}) : folder_(folder) {
        fs::create_directory(folder.path("out"));
        EXPECT_EQ(0, mkfifo(folder.path("out/page.png").c_str(), 0600));
        Names arguments = before;
        for (const std::string& argument : {std::string(DOCPREP_PROGRAM), write_page(folder, "page.jpg"),
                                            std::string("-q"), std::string("-o"), folder.path("out")})
            arguments.push_back(argument);
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        EXPECT_EQ(0, posix_spawnp(&pid_, argv[0], nullptr, nullptr, argv.data(), environ));
        while (temporaries() < 4) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ~WaitingRun() {
        if (pid_ > 0) end_by(SIGKILL);
    }
    WaitingRun(const WaitingRun&) = delete;
    WaitingRun& operator=(const WaitingRun&) = delete;

    /// The status that it ends with.
    int end_by(int signal) {
        kill(pid_, signal);
        return wait();
    }

    /// Reads the pipe, so that it goes on.
    int let_finish() {
        const docprep::Descriptor pipe(open(folder_.path("out/page.png").c_str(), O_RDONLY | O_CLOEXEC));
        char buffer[4096];
        while (read(pipe.get(), buffer, sizeof buffer) > 0) {
        }
        return wait();
    }

    ptrdiff_t temporaries() const {
        const Names names = folder_.content();
        return std::count_if(names.begin(), names.end(), [](const std::string& name) {
            return name.find(".docprep-") != std::string::npos;
        });
    }

    pid_t pid() const { return pid_; }

 private:
    int wait() {
        int status = 0;
        waitpid(pid_, &status, 0);
        pid_ = 0;
        return status;
    }

    const TemporaryFolder& folder_;
    pid_t pid_ = 0;
};

const Names kUntouched = {"out", "out/page.png", "page.jpg"};

}  // namespace

TEST(signals, a_run_that_is_ended_leaves_no_temporary_file) {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        const TemporaryFolder folder;
        WaitingRun run(folder);
        const int status = run.end_by(signal);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_EQ(kUntouched, folder.content());
    }
}

TEST(signals, folders_that_were_made_go_with_the_run) {
    const TemporaryFolder folder;
    const auto make_and_wait = [&] {
        docprep::remove_unfinished_on_signals();
        docprep::OutputFiles files(folder.path("a/b"));
        files.lock();
        if (!fs::is_directory(folder.path("a/b"))) return;
        kill(getpid(), SIGTERM);
        pause();
    };
    EXPECT_EXIT(make_and_wait(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(Names{}, folder.content());
}

TEST(signals, what_a_killed_run_left_the_next_one_removes) {
    const TemporaryFolder folder;
    WaitingRun run(folder);
    run.end_by(SIGKILL);
    EXPECT_EQ(4, run.temporaries());
    fs::remove(folder.path("out/page.png"));
    EXPECT_EQ(0, docprep_with({folder.path("page.jpg"), "-o", folder.path("out")}).exit_code);
    EXPECT_EQ((Names{"out", "out/binary.png", "out/page.png", "out/result.json", "out/rows.jpg",
                     "out/saliency.jpg", "page.jpg"}),
              folder.content());
}

TEST(signals, those_that_were_ignored_stay_ignored) {
    const TemporaryFolder folder;
    WaitingRun run(folder, {"nohup"});
    kill(run.pid(), SIGHUP);
    const int status = run.let_finish();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ((Names{"out", "out/binary.png", "out/page.png", "out/result.json", "out/rows.jpg",
                     "out/saliency.jpg", "page.jpg"}),
              folder.content());
}

TEST(two_runs, the_second_into_a_folder_is_refused_and_the_first_goes_on) {
    const TemporaryFolder folder;
    WaitingRun first(folder);
    const Names before = folder.content();
    expect_failure(docprep_with({folder.path("page.jpg"), "-o", folder.path("out")}), folder.path("out"),
                   "another docprep is writing into this folder");
    EXPECT_EQ(before, folder.content());
    EXPECT_EQ(0, first.let_finish());
    EXPECT_TRUE(fs::exists(folder.path("out/result.json")));
    EXPECT_EQ(0, first.temporaries());
}
