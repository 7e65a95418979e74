// Dark print on light paper as a binary picture.
#ifndef DOCPREP_BINARISE_H
#define DOCPREP_BINARISE_H

#include "photo.h"

namespace docprep {

/// Dark pixels of a gray picture become 255, the others 0. Prints as the library does.
/// @return Otsu's level, the brightest that counts as dark
int binarise(const Image& gray, Image& binary);

}  // namespace docprep

#endif  // DOCPREP_BINARISE_H
