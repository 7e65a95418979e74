// Which components of a binary page are text.
#ifndef DOCPREP_TEXT_COMPONENTS_H
#define DOCPREP_TEXT_COMPONENTS_H

#include "cv_geometry.h"

namespace docprep {

using Rects = orvex_991::vector<orvex_cv_991::Rect>;

/// What the rule made of the components: those it kept, and how many it dropped for which reason.
struct TextComponents {
    Rects kept;           ///< in the order given
    int text_height = 0;  ///< what the rule measures with, in pixels; 0 when all touch the border
    int border = 0;
    int tall = 0;
    int wide = 0;
    int specks = 0;
};

/// What a component is taken for.
enum class Fate { kText, kBorder, kTall, kWide, kSpeck };

/// By the rule of select_text, whose text height it takes.
Fate fate_of(const orvex_cv_991::Rect& component, int text_height, int rows, int cols);

/// Keeps the rectangles that can be letters or words. The rule has no size in pixels:
/// - Components that touch the picture's border (desk, shadow, neighbouring page) are dropped.
/// - The text height is the median height of the others, each weighing as much as it is high: half of
///   all heights summed up belong to components that are lower. So a thousand specks do not outweigh
///   a line of letters.
/// - Dropped as well: taller than 3 text heights (frames, pictures, seals), wider than 20 (rules), and
///   specks, whose longer side is below half a text height.
///
/// What a row must not contain is anything tall, since it joins all rows that it passes. Hence full stops and
/// the dots of i go with the specks: losing them does not move a row, keeping noise of their size does.
/// @param rows,cols  the picture's extents
TextComponents select_text(const Rects& components, int rows, int cols);

}  // namespace docprep

#endif  // DOCPREP_TEXT_COMPONENTS_H
