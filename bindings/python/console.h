// Included before each source of the library that goes into the Python module (the compiler's option -include): what
// the library prints goes to the thread's Lines instead of standard output, which is Python's own.
#ifndef ORVEX_BINDINGS_PYTHON_CONSOLE_H
#define ORVEX_BINDINGS_PYTHON_CONSOLE_H

#include <cstdio>

// The library says std::printf, and a macro replaces the part behind the colons alone: the
// replacements have to stand in std.
namespace std {
__attribute__((__format__(__printf__, 1, 2))) int orvex_printf(const char* format, ...);
int orvex_puts(const char* text);
}  // namespace std

#define printf orvex_printf
#define puts orvex_puts

#endif  // ORVEX_BINDINGS_PYTHON_CONSOLE_H
