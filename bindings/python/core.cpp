#include "core.h"

#include "orvex_991_version.h"

PYBIND11_MODULE(_core, module) {
    // Docstrings begin with a signature of their own, which says more than the types of C++.
    pybind11::options options;
    options.disable_function_signatures();
    module.doc() = "The operations of orvex_991; use them by the package's name.";
    module.attr("__version__") = ORVEX_991_VERSION;
    orvex_python::init_calls();
    orvex_python::init_arrays();
    orvex_python::add_images(module);
    orvex_python::add_transforms(module);
    orvex_python::add_morphology(module);
    orvex_python::add_shapes(module);
}
