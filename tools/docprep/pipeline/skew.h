// How far the rows of text on a photograph lie from level.
#ifndef DOCPREP_SKEW_H
#define DOCPREP_SKEW_H

#include "pipeline/text_components.h"

namespace docprep {

/// Rows that lie further from level are taken for something else than a page held askew.
constexpr double kMostSkew = 15;

/// The angle in degrees by which rows of text fall to the right; turning the picture anticlockwise by it
/// makes them level. 0 for too little text, and where no angle up to kMostSkew brings it into rows.
///
/// Letters of a row stand on one line: seen along the rows, the feet of all components fall onto few places.
/// The angle is the one with the most unequal spread.
double estimate_skew(const TextComponents& text);

}  // namespace docprep

#endif  // DOCPREP_SKEW_H
