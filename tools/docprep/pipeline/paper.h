// The sheet of paper that a page of text is on.
#ifndef DOCPREP_PAPER_H
#define DOCPREP_PAPER_H

#include "base/drawing.h"
#include "pipeline/deskew.h"
#include "pipeline/text_components.h"

namespace docprep {

/// Where a photograph shows the paper.
struct Paper {
    Image mask;      ///< 255 on paper, on a copy of the photograph; empty: everywhere
    Points outline;  ///< corners of its convex hull in pixels of the photograph

    bool everywhere() const { return mask.empty(); }
    /// Whether the middle of a rectangle of the photograph is on paper.
    bool holds(const orvex_cv_991::Rect& rect, const Image& photo) const;
};

/// What the paper's outline covers of the page, upright.
orvex_cv_991::Rect paper_on_page(const Paper& paper, const Deskew& deskew);

/// The paper is what surrounds the letters without a step in brightness; desk and neighbouring pages are not.
/// Everywhere, where letters would be lost otherwise. Prints as the library does.
/// @param gray  the photograph
/// @param letters  chained ones, see text_chains.h
Paper find_paper(const Image& gray, const Rects& letters, int text_height);

}  // namespace docprep

#endif  // DOCPREP_PAPER_H
