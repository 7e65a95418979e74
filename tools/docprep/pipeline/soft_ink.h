// A page as if it were lit evenly: paper white, ink dark, and the edges of strokes as soft as they were photographed.
#ifndef DOCPREP_SOFT_INK_H
#define DOCPREP_SOFT_INK_H

#include "base/image.h"

namespace docprep {

/// What evening the light of a page measured; levels are those of a page whose paper is 255.
struct Ink {
    int level = 0;      ///< a tenth of print is darker
    int threshold = 0;  ///< what is lighter is paper, wherever it lies
};

/// The grey page evenly lit: print is below 128, paper above. Prints as the library does.
///
/// The light is what is left of a small copy once all that is narrower than 3 text heights is filled with what
/// surrounds it. The page divided by it has paper of 255. Print is darker than its surroundings by 30 at least,
/// and darker than levels half-way between ink and paper; contrast is spread so that ink becomes black and paper white.
/// @param paper        of the page's size: what is not 0 is measured; empty: everything is
/// @param text_height  in pixels; 0: unknown
/// @param[out] light   on the reduced copy; null: not wanted
Image with_soft_ink(const Image& page, const Image& paper, int text_height, Ink& ink, Image* light = nullptr);

}  // namespace docprep

#endif  // DOCPREP_SOFT_INK_H
