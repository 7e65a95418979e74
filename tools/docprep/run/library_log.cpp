#include "run/library_log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/failure.h"

namespace docprep {

namespace {

constexpr const char* kName = "library.log";

/// Writes out what standard output holds; 0, or the errno value if that failed. Then the rest is dropped:
/// some C libraries keep it, and it must not come out wherever standard output leads next.
int flush_or_drop() {
    if (std::fflush(stdout) == 0) return 0;
    const int error = errno;
    const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (nowhere.get() >= 0) dup2(nowhere.get(), STDOUT_FILENO);
    std::fflush(stdout);
    std::clearerr(stdout);
    return error;
}

}  // namespace

LibraryLog::LibraryLog(LibraryLines lines) : lines_(lines), file_(nullptr, std::fclose) {
    if (lines == LibraryLines::kShown || lines == LibraryLines::kLeft) return;
    if (lines == LibraryLines::kKept) {
        file_.reset(std::tmpfile());
        if (!file_) throw Failure(kName, "no temporary file: " + system_reason(errno));
    } else {
        file_.reset(std::fopen("/dev/null", "w+e"));
        if (!file_) throw Failure("/dev/null", system_reason(errno));
    }
}

Bytes LibraryLog::content() const {
    if (error_ != 0) throw Failure(kName, system_reason(error_));
    Bytes bytes;
    if (!file_) return bytes;
    const int fd = fileno(file_.get());
    const off_t length = lseek(fd, 0, SEEK_END);
    bytes.resize(length > 0 ? static_cast<size_t>(length) : 0);
    if (pread(fd, bytes.data(), bytes.size(), 0) != length) throw Failure(kName, "cannot be read back");
    return bytes;
}

LibraryLog::Redirection::Redirection(LibraryLog& log) : log_(log), saved_(-1) {
    if (log.lines_ == LibraryLines::kLeft) return;
    saved_ = Descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (saved_.get() < 0) throw Failure("standard output", system_reason(errno));
    std::fflush(stdout);
    const int target = log.file_ ? fileno(log.file_.get()) : STDERR_FILENO;
    if (dup2(target, STDOUT_FILENO) < 0) throw Failure("standard output", system_reason(errno));
}

LibraryLog::Redirection::~Redirection() {
    if (saved_.get() < 0) return;
    const int error = flush_or_drop();
    if (log_.error_ == 0 && log_.file_) log_.error_ = error;
    dup2(saved_.get(), STDOUT_FILENO);
}

}  // namespace docprep
