// The reporting protocol on standard output. Internal, though installed: the container headers use it.
//
// Every diagnostic is a prefix "D file:line] " and then a message, each with its own printf or puts. File and
// line are those of the statement that reports, hence macros.
#ifndef ORVEX_991_UTIL_DIAG_H
#define ORVEX_991_UTIL_DIAG_H

#include <cstdio>

#include "util_exception.h"

namespace orvex_991 {

/// The file's name without its folders.
constexpr const char* base_name(const char* path) {
    const char* base = path;
    for (const char* p = path; *p; ++p)
        if (*p == '/' || *p == '\\') base = p + 1;
    return base;
}

}  // namespace orvex_991

#define ORVEX_PRINT_PREFIX(level) std::printf(level " %s:%d] ", ::orvex_991::base_name(__FILE__), __LINE__)

#define ORVEX_DEBUG_PREFIX() ORVEX_PRINT_PREFIX("D")
#define ORVEX_ERROR_PREFIX() ORVEX_PRINT_PREFIX("E")

/// Unless `condition` holds: prints the warning with exactly two printf calls, then throws code 1. `text` is
/// the condition as users know it, `function` the name that the warning gives.
#define ORVEX_CHECK_TEXT_AS(function, condition, text)                                              \
    do {                                                                                            \
        if (!(condition)) {                                                                         \
            ORVEX_DEBUG_PREFIX();                                                                   \
            std::printf("[warn] input error %s \n[warn]file: %s, line: %d, function: %s\n\n", text, \
                        __FILE__, __LINE__, function);                                              \
            throw ::orvex_991::CException(1);                                                       \
        }                                                                                           \
    } while (0)

/// Checks whose text is the condition itself, word for word: it is part of the output.
#define ORVEX_CHECK_AS(function, condition) ORVEX_CHECK_TEXT_AS(function, condition, #condition)
#define ORVEX_CHECK(condition) ORVEX_CHECK_AS(__func__, condition)

/// For a condition whose evaluation needs more than its text says.
#define ORVEX_CHECK_TEXT(condition, text) ORVEX_CHECK_TEXT_AS(__func__, condition, text)

/// Stops `clock` and prints its timing line; `text` holds one %f for the milliseconds.
#define ORVEX_REPORT_TIME(clock, text)                               \
    do {                                                             \
        (clock).stop();                                              \
        ORVEX_DEBUG_PREFIX();                                        \
        std::printf(text, static_cast<double>((clock).getTimeMS())); \
    } while (0)

#endif  // ORVEX_991_UTIL_DIAG_H
