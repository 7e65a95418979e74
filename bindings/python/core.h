// The operations of CImgproc as functions of the module, in the order of its header.
//
// Docstrings begin with "name(parameters)", a line "--" and an empty line, where inspect.signature looks for them.
#ifndef ORVEX_BINDINGS_PYTHON_CORE_H
#define ORVEX_BINDINGS_PYTHON_CORE_H

#include <pybind11/pybind11.h>

namespace orvex_python {

/// Colour conversion, statistics, thresholds.
void add_images(pybind11::module_& module);

}  // namespace orvex_python

#endif  // ORVEX_BINDINGS_PYTHON_CORE_H
