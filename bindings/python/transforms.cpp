#include "core.h"

namespace orvex_python {

using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

py::array rot90ClockWise_FlipLR(const py::object& src, const py::object& n_given, const py::object& f_given) {
    const int n = int_of(n_given, "n"), f = int_of(f_given, "f");
    return image_from(src,
                      [&](const U8& image, U8& dst) { CImgproc::rot90ClockWise_FlipLR(image, dst, n, f); });
}

py::array flipLR(const py::object& src) {
    return image_from(src, CImgproc::flipLR);
}

using TurnImage = void (*)(const U8&, U8&, int);
using TurnPoint = Point (*)(const Point&, const Size&, int);
using TurnRect = Rect (*)(const Rect&, const Size&, int);

template <TurnImage turn>
py::array turned_image(const py::object& src, const py::object& n_given) {
    const int n = int_of(n_given, "n");
    return image_from(src, [&](const U8& image, U8& dst) { turn(image, dst, n); });
}

template <TurnPoint turn>
py::object turned_point(const py::object& pt_given, const py::object& size_given, const py::object& n_given) {
    constexpr py::ssize_t kRectangle = 4;
    if (PySequence_Check(pt_given.ptr()) && py::len(pt_given) == kRectangle) try_next_overload();
    const Point pt = point_of(pt_given, "pt");
    const Size size = size_of(size_given, "size");
    const int n = int_of(n_given, "n");
    Point turned;
    call([&] { turned = turn(pt, size, n); });
    return to_python(turned);
}

template <TurnRect turn>
py::object turned_rect(const py::object& src_given, const py::object& size_given, const py::object& n_given) {
    const Rect src = rect_of(src_given, "src");
    const Size img_size = size_of(size_given, "img_size");
    const int n = int_of(n_given, "n");
    Rect turned;
    call([&] { turned = turn(src, img_size, n); });
    return to_python(turned);
}

INTERP_TYPE interp_of(const py::object& interp) {
    return static_cast<INTERP_TYPE>(int_of(interp, "interp"));
}

py::array resize_to_size(const py::object& src, const py::object& size_given,
                         const py::object& interp_given) {
    if (!PySequence_Check(size_given.ptr())) try_next_overload();
    const Size out_size = size_of(size_given, "out_size");
    const INTERP_TYPE interp = interp_of(interp_given);
    return image_from(src, [&](const U8& image, U8& dst) { CImgproc::resize(image, dst, out_size, interp); });
}

py::array resize_by_factor(const py::object& src, const py::object& scale_given,
                           const py::object& interp_given) {
    const float scale = float_of(scale_given, "scale");
    const INTERP_TYPE interp = interp_of(interp_given);
    return image_from(src, [&](const U8& image, U8& dst) { CImgproc::resize(image, dst, scale, interp); });
}

py::array getRotationMatrix2D(const py::object& center_given, const py::object& angle_given,
                              const py::object& scale_given) {
    const Point32f center = point32f_of(center_given, "center");
    const float angle = float_of(angle_given, "angle"), scale = float_of(scale_given, "scale");
    Mat<float> matrix;
    call([&] { matrix = CImgproc::getRotationMatrix2D(center, angle, scale); });
    return to_python(std::move(matrix));
}

py::object warpAffine(const py::object& src, const py::object& matrix_given, const py::object& size_given,
                      const py::object& interp_given, const py::object& mask_given) {
    const Mat<float> matrix = matrix_of(matrix_given, "trans_matrix");
    const Size out_size = size_of(size_given, "out_size");
    const INTERP_TYPE interp = interp_of(interp_given);
    const Image previous = Image::or_empty(mask_given, "mask");
    const bool masked = !mask_given.is_none();
    U8 mask;
    py::array made = image_from(src, [&](const U8& image, U8& dst) {
        if (masked) mask = *previous;
        CImgproc::warpAffine(image, dst, matrix, out_size, interp, masked ? &mask : nullptr);
    });
    if (!masked) return std::move(made);
    return py::make_tuple(std::move(made), to_python(std::move(mask)));
}

py::object pointAffine(const py::object& pt_given, const py::object& matrix_given,
                       const py::object& scale_given, const py::object& origin_given) {
    const Point pt = point_of(pt_given, "pt"), origin = point_of(origin_given, "origin");
    const Mat<float> trans_mat = matrix_of(matrix_given, "trans_mat");
    const float scale = float_of(scale_given, "scale");
    Point mapped;
    call([&] { mapped = CImgproc::pointAffine(pt, trans_mat, scale, origin); });
    return to_python(mapped);
}

py::object rectAffine(const py::object& src_given, const py::object& matrix_given) {
    const Rect src = rect_of(src_given, "src");
    const Mat<float> trans_mat = matrix_of(matrix_given, "trans_mat");
    Rect mapped;
    call([&] { mapped = CImgproc::rectAffine(src, trans_mat); });
    return to_python(mapped);
}

py::object checkRectInMat(const py::object& size_given, const py::object& rect_given) {
    const Size size = size_of(size_given, "size");
    const Rect rect = rect_of(rect_given, "rect");
    Rect clipped;
    call([&] { clipped = CImgproc::checkRectInMat(size, rect); });
    return to_python(clipped);
}

void add_turns(py::module_& module) {
    module.def("rot90ClockWise_FlipLR", rot90ClockWise_FlipLR, "src"_a, "n"_a, "f"_a,
               R"(rot90ClockWise_FlipLR(src, n, f)
--

Mirrors an image left-right when f is odd, then turns it clockwise n times by a quarter.

src: uint8, H x W or H x W x C.
n: reduced to the remainder of n / 4, which keeps n's sign; a negative remainder gives zeros in src's shape.
f: odd mirrors.
Returns uint8, H x W, or W x H after an odd number of turns, with src's channels.
Raises Error of code 3.)");
    module.def("flipLR", flipLR, "src"_a, R"(flipLR(src)
--

Left-right mirror image.

src: uint8, H x W or H x W x C.
Returns uint8, src's shape.
Raises Error of code 3.)");
    module.def("rot90ClockWise", turned_image<CImgproc::rot90ClockWise>, "src"_a, "n"_a,
               R"(rot90ClockWise(src, n)              an image
rot90ClockWise(pt, size, n)         a point
rot90ClockWise(src, img_size, n)    a rectangle

n clockwise quarter turns.

Image: uint8, H x W or H x W x C; a negative remainder of n / 4 gives zeros. Returns uint8, H x W or W x H.

Point: where pixel pt of an image of that size, (width, height), lay before the image was turned n times. pt is
clamped into the image first. For n = 1 and 3 the mapping is that from the turned image back; negative remainders
count as 3. Returns Point.

Rectangle: as for points, one pixel further towards the origin than an exact turn. Returns Rect.

Raises Error of code 1 for a rectangle that reaches beyond the image, and of code 3.)");
    module.def("rot90ClockWise", turned_point<CImgproc::rot90ClockWise>, "pt"_a, "size"_a, "n"_a);
    module.def("rot90ClockWise", turned_rect<CImgproc::rot90ClockWise>, "src"_a, "img_size"_a, "n"_a);
    module.def("rot90AntiClockWise", turned_image<CImgproc::rot90AntiClockWise>, "src"_a, "n"_a,
               R"(rot90AntiClockWise(src, n)              an image
rot90AntiClockWise(pt, size, n)         a point
rot90AntiClockWise(src, img_size, n)    a rectangle

n anticlockwise quarter turns of an image, any n. Of points and rectangles it is the same as rot90ClockWise.

Image: uint8, H x W or H x W x C. Returns uint8, H x W or W x H. Point: returns Point. Rectangle: returns Rect.

Raises Error of code 1 for a rectangle that reaches beyond the image, and of code 3.)");
    module.def("rot90AntiClockWise", turned_point<CImgproc::rot90AntiClockWise>, "pt"_a, "size"_a, "n"_a);
    module.def("rot90AntiClockWise", turned_rect<CImgproc::rot90AntiClockWise>, "src"_a, "img_size"_a, "n"_a);
}

void add_resizing(py::module_& module) {
    module.def("resize", resize_to_size, "src"_a, "out_size"_a, "interp"_a = 0,
               R"(resize(src, out_size, interp=0)
resize(src, scale, interp=0)

Scales an image to a size, or both axes by one factor.

src: uint8, H x W or H x W x C, not empty.
out_size: (width, height) in pixels.
scale: above 0; extents are truncated, 5 x 3 times 0.5 is 2 x 1.
interp: INTERP_LINEAR; any other number gives zeros of that size.
Returns uint8, height x width with src's channels.
Raises Error of code 1 for an empty image or extents below 1, and of code 3, also when the result would be too
large.)");
    module.def("resize", resize_by_factor, "src"_a, "scale"_a, "interp"_a = 0);
    module.def("getRotationMatrix2D", getRotationMatrix2D, "center"_a, "angle"_a, "scale"_a,
               R"(getRotationMatrix2D(center, angle, scale)
--

The matrix that turns by `angle` degrees, anticlockwise on screen when positive, and scales about `center`.

center: (x, y) in pixels; maps to itself.
angle: degrees.
scale: above 0.
Returns float32, 2 x 3.
Raises Error of code 1 for another scale.)");
    module.def("warpAffine", warpAffine, "src"_a, "trans_matrix"_a, "out_size"_a, "interp"_a = 0,
               "mask"_a = py::none(), R"(warpAffine(src, trans_matrix, out_size, interp=0, mask=None)
--

Resamples an image through an affine matrix: bilinear with 11-bit weights, truncated.

Pixels whose 2 x 2 source neighbourhood lies inside the source are interpolated; others copy the source pixel
that holds their point, clamped into the image.

src: uint8, H x W or H x W x C, not empty.
trans_matrix: float32, 2 x 3, maps source (x, y) to output; a singular one samples the source at (0, 0).
out_size: (width, height) in pixels.
interp: INTERP_LINEAR; with any other number the image is zero and the mask stays as it is.
mask: uint8 image of at least width * height bytes, such as numpy.zeros((height, width), numpy.uint8), to learn
    which pixels were interpolated. It is not written.
Returns uint8, height x width with src's channels; given a mask, (image, mask): the mask, in the shape of the one
given, has 1 where the image was interpolated and 0 where it was copied.
Raises Error of code 1 for an empty image or a matrix of another shape, and of code 3, also for a mask that is too
small.)");
    module.def("pointAffine", pointAffine, "pt"_a, "trans_mat"_a, "scale"_a, "origin"_a,
               R"(pointAffine(pt, trans_mat, scale, origin)
--

origin + scale * (matrix applied to pt), truncated; the matrix carries source points to output points.

pt, origin: (x, y).
trans_mat: float32, 2 x 3.
scale: a factor.
Returns Point.
Raises Error of code 1 for a matrix of another shape.)");
    module.def("rectAffine", rectAffine, "src"_a, "trans_mat"_a, R"(rectAffine(src, trans_mat)
--

The rectangle between the mapped corners: left edge from the left corners, right edge from the right ones, and so
on. A bounding box for turns of less than a quarter only.

src: (x, y, width, height).
trans_mat: float32, 2 x 3.
Returns Rect.
Raises Error of code 1 for a matrix of another shape.)");
    module.def("checkRectInMat", checkRectInMat, "size"_a, "rect"_a, R"(checkRectInMat(size, rect)
--

`rect` clipped into an image; one entirely outside collapses onto the nearest edge, 1 pixel thick.

size: (width, height) of the image.
rect: (x, y, width, height).
Returns Rect.)");
}

}  // namespace

void add_transforms(py::module_& module) {
    add_turns(module);
    add_resizing(module);
}

}  // namespace orvex_python
