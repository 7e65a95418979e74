#include "call.h"

#include <algorithm>

namespace py = pybind11;

namespace orvex_python {

namespace {

// Borrowed for good: the modules that they are from stay loaded as long as this one.
PyObject* log_variable = nullptr;
PyObject* error_class = nullptr;

py::list lines_of(const std::string& text) {
    py::list lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        // A warning names a path, whose bytes need not be UTF-8.
        lines.append(py::reinterpret_steal<py::object>(
            PyUnicode_DecodeFSDefaultAndSize(text.data() + begin, static_cast<Py_ssize_t>(end - begin))));
        begin = end + 1;
    }
    return lines;
}

}  // namespace

void init_calls() {
    log_variable = py::getattr(py::module_::import("orvex_991._log"), "current").release().ptr();
    error_class = py::getattr(py::module_::import("orvex_991._types"), "Error").release().ptr();
}

void hand_to_log(const std::string& text) {
    if (text.empty()) return;
    PyObject* log = nullptr;
    if (PyContextVar_Get(log_variable, Py_None, &log) < 0) throw py::error_already_set();
    const auto owned = py::reinterpret_steal<py::object>(log);
    if (!owned.is_none()) owned.attr("extend")(lines_of(text));
}

void raise_error(const orvex_991::CException& error, const std::string& text) {
    const auto message = py::reinterpret_steal<py::object>(PyUnicode_DecodeFSDefault(error.message.c_str()));
    const py::object made = py::handle(error_class)(error.code, message, py::tuple(lines_of(text)));
    PyErr_SetObject(error_class, made.ptr());
    throw py::error_already_set();
}

}  // namespace orvex_python
