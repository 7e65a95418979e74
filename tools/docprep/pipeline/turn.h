// Which way up a page of text lies.
#ifndef DOCPREP_TURN_H
#define DOCPREP_TURN_H

#include "pipeline/text_components.h"

namespace docprep {

/// Pairs of neighbouring letters whose lower edges, and whose upper edges, lie on one line.
struct Alignment {
    int feet = 0;
    int heads = 0;
    int pairs = 0;  ///< of neighbours, on one line or not

    int all() const { return feet + heads; }
};

/// What the letters say about the page's turn.
struct TurnEvidence {
    Alignment level;     ///< of the page as it lies
    Alignment sideways;  ///< of the page turned clockwise by 90 degrees
    int degrees = 0;     ///< clockwise, what brings the page upright; 0 when that is not sure
    bool sure = false;   ///< whether there is text enough to tell

    /// How clearly: the smaller of two shares, that of the axis chosen in all pairs and that of the side chosen in
    /// the axis' pairs. 0.5 is a coin's toss; 0 without pairs.
    double confidence() const;
};

/// How letters agree, on the slope on which most of them do.
Alignment alignment_of(const TextComponents& text);

/// Rectangles on a picture of so many rows, after a clockwise turn of it by 90 degrees.
Rects turned_clockwise(const Rects& rects, int rows);

/// Lines of print have letters standing beside each other: lower edges of neighbours agree, since letters stand on
/// a line, and upper edges agree less often, since ascenders and capitals rise above the others.
/// @param components  of the page as it lies
TurnEvidence find_turn(const Rects& components, int rows, int cols);

}  // namespace docprep

#endif  // DOCPREP_TURN_H
