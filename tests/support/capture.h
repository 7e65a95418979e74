#ifndef ORVEX_TESTS_SUPPORT_CAPTURE_H
#define ORVEX_TESTS_SUPPORT_CAPTURE_H

#include <cstdio>
#include <functional>
#include <string>

#include "util_exception.h"

namespace testing_support {

/// What `run` wrote to standard output (file descriptor 1), passing on whatever it throws.
class Capture {
 public:
    Capture();
    ~Capture();
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    /// Ends the capture and returns the text.
    std::string finish();

 private:
    int saved_;
};

std::string printed_by(const std::function<void()>& run);

/// The code that `run` throws, 0 when it throws nothing; what it prints is dropped.
template <class Run>
int code_of(Run run) {
    int code = 0;
    printed_by([&] {
        try {
            run();
        } catch (const orvex_991::CException& e) {
            code = e.code;
        }
    });
    return code;
}

/// The text with '#' for line numbers and for the milliseconds of timing lines, and with source paths cut
/// down to the part from "jni/" on.
std::string normalised(const std::string& printed);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_CAPTURE_H
