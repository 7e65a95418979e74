// Wiping marks off the edges of a page.
#ifndef DOCPREP_EDGE_MARKS_H
#define DOCPREP_EDGE_MARKS_H

#include "base/image.h"

namespace docprep {

/// Wipes off what leads from the picture's edge, or from where it shows no page, over dark pixels without touching the
/// text: it is the desk, a shadow, or a neighbouring page. It becomes white.
/// @param page     grey, dark print on white
/// @param outside  255 where it shows no page; empty: nowhere
/// @param text     255 where the text is
/// @return of the page's size: 0 where something was wiped off
Image wipe_edge_marks(Image& page, const Image& outside, const Image& text);

}  // namespace docprep

#endif  // DOCPREP_EDGE_MARKS_H
