// Letters that stand side by side: what tells lines of text from marks that only look like letters.
#ifndef DOCPREP_TEXT_CHAINS_H
#define DOCPREP_TEXT_CHAINS_H

#include <vector>

#include "pipeline/text_components.h"

namespace docprep {

/// Positions among the letters, from left to right.
using Chain = std::vector<int>;

/// For each letter the position of its nearest neighbour to the right, or -1. Neighbours overlap by half of the
/// lower one's height, and at most one text height lies between them, which is wider than the space between words.
/// What is lower than two fifths of the text height, a dash or a piece of a rule, is no neighbour.
/// Of several letters with the same neighbour the nearest has it. O(n log n) for letters of a page.
std::vector<int> right_neighbours(const Rects& letters, int text_height);

/// The chains of neighbours that can be words: of at least 3 letters, together at least 2 text heights wide.
std::vector<Chain> find_chains(const Rects& letters, int text_height);

/// The letters of all chains.
Rects chained_letters(const Rects& letters, const std::vector<Chain>& chains);

}  // namespace docprep

#endif  // DOCPREP_TEXT_CHAINS_H
