#include "output/standard_output.h"

#include <cerrno>
#include <cstdio>

#include "base/failure.h"

namespace docprep {

namespace {

void print(const void* data, size_t size) {
    const bool written = std::fwrite(data, 1, size, stdout) == size;
    if (!written || std::fflush(stdout) != 0) throw Failure("standard output", system_reason(errno));
}

}  // namespace

void print(const std::string& text) {
    print(text.data(), text.size());
}

void print(const Bytes& bytes) {
    print(bytes.data(), bytes.size());
}

}  // namespace docprep
