#include "core.h"

namespace orvex_python {

using orvex_991::vector;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;

namespace {

py::tuple bwlabel(const py::object& src_given) {
    const Image src(src_given, "src");
    Mat<int> labels;
    int num = 0;
    call([&] { CImgproc::bwlabel(*src, labels, num); });
    return py::make_tuple(to_python(std::move(labels)), num);
}

py::object connectdComponent(const py::object& src_given, bool with_points) {
    const Image src(src_given, "src");
    vector<Rect> rects;
    vector<vector<Point>> points;
    call([&] { CImgproc::connectdComponent(*src, rects, with_points ? &points : nullptr); });
    if (!with_points) return to_python(std::move(rects));
    return py::make_tuple(to_python(std::move(rects)), to_python(std::move(points)));
}

py::list divideComponentsToRows(const py::object& rects_given) {
    vector<Rect> rects = rects_of(rects_given, "rects");
    vector<vector<Rect>> row_groups;
    call([&] { CImgproc::divideComponentsToRows(std::move(rects), row_groups); });
    return to_python(std::move(row_groups));
}

py::array convexHull(const py::object& points_given) {
    const vector<Point> points = points_of(points_given, "points");
    vector<Point> hull;
    call([&] { CImgproc::convexHull(points, hull); });
    return to_python(std::move(hull));
}

py::object minAreaRect_of_mask(const py::object& mat_given) {
    if (!py::isinstance<py::array_t<unsigned char>>(mat_given)) try_next_overload();
    const Image mat(mat_given, "mat");
    RotatedRect rect;
    call([&] { rect = CImgproc::minAreaRect(*mat); });
    return to_python(rect);
}

py::object minAreaRect_of_points(const py::object& points_given) {
    const vector<Point> points = points_of(points_given, "points");
    RotatedRect rect;
    call([&] { rect = CImgproc::minAreaRect(points); });
    return to_python(rect);
}

float getRotatedRectAngle(const py::object& rect_given) {
    const RotatedRect rect = rotated_rect_of(rect_given, "rotate_rect");
    float angle = 0;
    call([&] { angle = CImgproc::getRotatedRectAngle(rect); });
    return angle;
}

float calcLineDegree(const py::object& p1_given, const py::object& p2_given) {
    const Point32f p1 = point32f_of(p1_given, "p1"), p2 = point32f_of(p2_given, "p2");
    float degrees = 0;
    call([&] { degrees = CImgproc::calcLineDegree(p1, p2); });
    return degrees;
}

float getSharpness(const py::object& src, const py::object& mask_given) {
    const Image mask = Image::or_empty(mask_given, "mask");
    const bool masked = !mask_given.is_none();
    return value_from(src, [&](const U8& image) {
        return masked ? CImgproc::getSharpness(image, *mask) : CImgproc::getSharpness(image);
    });
}

py::tuple saliencyDetect(const py::object& src, const py::object& mask_given) {
    const Image mask(mask_given, "mask");
    vector<unsigned char> levels;
    py::array made = image_from(
        src, [&](const U8& image, U8& dst) { CImgproc::saliencyDetect(image, dst, *mask, levels); });
    return py::make_tuple(std::move(made), to_python(std::move(levels)));
}

py::array redColorDetect(const py::object& src, bool relaxed) {
    return image_from(src, [&](const U8& image, U8& dst) { CImgproc::redColorDetect(image, dst, relaxed); });
}

void add_components(py::module_& module) {
    module.def("bwlabel", bwlabel, "src"_a, R"(bwlabel(src)
--

Labels the 4-connected components of a binary image 1 .. num in the raster order of their first pixels.

Foreground is every pixel that is not 0, but the first one, (0, 0), only when it is exactly 255.

src: uint8, H x W, not empty.
Returns (labels, num): int32, H x W, 0 for background, and the number of components.
Raises Error of code 1 for an empty image or other than 1 channel, of code 3, and of code 4 when labels beyond
H * W / 2 meet (smallest case: 0, 255, 255, 255 in 2 x 2); MemoryError.)");
    module.def("connectdComponent", connectdComponent, "src"_a, "points"_a = false,
               R"(connectdComponent(src, points=False)
--

Bounding rectangles of the 4-connected components, larger areas first, and on request their pixels.

Foreground as in bwlabel. The order among equal areas is not the same with points and without.

src: uint8, H x W, not empty.
points: whether the pixels are wanted.
Returns int32, N x 4, rows (x, y, width, height); with points, (rects, points): those, and a list of N int32 arrays
of pixels (x, y) in raster order.
Raises Error of code 1 for an empty image, and of code 2 for every other failure.)");
    module.def("divideComponentsToRows", divideComponentsToRows, "rects"_a,
               R"(divideComponentsToRows(rects)
--

Groups rectangles into rows of text: bands of image rows that the rectangles cover without a gap, each rectangle in
the band that holds its top edge.

rects: int32, N x 4, or a sequence of (x, y, width, height), in any order.
Returns a list of int32 arrays, N x 4, a band each, from top to bottom, each sorted by x.
Raises Error of code 4 for a rectangle that begins above row 0 or lies above every band, and of code 2.)");
}

void add_outlines(py::module_& module) {
    module.def("convexHull", convexHull, "points"_a, R"(convexHull(points)
--

Corners of the convex hull, from the point with the smallest x, then y; the chain of smaller y comes first.

Points on edges are left out. Products wrap in 32 bits: hulls are right while coordinates differ by no more than
some 32,000.

points: int32, N x 2, or a sequence of (x, y), in any order.
Returns int32, N x 2.
Raises MemoryError.)");
    module.def("minAreaRect", minAreaRect_of_mask, "mat"_a, R"(minAreaRect(mat)
minAreaRect(points)

Rotated rectangle of least area around the foreground (not 0) of a mask, or around points.

mat: uint8, H x W, not empty; of more channels, the first H * W bytes count.
points: int32, N x 2, or a sequence of (x, y), in any order.
Returns RotatedRect, without corners when there is no area.
Raises Error of code 1 for an empty mask, and of code 3; MemoryError.)");
    module.def("minAreaRect", minAreaRect_of_points, "points"_a);
    module.def("getRotatedRectAngle", getRotatedRectAngle, "rotate_rect"_a,
               R"(getRotatedRectAngle(rotate_rect)
--

Angle of the longer side in radians, in (0, pi], measured from the vertical. pi is 3.14159.

rotate_rect: a RotatedRect with 4 corners.
Raises Error of code 1 for another number of corners.)");
    module.def("calcLineDegree", calcLineDegree, "p1"_a, "p2"_a, R"(calcLineDegree(p1, p2)
--

Angle of the line through two points in degrees, in [0, 180), y pointing up; 90 for equal points.

p1, p2: (x, y).)");
}

void add_detectors(py::module_& module) {
    module.def("getSharpness", getSharpness, "src"_a, "mask"_a = py::none(), R"(getSharpness(src, mask=None)
--

Sharpness of an image, higher is sharper: the response of a second-difference filter where the image, reduced to 15
rows, has contrast.

src: uint8, H x W or H x W x 3, not empty; with a mask H x W.
mask: uint8, H x W; only pixels where it is not 0 count. Once reduced, it is sampled at every second byte.
Returns 0 for a uniform image, and when the mask selects nothing.
Raises Error of code 1 for an empty image, other channels, a mask of other extents or an image that is reduced to
fewer than 3 columns, and of code 3.)");
    module.def("saliencyDetect", saliencyDetect, "src"_a, "mask"_a, R"(saliencyDetect(src, mask)
--

Saliency of grey levels: the mean absolute distance of a level to those of the pixels that a mask selects.

src: uint8, H x W, not empty.
mask: uint8, H x W, not empty; not 0 selects.
Returns (image, level_saliency): uint8, H x W, every pixel of src replaced by its level's saliency; and uint8, 256
entries spread over 0 .. 255, or 128 throughout when all levels are alike.
Raises Error of code 1 for empty images, other than 1 channel or different extents, of code 3 and of code 2.)");
    module.def("redColorDetect", redColorDetect, "src"_a, "relaxed"_a = false,
               R"(redColorDetect(src, relaxed=False)
--

Mask of the red seals in a photograph, found on a copy of at most 320 columns.

src: uint8, H x W x 3, not empty.
relaxed: leaves out the limits of a seal's size relative to the image and of its aspect.
Returns uint8, H x W: 255 on a seal; all 0 when nothing is red at all.
Raises Error of code 1 for an empty image or other than 3 channels, of code 2 "could not find any valid red circle",
and the codes of the operations used.)");
}

}  // namespace

void add_shapes(py::module_& module) {
    add_components(module);
    add_outlines(module);
    add_detectors(module);
}

}  // namespace orvex_python
