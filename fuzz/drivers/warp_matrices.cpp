#include "warp_matrices.h"

#include <algorithm>

#include "driver.h"
#include "geometry.h"

namespace fuzzing {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

Mat<float> any_matrix(Reader& reader) {
    Mat<float> m;
    m.mat_create(2, 3, reader.seldom() ? 2 : 1, 0);
    for (int k = 0; k < 6; ++k) m.data[k] = reader.number();
    const int kind = reader.byte();
    if (kind < 64) m.data[1] = m.data[3] = 0;  // as of a resize
    if (kind >= 64 && kind < 112) {
        m.data[3] = -m.data[1];  // a turn
        m.data[4] = m.data[0];
    }
    if (kind < 248) return m;
    const int rows = reader.range(-1, 3), cols = reader.range(-1, 3);
    try {
        m.mat_create(rows, cols, reader.range(-1, 2), 1);
    } catch (const orvex_991::CException&) {  // leaves a shape without elements
    }
    return m;
}

void rotation(Reader& reader) {
    const Point32f center{reader.number(), reader.number()};
    const float angle = reader.number(), scale = reader.number();
    Mat<float> matrix;
    Image<float> expected;
    auto got = of_library([&] { matrix = CImgproc::getRotationMatrix2D(center, angle, scale); });
    auto want =
        of_reference([&] { expected = reference::getRotationMatrix2D(center.x, center.y, angle, scale); });
    if (matrix.data) std::transform(matrix.data, matrix.data + 6, matrix.data, canonical);
    std::transform(expected.data.begin(), expected.data.end(), expected.data.begin(), canonical);
    require_same(got.with("matrix", matrix), want.with("matrix", expected),
                 call("getRotationMatrix2D", center.x, center.y, angle, scale));
}

void points_and_rectangles(Reader& reader) {
    const Mat<float> matrix = any_matrix(reader);
    const Image<float> plain_matrix = to_reference(matrix);
    const Rect rect = reader.rect();
    const Point pt(rect.x, rect.y), origin = reader.point();
    const Size size = reader.size();
    const float scale = reader.number();
    const reference::Rect plain{rect.x, rect.y, rect.width, rect.height};
    Point mapped;
    reference::Point expected{0, 0};
    auto got = of_library([&] { mapped = CImgproc::pointAffine(pt, matrix, scale, origin); });
    auto want = of_reference([&] {
        expected = reference::pointAffine({pt.x, pt.y}, plain_matrix, scale, {origin.x, origin.y});
    });
    require_same(got.with("point", mapped), want.with("point", expected),
                 call("pointAffine", pt.x, pt.y, scale));

    Rect box;
    reference::Rect expected_box{0, 0, 0, 0};
    const std::string numbers = call("", rect.x, rect.y, rect.width, rect.height, size.width, size.height);
    got = of_library([&] { box = CImgproc::rectAffine(rect, matrix); });
    want = of_reference([&] { expected_box = reference::rectAffine(plain, plain_matrix); });
    require_same(got.with("rect", box), want.with("rect", expected_box), "rectAffine" + numbers);
    got = of_library([&] { box = CImgproc::checkRectInMat(size, rect); });
    want = of_reference([&] { expected_box = reference::checkRectInMat({size.width, size.height}, plain); });
    require_same(got.with("rect", box), want.with("rect", expected_box), "checkRectInMat" + numbers);
}

}  // namespace fuzzing
