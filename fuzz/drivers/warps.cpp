// Resize and affine warps of images; matrices have a file of their own.
#include <algorithm>

#include "driver.h"
#include "geometry.h"
#include "warp_matrices.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::Size;

constexpr int kMostPixels = 2500;

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
