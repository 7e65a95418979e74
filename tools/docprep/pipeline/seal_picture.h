// The picture that shows where the seals are.
#ifndef DOCPREP_SEAL_PICTURE_H
#define DOCPREP_SEAL_PICTURE_H

#include "base/drawing.h"

namespace docprep {

/// The colour of the line round a seal: unlike any red, and clear on paper as on print.
constexpr Colour kSealOutline = {{230, 90, 0}};

/// The photo (3 channels) in pale grey, but for the pixels of the mask, which keep their colours on yellow;
/// round them a line in kSealOutline. Prints as the library does.
/// @param mask  of the photo's size, 0 or 255; at least 3 x 3
Image draw_seals(const Image& photo, const Image& mask);

}  // namespace docprep

#endif  // DOCPREP_SEAL_PICTURE_H
