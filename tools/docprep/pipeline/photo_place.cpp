#include "pipeline/photo_place.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// The pixel that a place is on.
Point nearest(const Place& place) {
    return Point(static_cast<int>(std::lround(place.x)), static_cast<int>(std::lround(place.y)));
}

/// The rectangle with these two pixels in opposite corners.
Rect between(const Point& a, const Point& b) {
    return Rect(std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x) + 1, std::abs(a.y - b.y) + 1);
}

}  // namespace

WayBack::WayBack(const Deskew& deskew, const Size& turned, int quarter_turns)
    : deskew_(deskew), turned_(turned), quarter_turns_(quarter_turns) {}

PhotoPlace WayBack::of(const Rect& rect) const {
    const double left = rect.x, right = rect.right_bottom().x;
    const double top = rect.y, bottom = rect.right_bottom().y;
    const Place on_page[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    PhotoPlace place;
    for (size_t k = 0; k < place.corners.size(); ++k)
        place.corners[k] = unturned(nearest(deskew_.to_photo(on_page[k])));
    constexpr int kSteps = 16;  // a bend has no more than a few waves
    Bounds bounds;
    for (int k = 0; k <= kSteps; ++k)
        for (const double y : {top, bottom})
            bounds.add(deskew_.to_photo({left + (right - left) * k / kSteps, y}));
    const Rect upright = CImgproc::checkRectInMat(
        turned_, between(nearest({bounds.left, bounds.top}), nearest({bounds.right, bounds.bottom})));
    place.rect = between(unturned(upright.left_top()), unturned(upright.right_bottom()));
    return place;
}

Point WayBack::unturned(const Point& point) const {
    return CImgproc::rot90ClockWise(point, turned_, quarter_turns_);
}

}  // namespace docprep
