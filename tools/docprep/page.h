// The level binary page that a photograph becomes.
#ifndef DOCPREP_PAGE_H
#define DOCPREP_PAGE_H

#include "binarise.h"
#include "deskew.h"

namespace docprep {

/// A binary page: print is 255.
struct Page {
    Image binary;
    Image inside;  ///< 1 where the page shows the photograph, 0 beyond it; empty: it does everywhere
};

/// Binarises a photograph and makes it level; beyond the photograph the page is 255, so that what the
/// photograph's border cuts touches the page's, as text_components.h expects. Prints as the library does.
/// @param gray  the photograph; `how` was measured on it
Page level_page(const Image& gray, const Binarisation& how, const Deskew& deskew);

/// The page for people and recognisers: print is black on white, and nothing is beyond the photograph.
Image black_on_white(Page page);

}  // namespace docprep

#endif  // DOCPREP_PAGE_H
