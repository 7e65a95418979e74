// Resize and affine warps of images, and points and rectangles through the same matrices.
#include <algorithm>

#include "driver.h"
#include "geometry.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

constexpr int kMostPixels = 2500;

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

void warp(Reader& reader) {
    const bool in_place = reader.flag();
    const int interp = reader.seldom() ? reader.integer() : 0;
    const Mat<float> matrix = any_matrix(reader);
    const Image<float> plain_matrix = to_reference(matrix);
    U8 src = reader.image(reader.pick({1, 3, 2, 4}), kMostPixels);
    Shape shape = reader.shape(src.channels, kMostPixels);
    shape.channels = src.channels;
    // The reference walks over rows even where there are no columns.
    if (!affordable(shape, 4 * kMostPixels) || shape.rows > 1 << 17) shape = {3, 0, src.channels};
    const Size size(shape.cols, shape.rows);
    U8 previous = reader.previous(src);
    // 0 none, 1 one of its own, 2 the destination. One too short must be refused.
    const int masking = reader.range(0, 2);
    const int room = std::clamp(reference::wrapping_product(shape.rows, shape.cols), 0, 4 * kMostPixels);
    U8 mask = testing_support::filled(1, reader.seldom() ? room / 2 : room, 1, 7);
    Image<Byte> expected_mask = to_reference(mask);
    compare(
        call("warpAffine", size.width, size.height, interp, masking), std::move(src), std::move(previous),
        in_place,
        [&](const U8& image, U8& dst) {
            CImgproc::warpAffine(image, dst, matrix, size, static_cast<INTERP_TYPE>(interp),
                                 masking == 0   ? nullptr
                                 : masking == 1 ? &mask
                                                : &dst);
        },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            reference::warpAffine(image, dst, plain_matrix, {size.width, size.height}, interp,
                                  masking == 0   ? nullptr
                                  : masking == 1 ? &expected_mask
                                                 : &dst);
        });
    require_same(Outcome().with("mask", mask), Outcome().with("mask", expected_mask), "warpAffine");
}

void resize(Reader& reader, bool by_factor) {
    const bool in_place = reader.flag();
    const INTERP_TYPE interp = static_cast<INTERP_TYPE>(reader.seldom() ? 1 : 0);
    U8 src = reader.image(reader.pick({1, 3, 2, 4}), kMostPixels);
    const Shape wanted = reader.shape(1, kMostPixels);
    Size size(wanted.cols, wanted.rows);
    float scale = by_factor ? reader.number() : 0;
    if (by_factor) {
        const float rows = static_cast<float>(src.rows) * scale, cols = static_cast<float>(src.cols) * scale;
        size = Size(reference::to_int(cols), reference::to_int(rows));
    }
    if (!affordable({size.height, size.width, src.channels}, 4 * kMostPixels)) {
        size = Size(0, 5);  // refused
        scale = 0;
    }
    U8 previous = reader.previous(src);
    compare(
        by_factor ? call("resize", scale) : call("resize", size.width, size.height), std::move(src),
        std::move(previous), in_place,
        [&](const U8& image, U8& dst) {
            if (by_factor) return CImgproc::resize(image, dst, scale, interp);
            CImgproc::resize(image, dst, size, interp);
        },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            if (by_factor) return reference::resize(image, dst, scale, interp);
            reference::resize(image, dst, reference::Size{size.width, size.height}, interp);
        });
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

void run(Reader& reader) {
    const int operation = reader.range(0, 7);
    if (operation < 3) return warp(reader);
    if (operation < 6) return resize(reader, operation == 5);
    if (operation == 6) return rotation(reader);
    points_and_rectangles(reader);
}

const Registration registration("warps", run);

}  // namespace
}  // namespace fuzzing
