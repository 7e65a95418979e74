#include "test_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>

extern char** environ;

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "docprep-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const docprep::Bytes& content) const {
    return write(name, std::string(content.begin(), content.end()));
}

std::string TemporaryFolder::write(const std::string& name, const std::string& content) const {
    std::ofstream file(path_ / name, std::ios::binary);
    file << content;
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path(name));
    return path(name);
}

std::vector<std::string> TemporaryFolder::content() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_))
        names.push_back(entry.path().lexically_relative(path_).string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string text_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

docprep::Bytes bytes_of(const std::string& text) {
    return {text.begin(), text.end()};
}

Outcome run_program(const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    std::vector<char*> argv;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, folder.path("out").c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, folder.path("err").c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t child = 0;
    const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("cannot run " + arguments[0]);

    int status = 0;
    waitpid(child, &status, 0);
    Outcome outcome;
    outcome.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    outcome.out = text_of(folder.path("out"));
    outcome.err = text_of(folder.path("err"));
    return outcome;
}

FileSizeLimit::FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &saved_);
    const rlimit limit = {bytes, saved_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &saved_);
    std::signal(SIGXFSZ, handler_);
}
