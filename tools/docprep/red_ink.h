// Telling the ink of seals from print.
#ifndef DOCPREP_RED_INK_H
#define DOCPREP_RED_INK_H

#include "deskew.h"
#include "text_components.h"

namespace docprep {

/// Drops the red components within seals from the text of a page, and counts them: a seal's letters would join rows
/// that it touches. Red print elsewhere, such as a heading, stays.
/// @param photo   3 channels
/// @param seals   of the photograph's size, 255 on seals; empty: there are none, and nothing is dropped
/// @param deskew  from the photograph to the page
/// @param binary  the page's print, 255
void drop_red_ink(const Image& photo, const Image& seals, const Deskew& deskew, const Image& binary,
                  TextComponents& text);

}  // namespace docprep

#endif  // DOCPREP_RED_INK_H
