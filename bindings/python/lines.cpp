#include "lines.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <new>

#include "console.h"

namespace orvex_python {

namespace {

thread_local Lines* youngest = nullptr;

}  // namespace

Lines::Lines() : outer_(youngest) {
    youngest = this;
}

Lines::~Lines() {
    youngest = outer_;
}

bool Lines::print(const char* text, std::size_t length) noexcept {
    if (!youngest) return true;
    try {
        youngest->text_.append(text, length);
        return true;
    } catch (const std::bad_alloc&) {
        return false;  // as printf that could not write
    }
}

}  // namespace orvex_python

namespace std {

int orvex_printf(const char* format, ...) {
    // Longer than any line of the library but the warning of a failed check, which names a path.
    char line[512];
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = vsnprintf(line, sizeof line, format, arguments);
    const char* text = line;
    unique_ptr<char[]> longer;
    if (length >= static_cast<int>(sizeof line)) {
        const size_t room = static_cast<size_t>(length) + 1;
        longer.reset(new (nothrow) char[room]);
        if (longer) vsnprintf(longer.get(), room, format, again);
        text = longer.get();
    }
    va_end(again);
    va_end(arguments);
    const bool printed = length >= 0 && text && orvex_python::Lines::print(text, static_cast<size_t>(length));
    return printed ? length : -1;
}

int orvex_puts(const char* text) {
    const bool printed =
        orvex_python::Lines::print(text, strlen(text)) && orvex_python::Lines::print("\n", 1);
    return printed ? 1 : EOF;
}

}  // namespace std
