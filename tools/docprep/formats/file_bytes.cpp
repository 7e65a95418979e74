#include "formats/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "base/failure.h"

namespace docprep {

Descriptor::~Descriptor() {
    if (fd_ >= 0) close(fd_);
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
}

int Descriptor::release() {
    return std::exchange(fd_, -1);
}

namespace {

void require_readable(const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) throw Failure(path, "is a folder");
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) throw Failure(path, "is a device");
    if (S_ISSOCK(status.st_mode)) throw Failure(path, "is a socket");
}

/// Asked before it is opened: opening alone makes some devices act.
void require_readable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) throw Failure(path, system_reason(errno));
    require_readable(path, status);
}

/// Reads on from where the descriptor stands.
/// @param expected  how many bytes there seem to be
Bytes read_rest(int fd, int64_t expected, const std::string& path) {
    const auto require_length = [&](int64_t n) {
        if (n > kMostFileBytes)
            throw Failure(path, "is larger than " + std::to_string(kMostFileBytes >> 20) + " MiB");
    };
    require_length(expected);
    Bytes bytes(static_cast<size_t>(expected) + 1);  // one more, to meet the end without growing
    size_t have = 0;
    for (;;) {
        const ssize_t n = read(fd, bytes.data() + have, bytes.size() - have);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) throw Failure(path, system_reason(errno));
        if (n == 0) break;
        have += static_cast<size_t>(n);
        require_length(static_cast<int64_t>(have));
        if (have == bytes.size()) bytes.resize(std::min(2 * have, static_cast<size_t>(kMostFileBytes) + 1));
    }
    bytes.resize(have);
    return bytes;
}

}  // namespace

Bytes read_file(const std::string& path) {
    constexpr int64_t kPipeBuffer = 1 << 16;
    const bool standard_input = path == "-";
    if (!standard_input) require_readable(path);
    const Descriptor file(standard_input ? -1 : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!standard_input && file.get() < 0) throw Failure(path, system_reason(errno));
    const int fd = standard_input ? STDIN_FILENO : file.get();
    struct stat status {};
    if (fstat(fd, &status) != 0) throw Failure(path, system_reason(errno));
    require_readable(path, status);
    return read_rest(fd, S_ISREG(status.st_mode) ? int64_t{status.st_size} : kPipeBuffer, path);
}

}  // namespace docprep
