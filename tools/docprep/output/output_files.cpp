#include "output/output_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <set>
#include <system_error>
#include <utility>

#include "base/failure.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

/// In the middle of a temporary file's name, before the number of its process.
constexpr const char* kMark = ".docprep-";
constexpr const char* kEnding = ".tmp";

/// The place that a path leads to through symbolic links; nothing needs to be there.
fs::path followed(fs::path path) {
    constexpr int kMostLinks = 40;  // as the system has it
    for (int links = 0; links < kMostLinks; ++links) {
        std::error_code not_a_link;
        const fs::path target = fs::read_symlink(path, not_a_link);
        if (not_a_link) return path;
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    throw Failure(path.string(), system_reason(ELOOP));
}

/// Where a file's content goes.
struct Target {
    fs::path path;
    bool stream = false;  ///< a pipe or a device, which takes it as it comes
};

/// @throws Failure when it would be the input, or when content cannot go there
Target target_of(const fs::path& path, bool removal, const std::string& input) {
    std::error_code ignored;
    const fs::file_type type = fs::status(path, ignored).type();
    if (type == fs::file_type::directory) throw Failure(path.string(), "is a folder");
    if (fs::equivalent(path, input, ignored))
        throw Failure(path.string(),
                      std::string("is the input and would be ") + (removal ? "removed" : "replaced"));
    if (removal) return {path};
    if (type == fs::file_type::fifo || type == fs::file_type::character) return {path, true};
    if (type == fs::file_type::block || type == fs::file_type::socket)
        throw Failure(path.string(), "is not a file, a pipe or a character device");
    return {followed(path)};
}

/// Writes all bytes to what is open, however long its reader takes.
/// @param name  for messages
void write_all(int fd, const Bytes& content, const std::string& name) {
    size_t done = 0;
    while (done < content.size()) {
        const ssize_t n = write(fd, content.data() + done, content.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) throw Failure(name, system_reason(errno));
        done += static_cast<size_t>(n);
    }
}

/// A file under a temporary name, removed unless renamed. It is locked as long as it is ours: the lock ends with the
/// program, however that ends.
class TemporaryFile {
 public:
    /// @param target the name that it shall have at last
    TemporaryFile(fs::path target, const Bytes& content) : target_(std::move(target)) {
        try {
            create();
            write_all(file_.get(), content, target_.string());
            // Some file systems report a full disk only here.
            if (close(dup(file_.get())) != 0) throw Failure(target_.string(), system_reason(errno));
        } catch (...) {  // the destructor does not run for a constructor that throws
            remove();
            throw;
        }
    }
    ~TemporaryFile() { remove(); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void rename() {
        if (std::rename(file_name_.path().c_str(), target_.c_str()) != 0)
            throw Failure(target_.string(), system_reason(errno));
        file_name_.forget();
        there_ = false;
    }

 private:
    /// The first free name; several runs may write into one folder.
    void create() {
        for (int attempt = 0; !there_; ++attempt) {
            const SignalsHeld held = hold_signals();
            file_name_.expect(target_.string() + kMark + std::to_string(getpid()) + "-" +
                              std::to_string(attempt) + kEnding);
            file_ =
                Descriptor(open(file_name_.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
            if (file_.get() < 0 && errno == EEXIST) continue;
            if (file_.get() < 0) throw Failure(target_.string(), system_reason(errno));
            file_name_.note();
            there_ = true;
            if (lost_to_another()) remove();
        }
    }

    /// Whether another run took the new file for one left by a killed run, which it may before it is locked.
    bool lost_to_another() {
        struct stat status {};
        if (flock(file_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return true;
        return fstat(file_.get(), &status) == 0 && status.st_nlink == 0;
    }

    void remove() noexcept {
        if (!there_) return;
        const SignalsHeld held = hold_signals();
        unlink(file_name_.path().c_str());
        file_name_.forget();
        there_ = false;
    }

    fs::path target_;
    Unfinished file_name_;
    Descriptor file_{-1};
    bool there_ = false;
};

/// Whether a name is one that create() gives.
bool is_temporary(const std::string& name) {
    const std::string mark = kMark, ending = kEnding;
    const size_t at = name.rfind(mark);
    if (at == std::string::npos || name.size() < at + mark.size() + ending.size()) return false;
    const std::string numbers = name.substr(at + mark.size(), name.size() - at - mark.size() - ending.size());
    return name.substr(name.size() - ending.size()) == ending && !numbers.empty() &&
           std::all_of(numbers.begin(), numbers.end(),
                       [](unsigned char c) { return std::isdigit(c) || c == '-'; });
}

/// Removes what killed runs have left; what is still locked belongs to one that runs.
///
/// Not by std::filesystem: libstdc++'s directory iterator ends the program where memory runs out.
void remove_leftovers(const fs::path& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.c_str()), closedir);
    if (!folder) return;
    while (const dirent* const entry = readdir(folder.get())) {
        if (!is_temporary(entry->d_name)) continue;
        const Descriptor file(
            openat(dirfd(folder.get()), entry->d_name, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.get() >= 0 && flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            unlinkat(dirfd(folder.get()), entry->d_name, 0);
    }
}

void write_stream(const fs::path& path, const Bytes& content) {
    const Descriptor stream(open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (stream.get() < 0) throw Failure(path.string(), system_reason(errno));
    write_all(stream.get(), content, path.string());
}

void remove_if_there(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) throw Failure(path.string(), error.message());
}

}  // namespace

OutputFiles::OutputFiles(std::string folder) : folder_(std::move(folder)) {}

OutputFiles::~OutputFiles() {
    const SignalsHeld held = hold_signals();
    while (!made_.empty()) {
        rmdir(made_.back().path().c_str());  // std::filesystem would need memory
        made_.pop_back();
    }
}

void OutputFiles::make_folders(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) return;
    if (fs::exists(status)) throw Failure(path.string(), "is not a folder");
    if (path.has_parent_path() && path.parent_path() != path) make_folders(path.parent_path());
    const SignalsHeld held = hold_signals();
    Unfinished& folder = made_.emplace_back();
    folder.expect(path.string());
    const bool made = fs::create_directory(path, error);
    if (made)
        folder.note();
    else
        made_.pop_back();
    if (error) throw Failure(path.string(), "cannot be created: " + error.message());
}

void OutputFiles::lock() {
    if (!folder_.empty()) make_folders(folder_);
    const fs::path folder = folder_.empty() ? fs::path(".") : folder_;
    lock_ = Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (lock_.get() < 0) throw Failure(folder.string(), system_reason(errno));
    if (flock(lock_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        throw Failure(folder.string(), "another docprep is writing into this folder");
}

std::vector<std::string> OutputFiles::paths() const {
    std::vector<std::string> paths;
    for (const File& file : files_)
        if (file.content) paths.push_back((folder_ / file.name).string());
    return paths;
}

void OutputFiles::publish(const std::string& input) {
    if (!folder_.empty()) make_folders(folder_);
    std::vector<Target> targets;  // made first: once a file has its name, nothing may run out of memory
    for (const File& file : files_) targets.push_back(target_of(folder_ / file.name, !file.content, input));
    std::set<fs::path> folders;
    for (const Target& target : targets)
        if (!target.stream) folders.insert(target.path.has_parent_path() ? target.path.parent_path() : ".");
    for (const fs::path& folder : folders) remove_leftovers(folder);

    std::list<TemporaryFile> temporaries;  // which never moves them
    for (size_t k = 0; k < files_.size(); ++k)
        if (files_[k].content && !targets[k].stream)
            temporaries.emplace_back(targets[k].path, *files_[k].content);
    for (size_t k = 0; k < files_.size(); ++k)
        if (targets[k].stream) write_stream(targets[k].path, *files_[k].content);

    const SignalsHeld held = hold_signals();
    auto temporary = temporaries.begin();
    for (size_t k = 0; k < files_.size(); ++k) {
        if (!files_[k].content)
            remove_if_there(targets[k].path);
        else if (!targets[k].stream)
            (temporary++)->rename();
    }
    made_.clear();
}

}  // namespace docprep
