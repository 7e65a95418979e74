#include "output_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <list>
#include <system_error>

#include "failure.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

/// Folders made on the way to one, removed again unless kept.
class NewFolders {
 public:
    NewFolders() = default;
    ~NewFolders() {
        std::error_code ignored;
        for (auto path = made_.rbegin(); path != made_.rend(); ++path) fs::remove(*path, ignored);
    }
    NewFolders(const NewFolders&) = delete;
    NewFolders& operator=(const NewFolders&) = delete;

    void make(const fs::path& path) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (fs::is_directory(status)) return;
        if (fs::exists(status)) throw Failure(path.string(), "is not a folder");
        if (path.has_parent_path() && path.parent_path() != path) make(path.parent_path());
        made_.reserve(made_.size() + 1);  // so that no folder is made that cannot be noted
        if (fs::create_directory(path, error)) made_.push_back(path);
        if (error) throw Failure(path.string(), "cannot be created: " + error.message());
    }
    void keep() { made_.clear(); }

 private:
    std::vector<fs::path> made_;
};

/// A file under a temporary name, removed unless renamed.
class TemporaryFile {
 public:
    /// @param target the name that it shall have at last
    TemporaryFile(fs::path target, const Bytes& content) : target_(std::move(target)) {
        Descriptor file(create());
        write_all(file.get(), content);
        // Some file systems report a full disk only here.
        if (close(file.release()) != 0) fail(errno);
    }
    ~TemporaryFile() { remove(); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void rename() {
        std::error_code error;
        fs::rename(path_, target_, error);
        if (error) throw Failure(target_.string(), error.message());
        path_.clear();
    }

 private:
    /// The first free name; several runs may write into one folder.
    int create() {
        for (int attempt = 0;; ++attempt) {
            path_ = target_;
            path_ += ".tmp-" + std::to_string(getpid()) + "-" + std::to_string(attempt);
            const int fd = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (fd >= 0) return fd;
            const int error = errno;
            path_.clear();  // not ours
            if (error != EEXIST) fail(error);
        }
    }

    void write_all(int fd, const Bytes& content) {
        size_t done = 0;
        while (done < content.size()) {
            const ssize_t n = write(fd, content.data() + done, content.size() - done);
            if (n < 0 && errno == EINTR) continue;
            if (n < 0) fail(errno);
            done += static_cast<size_t>(n);
        }
    }

    /// The destructor does not run for a constructor that throws.
    [[noreturn]] void fail(int error) {
        remove();
        throw Failure(target_.string(), system_reason(error));
    }

    void remove() noexcept {
        if (!path_.empty()) unlink(path_.c_str());
    }

    fs::path target_;
    fs::path path_;  // empty: there is no file to remove
};

void remove_if_there(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) throw Failure(path.string(), error.message());
}

}  // namespace

std::vector<std::string> OutputFiles::paths() const {
    std::vector<std::string> paths;
    for (const File& file : files_)
        if (file.content) paths.push_back((folder_ / file.name).string());
    return paths;
}

void OutputFiles::publish(const std::string& input) const {
    NewFolders folders;
    if (!folder_.empty()) folders.make(folder_);
    std::vector<fs::path> targets;  // made first: once a file has its name, nothing may run out of memory
    for (const File& file : files_) {
        const fs::path& target = targets.emplace_back(folder_ / file.name);
        std::error_code ignored;
        if (fs::is_directory(target, ignored)) throw Failure(target.string(), "is a folder");
        if (fs::equivalent(target, input, ignored))
            throw Failure(target.string(), std::string("is the input and would be ") +
                                               (file.content ? "replaced" : "removed"));
    }
    std::list<TemporaryFile> temporaries;  // which never moves them
    for (size_t k = 0; k < files_.size(); ++k)
        if (files_[k].content) temporaries.emplace_back(targets[k], *files_[k].content);
    auto temporary = temporaries.begin();
    for (size_t k = 0; k < files_.size(); ++k) {
        if (files_[k].content)
            (temporary++)->rename();
        else
            remove_if_there(targets[k]);
    }
    folders.keep();
}

}  // namespace docprep
