// How the module calls the library: without the interpreter's lock, and with its lines and errors in Python's terms.
#ifndef ORVEX_BINDINGS_PYTHON_CALL_H
#define ORVEX_BINDINGS_PYTHON_CALL_H

#include <pybind11/pybind11.h>

#include <string>

#include "lines.h"
#include "util_exception.h"

namespace orvex_python {

/// Finds what calls need of the package; once a module, before its first call.
void init_calls();

/// Gives the lines of a call to the log of the running context (`orvex_991.log`), if there is one.
void hand_to_log(const std::string& text);

/// Raises orvex_991.Error.
[[noreturn]] void raise_error(const orvex_991::CException& error, const std::string& text);

/// Runs `work`, which touches no Python object, with the interpreter's lock released.
///
/// Its lines go to the log, whether it throws or not; a CException becomes orvex_991.Error, and other
/// exceptions pass (pybind11 makes std::bad_alloc a MemoryError).
template <class Work>
void call(const Work& work) {
    Lines lines;
    try {
        const pybind11::gil_scoped_release unlocked;
        work();
    } catch (const orvex_991::CException& error) {
        hand_to_log(lines.text());
        raise_error(error, lines.text());
    } catch (...) {
        hand_to_log(lines.text());
        throw;
    }
    hand_to_log(lines.text());
}

}  // namespace orvex_python

#endif  // ORVEX_BINDINGS_PYTHON_CALL_H
