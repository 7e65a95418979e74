// Files and programs for tests.
#ifndef DOCPREP_TEST_FILES_H
#define DOCPREP_TEST_FILES_H

#include <sys/resource.h>

#include <filesystem>
#include <string>
#include <vector>

#include "formats/file_bytes.h"

/// A new folder, removed at the end with all that is in it.
class TemporaryFolder {
 public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(const std::string& name) const { return (path_ / name).string(); }
    /// Writes a file and returns its path.
    std::string write(const std::string& name, const docprep::Bytes& content) const;
    std::string write(const std::string& name, const std::string& content) const;
    /// Paths of everything in it, relative and sorted.
    std::vector<std::string> content() const;

 private:
    std::filesystem::path path_;
};

/// A file's content; fails the test when it cannot be read.
std::string text_of(const std::string& path);

docprep::Bytes bytes_of(const std::string& text);

/// What a program left.
struct Outcome {
    int exit_code = -1;  ///< 1000 + signal when one ended it
    std::string out;
    std::string err;
};

/// Runs a program found by its path or in PATH; arguments[0] is its name. Standard input is empty.
Outcome run_program(const std::vector<std::string>& arguments);

/// While it lives, files cannot grow beyond `bytes`: what a full disk does, for this process alone.
class FileSizeLimit {
 public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
    void (*handler_)(int);
    rlimit saved_{};
};

#endif  // DOCPREP_TEST_FILES_H
