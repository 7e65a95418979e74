#include "pipeline/deskew.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

constexpr int kLargestTile = 64;
constexpr int kSmallestTile = 2;

/// How fast a shift changes down the page, at most. Of an error, each round of the way to the page leaves
/// no more than this share.
constexpr double kSteepestDown = 0.5;

/// On the page before it was straightened.
Place bent(const Bend& bend, double x, double y) {
    return {x, y + bend.shift(x, y)};
}

/// The affine map nearest to the bend over a tile: from the page to the page before it was straightened.
AffineMatrix straight_part(const Bend& bend, const Rect& tile) {
    const double right = tile.x + tile.width - 1, bottom = tile.y + tile.height - 1;
    const double at[] = {bend.shift(tile.x, tile.y), bend.shift(right, tile.y), bend.shift(tile.x, bottom),
                         bend.shift(right, bottom)};
    const double across = tile.width > 1 ? (at[1] + at[3] - at[0] - at[2]) / 2 / (tile.width - 1) : 0;
    const double down = tile.height > 1 ? (at[2] + at[3] - at[0] - at[1]) / 2 / (tile.height - 1) : 0;
    const double middle_x = (tile.x + right) / 2, middle_y = (tile.y + bottom) / 2;
    // A parabola lies on one side of its chord: between the two is best.
    const double middle = ((at[0] + at[1] + at[2] + at[3]) / 4 + bend.shift(middle_x, middle_y)) / 2;
    return {1,
            0,
            0,
            static_cast<float>(across),
            static_cast<float>(1 + down),
            static_cast<float>(middle - across * middle_x - down * middle_y)};
}

/// How far the affine map of a tile lies from the bend, at most.
double tile_error(const Bend& bend, const Rect& tile) {
    const AffineMatrix straight = straight_part(bend, tile);
    constexpr int kSteps = 4;
    double most = 0;
    for (int i = 0; i <= kSteps; ++i)
        for (int j = 0; j <= kSteps; ++j) {
            const double x = tile.x + (tile.width - 1.0) * i / kSteps;
            const double y = tile.y + (tile.height - 1.0) * j / kSteps;
            most = std::max(most, std::fabs(mapped(straight, {x, y}).y - bent(bend, x, y).y));
        }
    return most;
}

/// Splits a tile until each part is exact enough: bends change abruptly where their text ends.
template <class Visit>
void for_each_exact_tile(const Bend& bend, const Rect& tile, const Visit& visit) {
    if (std::max(tile.width, tile.height) <= kSmallestTile || tile_error(bend, tile) <= kTileError) {
        visit(tile);
        return;
    }
    const int right = tile.width - tile.width / 2, bottom = tile.height - tile.height / 2;
    for (const int y : {0, bottom})
        for (const int x : {0, right}) {
            const int width = x == 0 ? right : tile.width - right;
            const int height = y == 0 ? bottom : tile.height - bottom;
            if (width > 0 && height > 0)
                for_each_exact_tile(bend, Rect(tile.x + x, tile.y + y, width, height), visit);
        }
}

template <class Visit>
void for_each_tile(const Deskew& deskew, const Visit& visit) {
    for (int y = 0; y < deskew.rows; y += kLargestTile)
        for (int x = 0; x < deskew.cols; x += kLargestTile)
            for_each_exact_tile(
                deskew.bend,
                Rect(x, y, std::min(kLargestTile, deskew.cols - x), std::min(kLargestTile, deskew.rows - y)),
                visit);
}

/// Whether a bend keeps the order of the page's lines, also far from the text that it was measured on.
bool keeps_order(const Bend& bend, int rows, int cols) {
    constexpr int kSteps = 64;
    for (int i = 0; i <= kSteps; ++i)
        for (int j = 0; j <= kSteps; ++j) {
            const double x = (cols - 1.0) * i / kSteps, y = (rows - 1.0) * j / kSteps;
            if (std::fabs(bend.shift(x, y + 0.5) - bend.shift(x, y - 0.5)) > kSteepestDown) return false;
        }
    return true;
}

void copy_into(Image& page, const Rect& tile, const Image& part) {
    const auto width = static_cast<size_t>(tile.width) * static_cast<size_t>(page.channels);
    for (int row = 0; row < tile.height; ++row)
        std::memcpy(page.data + (static_cast<ptrdiff_t>(tile.y + row) * page.cols + tile.x) * page.channels,
                    part.data + static_cast<size_t>(row) * width, width);
}

/// `matrix` takes the picture to the page before it is straightened.
Image warped(const Image& picture, const AffineMatrix& matrix, const Deskew& deskew, Image& inside) {
    inside.mat_create(deskew.rows, deskew.cols, 1, 0);
    Image page;
    if (deskew.bend.none()) {
        CImgproc::warpAffine(picture, page, as_mat(matrix), Size(deskew.cols, deskew.rows), INTERP_LINEAR,
                             &inside);
        return page;
    }
    page.mat_create(deskew.rows, deskew.cols, picture.channels, 0);
    for_each_tile(deskew, [&](const Rect& tile) {
        AffineMatrix to_tile = combined(inverse(straight_part(deskew.bend, tile)), matrix);
        to_tile[2] -= static_cast<float>(tile.x);
        to_tile[5] -= static_cast<float>(tile.y);
        Image part, part_inside;
        part_inside.mat_create(tile.height, tile.width, 1, 0);
        CImgproc::warpAffine(picture, part, as_mat(to_tile), Size(tile.width, tile.height), INTERP_LINEAR,
                             &part_inside);
        copy_into(page, tile, part);
        copy_into(inside, tile, part_inside);
    });
    return page;
}

bool too_large(double cols, double rows) {
    return cols * rows > static_cast<double>(kMostPixels);
}

}  // namespace

bool Deskew::none() const {
    return matrix == AffineMatrix{1, 0, 0, 0, 1, 0} && bend.none();
}

Place Deskew::to_photo(const Place& on_page) const {
    return mapped(inverse(matrix), bent(bend, on_page.x, on_page.y));
}

Place Deskew::to_page(const Place& on_photo) const {
    const Place level = mapped(matrix, on_photo);
    Place on_page = level;
    // Each round leaves kSteepestDown of the error at most.
    for (int round = 0; round < 16; ++round) on_page.y = level.y - bend.shift(on_page.x, on_page.y);
    return on_page;
}

void Bounds::add(const Place& place) {
    left = std::min(left, place.x);
    top = std::min(top, place.y);
    right = std::max(right, place.x);
    bottom = std::max(bottom, place.y);
}

Bounds bounds_on_page(const Rect& rect, const Deskew& deskew) {
    const double right = rect.x + rect.width - 1.0, bottom = rect.y + rect.height - 1.0;
    Bounds bounds;
    for (const double x : {double(rect.x), right})
        for (const double y : {double(rect.y), bottom}) bounds.add(deskew.to_page({x, y}));
    return bounds;
}

Deskew plan_deskew(const Image& photo, double skew) {
    Deskew level;
    level.cols = photo.cols;
    level.rows = photo.rows;
    if (std::fabs(skew) < kLeastSkew) return level;
    Deskew turned;
    turned.degrees = skew;
    turned.matrix = turn_about_centre(static_cast<float>(skew), 1, photo);
    const WideExtents extents = mapped_extents(turned.matrix, photo);
    if (too_large(extents.cols, extents.rows)) return level;
    turned.cols = static_cast<int>(extents.cols);
    turned.rows = static_cast<int>(extents.rows);
    centre_in(turned.matrix, photo, turned.cols, turned.rows);
    return turned;
}

Deskew with_bend(const Deskew& deskew, const Bend& bend) {
    if (!keeps_order(bend, deskew.rows, deskew.cols)) return deskew;
    // The shift is largest on the page's edges: in between it is a polynomial of the text, which lies inside.
    double above = 0, below = 0;
    constexpr int kSteps = 64;
    for (int k = 0; k <= kSteps; ++k) {
        const double x = (deskew.cols - 1.0) * k / kSteps;
        above = std::max(above, bend.shift(x, 0));
        below = std::max(below, -bend.shift(x, deskew.rows - 1.0));
    }
    const double margin_above = std::ceil(above), margin_below = std::ceil(below);
    const double rows = deskew.rows + margin_above + margin_below;
    if (too_large(deskew.cols, rows)) return deskew;
    Deskew straight = deskew;
    straight.bend = bend;
    return cropped(straight, Rect(0, -static_cast<int>(margin_above), deskew.cols, static_cast<int>(rows)));
}

Deskew cropped(const Deskew& deskew, const Rect& part) {
    Deskew cut = deskew;
    cut.matrix[2] -= static_cast<float>(part.x);
    cut.matrix[5] -= static_cast<float>(part.y);
    cut.bend = deskew.bend.seen_from(part.x, part.y);
    cut.cols = part.width;
    cut.rows = part.height;
    return cut;
}

Image deskewed(const Image& photo, const Deskew& deskew, Image& inside) {
    return warped(photo, deskew.matrix, deskew, inside);
}

Image deskewed_on_white(const Image& photo, const Deskew& deskew) {
    Image inside;
    Image page = deskewed(photo, deskew, inside);
    const ptrdiff_t n = static_cast<ptrdiff_t>(page.rows) * page.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        if (inside.data[i] == 0)
            std::memset(page.data + i * page.channels, 255, static_cast<size_t>(page.channels));
    return page;
}

Image deskewed_mask(const Image& mask, const Size& photo, const Deskew& deskew) {
    const float across = static_cast<float>(photo.width) / static_cast<float>(mask.cols);
    const float down = static_cast<float>(photo.height) / static_cast<float>(mask.rows);
    // Edges of pictures fall together, not the centres of their first pixels.
    const AffineMatrix to_photo = {across, 0, (across - 1) / 2, 0, down, (down - 1) / 2};
    Image inside;
    Image page = warped(mask, combined(deskew.matrix, to_photo), deskew, inside);
    CImgproc::thresholdSeg(page, page, 128);
    return page;
}

}  // namespace docprep
