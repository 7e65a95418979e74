#include "standard_output.h"

#include <cerrno>
#include <cstdio>

#include "failure.h"

namespace docprep {

void print(const std::string& text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!written || std::fflush(stdout) != 0) throw Failure("standard output", system_reason(errno));
}

}  // namespace docprep
