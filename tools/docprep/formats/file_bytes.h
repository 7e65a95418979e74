// Whole files in memory.
#ifndef DOCPREP_FILE_BYTES_H
#define DOCPREP_FILE_BYTES_H

#include <cstdint>
#include <string>

#include "base/bytes.h"

namespace docprep {

/// More than any picture of kMostPixels needs in practice. A longer file is refused before it is read, a
/// pipe as soon as it has brought more.
constexpr int64_t kMostFileBytes = int64_t{1} << 30;

/// Owner of a file descriptor.
class Descriptor {
 public:
    /// Negative: none.
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&& other) noexcept;

    int get() const { return fd_; }
    /// Gives the descriptor away.
    int release();

 private:
    int fd_;
};

/// The content of a file, or of a pipe up to its end; "-" is standard input from where it stands.
///
/// Opening a named pipe waits until somebody writes to it, as every tool does: a shell's `<(...)` needs it.
/// @throws Failure for folders and devices, for more than kMostFileBytes, and when the system refuses
Bytes read_file(const std::string& path);

}  // namespace docprep

#endif  // DOCPREP_FILE_BYTES_H
