#include "types.h"

#include <cmath>
#include <utility>

namespace reference {

namespace {
std::string printed;
}

std::string take_printed() {
    return std::exchange(printed, {});
}

void print(const std::string& text) {
    printed += text;
}

void print_prefix(char level, const std::string& file) {
    print(std::string(1, level) + " " + file + ":#] ");
}

void print_line(const std::string& text) {
    print_prefix();
    print(text + "\n");
}

void check(bool holds, const std::string& text, const std::string& function, const std::string& file) {
    if (holds) return;
    print_prefix('D', file);
    print("[warn] input error " + text + " \n[warn]file: jni/orvex_991/" + file +
          ", line: #, function: " + function + "\n\n");
    throw Failure{1, ""};
}

int wrapping(int64_t value) {
    return static_cast<int>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}

int wrapping_product(int64_t a, int64_t b) {
    return wrapping(static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b)));
}

int to_int(double value) {
    if (std::isnan(value)) return 0;
    if (value <= -2147483648.0) return INT32_MIN;
    if (value >= 2147483647.0) return INT32_MAX;
    return static_cast<int>(std::trunc(value));
}

}  // namespace reference
