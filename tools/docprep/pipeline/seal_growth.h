// From the marks that the detector leaves on a seal to the whole seal.
#ifndef DOCPREP_SEAL_GROWTH_H
#define DOCPREP_SEAL_GROWTH_H

#include <vector>

#include "base/image.h"
#include "pipeline/paper.h"

namespace docprep {

/// What a pixel has more of red than of the next colour: -255 .. 255.
int redness(const unsigned char* bgr);

/// One seal.
struct Seal {
    orvex_cv_991::Rect rect;  ///< upright, round it, in pixels of the photograph
    Points outline;           ///< the corners of its convex hull
};

/// The seals that marks are parts of: of a seal the detector often finds the star alone, or some letters. From each
/// mark on, red that is near joins what was found before, until nothing more is near. Seals are convex; those that
/// overlap are one. A mark that nothing joins is its own seal. What is long is a heading, and none. Prints as the library does.
/// @param photo  3 channels
/// @param paper  where seals are looked for
/// @param marks  larger ones first; of more than 50 the others are left out, as no page has so many seals
std::vector<Seal> grow_seals(const Image& photo, const Paper& paper, const Rects& marks);

/// 255 on the seals.
Image mask_of(const std::vector<Seal>& seals, int rows, int cols);

}  // namespace docprep

#endif  // DOCPREP_SEAL_GROWTH_H
