// The rows of text on a page.
#ifndef DOCPREP_TEXT_ROWS_H
#define DOCPREP_TEXT_ROWS_H

#include <vector>

#include "pipeline/photo_place.h"
#include "pipeline/text_chains.h"

namespace docprep {

using Points = orvex_991::vector<orvex_cv_991::Point>;

/// A row of text. All but `on_photo` is in pixels of the page. The hull of a row of more than some 32,000
/// pixels is wrong, see CImgproc::convexHull.
struct TextRow {
    Rects components;             ///< from left to right
    orvex_cv_991::Rect rect;      ///< the upright rectangle round them
    std::vector<Place> baseline;  ///< what their letters stand on, from left to right; at least 2 points
    Points hull;                  ///< corners of the convex hull of their corner pixels
    orvex_cv_991::RotatedRect min_area;  ///< round the hull; without corners where that has no area
    PhotoPlace on_photo;                 ///< `rect` on the photograph
};

using TextRows = std::vector<TextRow>;

/// The smallest upright rectangle round all of them; empty for none.
orvex_cv_991::Rect bounding_rect(const Rects& rects);

/// Groups letters into rows from top to bottom. Prints as the library does.
///
/// Rows are made of chains, so that marks without neighbours form none, and lines may bend. A chain goes on with the
/// next one to its right that stands on the same line, however far away, but not across the space between columns:
/// where at least 3 lines have wide text on both sides. Letters without a chain join the row that they are beside.
TextRows find_rows(const Rects& letters, int text_height, const WayBack& way_back);

}  // namespace docprep

#endif  // DOCPREP_TEXT_ROWS_H
