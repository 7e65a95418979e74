// Labels and components.
#include "components.h"

#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;

void labels(const U8& src) {
    Mat<int> dst;
    dst.mat_create(2, 3, 1, 7);
    int num = -5, expected_num = -5;
    const Image<Byte> image = to_reference(src);
    Image<int> expected = to_reference(dst);
    auto got = of_library([&] { CImgproc::bwlabel(src, dst, num); });
    auto want = of_reference([&] { reference::bwlabel(image, expected, expected_num); });
    got.with("dst", dst).with("num", num).with("src", src);
    want.with("dst", expected).with("num", expected_num).with("src", image);
    require_same(got, want, "bwlabel of " + testing_support::shape_of(src));
}

void components(Reader& reader, const U8& src) {
    const bool with_points = reader.flag();
    orvex_991::vector<Rect> rects(reader.range(0, 3), Rect(0, 0, 0, 0));
    orvex_991::vector<orvex_991::vector<Point>> points(reader.range(0, 3));
    List<reference::Rect> expected_rects;
    expected_rects.resize(rects.size);
    List<List<reference::Point>> expected_points;
    expected_points.resize(points.size);
    const Image<Byte> image = to_reference(src);
    auto got = of_library([&] { CImgproc::connectdComponent(src, rects, with_points ? &points : nullptr); });
    auto want = of_reference([&] {
        reference::connectdComponent(image, expected_rects, with_points ? &expected_points : nullptr);
    });
    got.with("rects", rects).with("points", points).with("src", src);
    want.with("rects", expected_rects).with("points", expected_points).with("src", image);
    require_same(got, want, call("connectdComponent", with_points) + " of " + testing_support::shape_of(src));
}

void run(Reader& reader) {
    const bool labels_alone = reader.flag();
    U8 src = reader.image(1, 1200);  // the reference exchanges neighbours until components are in order
    // Without this few images would hold the first pixel's one foreground value.
    if (src.data && src.rows > 0 && src.cols > 0 && src.channels > 0 && reader.flag()) src.data[0] = 255;
    if (labels_alone)
        labels(src);
    else
        components(reader, src);
}

const Registration registration("components", run);

}  // namespace
}  // namespace fuzzing
