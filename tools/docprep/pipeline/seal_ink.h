// Taking the ink of seals off a page.
#ifndef DOCPREP_SEAL_INK_H
#define DOCPREP_SEAL_INK_H

#include "base/image.h"
#include "pipeline/seals.h"

namespace docprep {

/// The grey photograph as if it had no seals: their letters would join rows that they touch, and nothing reads print
/// below them. Black print below a seal stays, and so does red print elsewhere, such as a heading.
///
/// What a pixel of a seal has more of red than paper has tells how much ink covers it, and how much brighter it would
/// be without. Prints as the library does.
/// @param photo  3 channels
/// @param mask   of the photograph's size, 255 on the seals
Image without_seals(const Image& photo, const Image& gray, const Seals& seals, const Image& mask);

}  // namespace docprep

#endif  // DOCPREP_SEAL_INK_H
