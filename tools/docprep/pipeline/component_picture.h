// The picture that shows which components are text, and why the others are not.
#ifndef DOCPREP_COMPONENT_PICTURE_H
#define DOCPREP_COMPONENT_PICTURE_H

#include "base/drawing.h"
#include "pipeline/print.h"

namespace docprep {

/// Text is slate; what was dropped has a colour for each reason.
Colour colour_of(Fate fate);

/// The components of a binary page on white, each in the colour of its fate; those that are no text are drawn with a
/// margin, so that specks are seen when the whole page is. Labels take 4 bytes a pixel. Prints as the library does.
/// @param print  what was found on it
/// @throws as find_print
Image draw_components(const Image& binary, const Print& print);

}  // namespace docprep

#endif  // DOCPREP_COMPONENT_PICTURE_H
