#include "core.h"

namespace orvex_python {

using orvex_cv_991::MORPH_TYPE;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

using WindowFilter = void (*)(const U8&, U8&, const Size&);

template <WindowFilter filter>
py::array filtered(const py::object& src, const py::object& size_given) {
    const Size size = size_of(size_given, "size");
    return image_from(src, [&](const U8& image, U8& dst) { filter(image, dst, size); });
}

py::array morphologyBinary(const py::object& src, const py::object& size_given,
                           const py::object& type_given) {
    const Size size = size_of(size_given, "size");
    const auto type = static_cast<MORPH_TYPE>(int_of(type_given, "type"));
    return image_from(src,
                      [&](const U8& image, U8& dst) { CImgproc::morphologyBinary(image, dst, size, type); });
}

py::object dilateRect(const py::object& src_given, const py::object& size_given) {
    const Rect src = rect_of(src_given, "src");
    const Size size = size_of(size_given, "size");
    Rect grown;
    call([&] { CImgproc::dilateRect(src, grown, size); });
    return to_python(grown);
}

void add_binary(py::module_& module) {
    module.def("dilateBinary", filtered<CImgproc::dilateBinary>, "src"_a, "size"_a,
               R"(dilateBinary(src, size)
--

Dilation: 255 where a pixel of the window is not 0. Outside the image counts as 0.

The window of column c covers c - width / 2 .. c + width - 1 - width / 2, rows likewise.

src: uint8, H x W, not empty; of more channels, the first H * W bytes count.
size: (width, height) of the window, 1 .. W by 1 .. H.
Returns uint8, H x W.
Raises Error of code 1 for an empty image or another size, and of code 3.)");
    module.def("erodeBinary", filtered<CImgproc::erodeBinary>, "src"_a, "size"_a, R"(erodeBinary(src, size)
--

Erosion: 0 where a pixel of the window is below 128, else 255. Outside the image counts as 255.

src: uint8, H x W, not empty.
size: (width, height) of the window, as in dilateBinary.
Returns uint8, H x W.
Raises Error of code 1 for an empty image, other than 1 channel or another size, and of code 3.)");
    module.def("openBinary", filtered<CImgproc::openBinary>, "src"_a, "size"_a, R"(openBinary(src, size)
--

Erosion, then dilation.

src: uint8, H x W, not empty.
size: (width, height) of the window, as in dilateBinary.
Returns uint8, H x W.
Raises Error of code 1 for an empty image, other than 1 channel or another size, and of code 3.)");
    module.def("closeBinary", filtered<CImgproc::closeBinary>, "src"_a, "size"_a, R"(closeBinary(src, size)
--

Dilation, then erosion.

src: uint8, H x W, not empty; of more channels, the first H * W bytes count.
size: (width, height) of the window, as in dilateBinary.
Returns uint8, H x W.
Raises Error of code 1 for an empty image or another size, and of code 3.)");
    module.def("morphologyBinary", morphologyBinary, "src"_a, "size"_a, "type"_a,
               R"(morphologyBinary(src, size, type)
--

One of dilateBinary, erodeBinary, openBinary and closeBinary.

src: uint8, H x W, not empty.
size: (width, height) of the window, as in dilateBinary.
type: a MORPH_TYPE.
Returns uint8, H x W.
Raises Error of code 1 for an empty image, other than 1 channel, another size or another type, and of code 3.)");
    module.def("dilateRect", dilateRect, "src"_a, "size"_a, R"(dilateRect(src, size)
--

A rectangle grown by size.width to the left and right and by size.height up and down.

x and y stop at 0, but width and height grow by the full amount; nothing is clipped to an image.

src: (x, y, width, height).
size: (width, height).
Returns Rect.)");
}

void add_grey(py::module_& module) {
    module.def("dilateGray", filtered<CImgproc::dilateGray>, "src"_a, "size"_a, R"(dilateGray(src, size)
--

The largest value of the window; outside the image counts as 0.

src: uint8, H x W, not empty.
size: (width, height) of the window, as in dilateBinary.
Returns uint8, H x W.
Raises Error of code 1 for an empty image, other than 1 channel or another size, and of code 3.)");
    module.def("erodeGray", filtered<CImgproc::erodeGray>, "src"_a, "size"_a, R"(erodeGray(src, size)
--

The smallest value of the window; outside the image counts as 255.

src: uint8, H x W, not empty.
size: (width, height) of the window, as in dilateBinary.
Returns uint8, H x W.
Raises Error of code 1 for an empty image, other than 1 channel or another size, and of code 3.)");
    module.def("morphGradient", filtered<CImgproc::morphGradient>, "src"_a, "size"_a,
               R"(morphGradient(src, size)
--

The difference of dilateGray and erodeGray, binarised by Otsu's threshold.

src: uint8, H x W, not empty.
size: (width, height) of the window, as in dilateBinary.
Returns uint8, H x W.
Raises Error of code 1 for an empty image or other than 1 channel, and of code 2 for every failure after that, such
as another size.)");
}

}  // namespace

void add_morphology(py::module_& module) {
    add_binary(module);
    add_grey(module);
}

}  // namespace orvex_python
