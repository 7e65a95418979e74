// Red seals on a photograph.
#ifndef DOCPREP_SEALS_H
#define DOCPREP_SEALS_H

#include <cstdint>
#include <string>
#include <vector>

#include "base/image.h"
#include "pipeline/seal_growth.h"

namespace docprep {

/// What a search for red seals gave.
struct Seals {
    std::vector<Seal> seals;  ///< larger ones first
    int64_t pixels = 0;       ///< that they cover
    Rects marks;  ///< what the detector found of them: round each connected part, larger ones first
    int64_t mark_pixels = 0;  ///< of the marks
    std::string reason;       ///< why there is none, where it is not simply that none was found

    bool found() const { return !seals.empty(); }
};

/// Searches a photo (1 or 3 channels). No seal is a result, not an error, also of a grey picture, which has
/// no red, of one that is too narrow for the detector, and of one where it marks shades that are only redder
/// than the rest. Prints as the library does.
/// @param paper  marks beside it are none of a seal
/// @param[out] mask  of the photo's size, 255 on a seal; empty when there is none
/// @throws CException when the search fails in any other way; std::bad_alloc
Seals find_seals(const Image& photo, const Paper& paper, Image& mask);

}  // namespace docprep

#endif  // DOCPREP_SEALS_H
