#include "photo_place.h"

#include <algorithm>
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
    : matrix_(rounding_inverse(deskew.matrix)), turned_(turned), quarter_turns_(quarter_turns) {}

PhotoPlace WayBack::of(const Rect& rect) const {
    const Point first = rect.left_top();
    const Point last = rect.right_bottom();
    const Point on_page[] = {first, Point(last.x, first.y), last, Point(first.x, last.y)};
    PhotoPlace place;
    for (size_t k = 0; k < place.corners.size(); ++k)
        place.corners[k] = unturned(CImgproc::pointAffine(on_page[k], matrix_, 1, Point(0, 0)));
    const Rect upright = CImgproc::checkRectInMat(turned_, CImgproc::rectAffine(rect, matrix_));
    place.rect = between(unturned(upright.left_top()), unturned(upright.right_bottom()));
    return place;
}

Point WayBack::unturned(const Point& point) const {
    return CImgproc::rot90ClockWise(point, turned_, quarter_turns_);
}

}  // namespace docprep
