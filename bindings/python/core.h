// The operations of CImgproc as functions of the module, in the order of its header.
//
// Docstrings begin with "name(parameters)", a line "--" and an empty line, where inspect.signature finds them. Those of
// overloads list the forms instead, and the first one's is that of all.
#ifndef ORVEX_BINDINGS_PYTHON_CORE_H
#define ORVEX_BINDINGS_PYTHON_CORE_H

#include <utility>

#include "arrays.h"
#include "call.h"

namespace orvex_python {

using namespace pybind11::literals;
using orvex_cv_991::CImgproc;

void add_images(py::module_& module);      ///< colour conversion, statistics, thresholds
void add_transforms(py::module_& module);  ///< quarter turns, resizing, affine transforms
void add_morphology(py::module_& module);  ///< binary and grey morphology
void add_shapes(py::module_& module);      ///< components, shapes, detectors

/// What `work(src, dst)` makes of an image.
template <class Work>
py::array image_from(const py::object& src_given, const Work& work) {
    const Image src(src_given, "src");
    U8 dst;
    call([&] { work(*src, dst); });
    return to_python(std::move(dst));
}

/// What `work(src)` finds in an image.
template <class Work>
auto value_from(const py::object& src_given, const Work& work) {
    const Image src(src_given, "src");
    decltype(work(*src)) value{};
    call([&] { value = work(*src); });
    return value;
}

/// Leaves a call to the next overload.
[[noreturn]] inline void try_next_overload() {
    throw py::reference_cast_error();
}

}  // namespace orvex_python

#endif  // ORVEX_BINDINGS_PYTHON_CORE_H
