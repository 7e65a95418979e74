// Telling the ink of seals from print.
#ifndef DOCPREP_RED_INK_H
#define DOCPREP_RED_INK_H

#include "photo.h"
#include "text_components.h"

namespace docprep {

/// Drops components in red ink from the text of a page, and counts them: the letters of a seal would join
/// rows that it touches. Where red ones are more than a third, red is the colour of print, and they stay.
/// @param page    as photographed; nothing is dropped unless it has 3 channels
/// @param binary  the page's print, 255, of the same size
void drop_red_ink(const Image& page, const Image& binary, TextComponents& text);

}  // namespace docprep

#endif  // DOCPREP_RED_INK_H
