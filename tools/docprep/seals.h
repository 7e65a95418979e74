// Red seals on a photograph.
#ifndef DOCPREP_SEALS_H
#define DOCPREP_SEALS_H

#include <cstdint>
#include <string>

#include "photo.h"
#include "text_components.h"

namespace docprep {

/// What a search for red seals gave.
struct Seals {
    Rects rects;         ///< round each connected part of the mask, larger ones first; empty: no seal
    int64_t pixels = 0;  ///< of the mask
    std::string reason;  ///< why there is none, where it is not simply that none was found

    bool found() const { return rects.size > 0; }
};

/// Searches a photo (1 or 3 channels). No seal is a result, not an error, also of a grey picture, which has
/// no red, of one that is too narrow for the detector, and of one where it marks shades that are only redder
/// than the rest. Prints as the library does.
/// @param[out] mask  of the photo's size, 255 on a seal; undefined when there is none
/// @throws CException when the search fails in any other way; std::bad_alloc
Seals find_seals(const Image& photo, Image& mask);

}  // namespace docprep

#endif  // DOCPREP_SEALS_H
