// Internal: the vertical bands that rectangles cover.
#ifndef ORVEX_991_ALGORITHMS_TEXT_ROWS_H
#define ORVEX_991_ALGORITHMS_TEXT_ROWS_H

#include <vector>

#include "cv_geometry.h"
#include "util_vector.h"

namespace orvex_cv_991 {

/// Bands are the maximal runs of image rows that some rectangle covers, counted from the top.
/// Touching rectangles (one ends at row r, the next begins at r + 1) share a band. A rectangle of
/// height 0 or less covers nothing.
struct Bands {
    int count = 0;
    std::vector<int> of;  ///< by rectangle: the last band that begins at its top or above, or -1
};

/// No memory in proportion to the rows.
/// @throws CException code 4 when a rectangle of positive height begins above row 0
Bands find_bands(const orvex_991::vector<Rect>& rects);

/// Indices of the rectangles by x; those of one x keep their order.
std::vector<int> order_by_x(const orvex_991::vector<Rect>& rects);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_TEXT_ROWS_H
