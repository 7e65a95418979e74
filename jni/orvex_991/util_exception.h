#ifndef ORVEX_991_UTIL_EXCEPTION_H
#define ORVEX_991_UTIL_EXCEPTION_H

#include "util_string.h"

namespace orvex_991 {

/// The one exception type that the library throws on its own account.
///
/// Codes: 1 an input check failed (its text was printed on standard output) or the input's format is not
/// supported; 2 an operation failed inside a guarded body, or a detector found nothing; 3 memory for pixels or
/// for the work on them could not be had, or a matrix does not hold the pixels that its shape promises; 4 a
/// vector index is out of range. The message is empty except where an operation's documentation quotes one.
class CException {
 public:
    int code;        ///< 1 to 4, as above
    String message;  ///< empty, or what the operation's documentation quotes

    /// Without a message.
    explicit CException(int code_) : code(code_) {}
    /// With a message.
    CException(int code_, const String& message_) : code(code_), message(message_) {}
};

}  // namespace orvex_991

#endif  // ORVEX_991_UTIL_EXCEPTION_H
