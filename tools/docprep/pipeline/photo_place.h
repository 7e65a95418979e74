// Where things on a page lie on the photograph.
#ifndef DOCPREP_PHOTO_PLACE_H
#define DOCPREP_PHOTO_PLACE_H

#include <array>

#include "cv_geometry.h"
#include "pipeline/deskew.h"

namespace docprep {

/// A rectangle of the page on the photograph.
struct PhotoPlace {
    /// Its corner pixels in the page's order: top left, top right, bottom right, bottom left.
    std::array<orvex_cv_991::Point, 4> corners;
    /// The upright rectangle round it.
    orvex_cv_991::Rect rect;
};

/// The way from a level page back to the photograph before it was turned.
class WayBack {
 public:
    /// @param turned  extents of the photograph that was deskewed, after `quarter_turns` clockwise turns
    WayBack(const Deskew& deskew, const orvex_cv_991::Size& turned, int quarter_turns);

    /// Both corners and rectangle are clipped into the photograph.
    PhotoPlace of(const orvex_cv_991::Rect& rect) const;

 private:
    orvex_cv_991::Point unturned(const orvex_cv_991::Point& point) const;

    Deskew deskew_;
    orvex_cv_991::Size turned_;
    int quarter_turns_;
};

}  // namespace docprep

#endif  // DOCPREP_PHOTO_PLACE_H
