// The picture that shows what the rows are.
#ifndef DOCPREP_ROW_PICTURE_H
#define DOCPREP_ROW_PICTURE_H

#include "base/drawing.h"
#include "base/image.h"
#include "pipeline/text_rows.h"

namespace docprep {

/// The colour of a row: of rows that follow each other very different ones, none too pale for white paper.
Colour row_colour(int row);

/// The page as photographed (1 or 3 channels) in colour, each row's rectangles outlined in the row's colour.
/// Lines lie outside the rectangles, so that the text stays legible.
Image draw_rows(Image page, const TextRows& rows);

}  // namespace docprep

#endif  // DOCPREP_ROW_PICTURE_H
