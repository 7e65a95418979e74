#ifndef ORVEX_TESTS_SUPPORT_CAPTURE_H
#define ORVEX_TESTS_SUPPORT_CAPTURE_H

#include <cstdio>
#include <functional>
#include <string>

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

/// What a call of the library did: the code and the message that it threw, 0 and nothing when it threw
/// nothing, and what it printed, as it stands.
struct Result {
    int code = 0;
    std::string message;
    std::string printed;
};

Result result_of(const std::function<void()>& run);

/// The code alone.
int code_of(const std::function<void()>& run);

/// The text with '#' for line numbers and for the milliseconds of timing lines, and with source paths cut
/// down to the part from "jni/" on.
std::string normalised(const std::string& printed);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_CAPTURE_H
