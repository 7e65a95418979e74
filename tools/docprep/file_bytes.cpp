#include "file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "failure.h"

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

Bytes read_file(const std::string& path) {
    // Without O_NONBLOCK, opening a pipe that nobody writes to would wait for ever.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.get() < 0) throw Failure(path, system_reason(errno));
    struct stat status {};
    if (fstat(file.get(), &status) != 0) throw Failure(path, system_reason(errno));
    if (S_ISDIR(status.st_mode)) throw Failure(path, "is a folder");
    if (!S_ISREG(status.st_mode)) throw Failure(path, "is not a regular file");
    if (status.st_size > kMostFileBytes)
        throw Failure(path, "is larger than " + std::to_string(kMostFileBytes >> 20) + " MiB");

    // The length may change meanwhile: what counts is what read() delivers, up to the length seen first.
    Bytes bytes(static_cast<size_t>(status.st_size));
    size_t have = 0;
    while (have < bytes.size()) {
        const ssize_t n = read(file.get(), bytes.data() + have, bytes.size() - have);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) throw Failure(path, system_reason(errno));
        if (n == 0) break;
        have += static_cast<size_t>(n);
    }
    bytes.resize(have);
    return bytes;
}

}  // namespace docprep
