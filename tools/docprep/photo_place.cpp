#include "photo_place.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// pointAffine truncates, which half a pixel more makes rounding.
Mat<float> rounding_inverse(const AffineMatrix& matrix) {
    AffineMatrix back = inverse(matrix);
    back[2] += 0.5f;
    back[5] += 0.5f;
    return as_mat(back);
}

/// The rectangle with these two pixels in opposite corners.
Rect between(const Point& a, const Point& b) {
    return Rect(std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x) + 1, std::abs(a.y - b.y) + 1);
}

}  // namespace

WayBack::WayBack(const Deskew& deskew, const Size& turned, int quarter_turns)
    : bend_(deskew.bend),
      matrix_(rounding_inverse(deskew.matrix)),
      turned_(turned),
      quarter_turns_(quarter_turns) {}

PhotoPlace WayBack::of(const Rect& rect) const {
    const Point first = rect.left_top();
    const Point last = rect.right_bottom();
    const Point on_page[] = {first, Point(last.x, first.y), last, Point(first.x, last.y)};
    PhotoPlace place;
    for (size_t k = 0; k < place.corners.size(); ++k)
        place.corners[k] = unturned(CImgproc::pointAffine(unbent(on_page[k]), matrix_, 1, Point(0, 0)));
    const Rect upright =
        CImgproc::checkRectInMat(turned_, CImgproc::rectAffine(unbent_bounds(rect), matrix_));
    place.rect = between(unturned(upright.left_top()), unturned(upright.right_bottom()));
    return place;
}

Point WayBack::unbent(const Point& on_page) const {
    return Point(on_page.x, on_page.y + static_cast<int>(std::lround(bend_.shift(on_page.x, on_page.y))));
}

Rect WayBack::unbent_bounds(const Rect& rect) const {
    if (bend_.none()) return rect;
    constexpr int kSteps = 16;  // a bend has no more than a few waves
    const Point last = rect.right_bottom();
    int top = unbent(rect.left_top()).y, bottom = unbent(last).y;
    for (int k = 0; k <= kSteps; ++k) {
        const int x = rect.x + static_cast<int>(int64_t{rect.width - 1} * k / kSteps);
        top = std::min(top, unbent(Point(x, rect.y)).y);
        bottom = std::max(bottom, unbent(Point(x, last.y)).y);
    }
    return Rect(rect.x, top, rect.width, bottom - top + 1);
}

Point WayBack::unturned(const Point& point) const {
    return CImgproc::rot90ClockWise(point, turned_, quarter_turns_);
}

}  // namespace docprep
