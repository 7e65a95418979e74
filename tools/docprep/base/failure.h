// What ends a run: the one line that the user reads.
#ifndef DOCPREP_FAILURE_H
#define DOCPREP_FAILURE_H

#include <stdexcept>
#include <string>

#include "util_exception.h"

namespace docprep {

/// A run that cannot go on, as "FILE: reason". what() is the reason alone.
class Failure : public std::runtime_error {
 public:
    Failure(std::string file, const std::string& reason);

    /// The file or folder that the reason is about, as the user wrote it.
    const std::string& file() const noexcept { return file_; }

 private:
    std::string file_;
};

/// A photograph that is not what was asked for, although nothing is wrong with its file.
class Refusal : public Failure {
 public:
    using Failure::Failure;
};

/// The system's words for an errno value.
std::string system_reason(int error_number);

/// Why the library threw, without allocating: memory may have run out.
struct LibraryReason {
    explicit LibraryReason(const orvex_991::CException& exception);

    char text[200];  ///< "library error 3 (no memory for pixels)"
};

/// Prints the line "docprep: ABOUT: REASON" on standard error, or without the middle part where that is empty.
/// Allocates nothing. Threads may call it at the same time.
void complain(const char* about, const char* reason);

/// A control character as '?': file names may hold line feeds, and what reports them promises one line.
char in_one_line(char c);
/// The text with every character so.
std::string one_line(std::string text);

}  // namespace docprep

#endif  // DOCPREP_FAILURE_H
