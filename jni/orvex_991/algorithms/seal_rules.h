// Internal: which red components of a photograph are seals.
#ifndef ORVEX_991_ALGORITHMS_SEAL_RULES_H
#define ORVEX_991_ALGORITHMS_SEAL_RULES_H

#include "base/scratch.h"
#include "cv_geometry.h"

namespace orvex_cv_991 {

/// A rejected component that is kept after all because it lies near an accepted one.
struct SealRescue {
    int component;
    int candidate;  // index among the accepted ones
};

struct SealSelection {
    Scratch<bool> keep;           // by component
    Scratch<Rect> candidates;     // rectangles of the accepted components, in their order
    Scratch<SealRescue> rescued;  // in component order
};

/// Accepts components by size, aspect and fill; a weaker fill counts only where no component has the
/// stronger one. Then takes back the rejected ones of which more than half lies in the neighbourhood
/// of an accepted one.
/// @param rects    bounding rectangles
/// @param pixels   of each component
/// @param image    extent of the image that they were found in
/// @param relaxed  leaves out the limits relative to the image and of the aspect
/// @return with no candidates when none is accepted
/// @throws CException code 3 without memory
SealSelection select_seals(const orvex_991::vector<Rect>& rects,
                           const orvex_991::vector<orvex_991::vector<Point>>& pixels, const Size& image,
                           bool relaxed);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_SEAL_RULES_H
