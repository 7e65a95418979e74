#include "arrays.h"
#include "call.h"
#include "core.h"

namespace orvex_python {

using namespace pybind11::literals;
using orvex_cv_991::CImgproc;

namespace {

py::array bgr2gray(const py::object& src_given) {
    const Image src(src_given, "src");
    U8 dst;
    call([&] { CImgproc::bgr2gray(*src, dst); });
    return to_python(std::move(dst));
}

int otsu(const py::object& src_given, const py::object& mask_given) {
    const Image src(src_given, "src");
    const Image mask = Image::or_empty(mask_given, "mask");
    int threshold = 0;
    call([&] { threshold = mask_given.is_none() ? CImgproc::otsu(*src) : CImgproc::otsu(*src, *mask); });
    return threshold;
}

}  // namespace

void add_images(py::module_& module) {
    module.def("bgr2gray", bgr2gray, "src"_a, R"(bgr2gray(src)
--

Grey image from BGR: (107 B + 601 G + 306 R + 512) >> 10 per pixel, integers only.

White gives 253, since the weights sum to 1014.

src: uint8, H x W x 3; an image of 1 channel is copied; of other channel counts the result is zero.
Returns uint8, H x W; empty for an empty src.
Raises Error of code 3.)");
    module.def("otsu", otsu, "src"_a, "mask"_a = py::none(), R"(otsu(src, mask=None)
--

Otsu's threshold of a grey image: the level t that best parts its histogram into 0 .. t and t + 1 .. 255.

src: uint8, H x W; may be empty.
mask: uint8, H x W; only pixels where it is not 0 count.
Returns t, 0 .. 255; of several equally good levels the lowest; 0 for an empty or a constant black
image, and when the mask selects no pixel.
Raises Error of code 1 for other than 1 channel or a mask of other extents, and of code 3.)");
}

}  // namespace orvex_python
