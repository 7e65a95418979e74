// Internal: the vertical bands that rectangles cover.
#ifndef ORVEX_991_TEXT_ROWS_H
#define ORVEX_991_TEXT_ROWS_H

#include <vector>

#include "cv_geometry.h"

namespace orvex_cv_991 {

/// First rows, ascending, of the maximal runs of image rows that some rectangle covers. Touching rectangles
/// (one ends at row r, the next begins at r + 1) share a band. A rectangle of height 0 or less covers
/// nothing.
///
/// O(n log n) whatever the coordinates: no memory in proportion to the rows.
/// @throws CException code 4 when a rectangle of positive height begins above row 0
std::vector<int> band_starts(const orvex_991::vector<Rect>& rects);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_TEXT_ROWS_H
