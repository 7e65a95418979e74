#include "failure.h"

#include <system_error>
#include <utility>

namespace docprep {

Failure::Failure(std::string file, const std::string& reason)
    : std::runtime_error(reason), file_(std::move(file)) {}

std::string system_reason(int error_number) {
    return std::generic_category().message(error_number);
}

char in_one_line(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? '?' : c;
}

std::string one_line(std::string text) {
    for (char& c : text) c = in_one_line(c);
    return text;
}

}  // namespace docprep
