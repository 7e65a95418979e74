// The level page that a photograph becomes.
#ifndef DOCPREP_PAGE_H
#define DOCPREP_PAGE_H

#include <string>
#include <vector>

#include "base/image.h"
#include "pipeline/binarise.h"
#include "pipeline/deskew.h"
#include "pipeline/paper.h"
#include "pipeline/soft_ink.h"

namespace docprep {

enum class PageKind {
    kSoft,    ///< lit evenly, strokes with soft edges
    kBinary,  ///< black on white
    kGray     ///< as photographed
};

/// The names of the kinds, by their values.
std::vector<std::string> page_kind_names();

/// A level page: print is dark; white where it does not show the photograph, and where that shows no paper.
struct Page {
    Image picture;
    /// 255 on the page's print, and beyond the photograph, so that what the photograph's border cuts touches the
    /// page's, as text_components.h expects.
    Image print;
    Ink ink;
    Image light;  ///< of a soft or grey page: what was on it, on a reduced copy
};

/// The resolution that a page states, at which its text has a common size; recognisers guess it otherwise, and guess
/// wrong where a page has marks besides its text.
int dots_per_inch(int text_height);

/// What the photograph tells of its page.
struct PageSource {
    const Image& gray;        ///< the photograph
    const Image& clean;       ///< the same without its seals; empty: it has none
    const Image& binary;      ///< its print by `how`, seals included
    const Binarisation& how;  ///< how a binary page is made
    const Deskew& deskew;
    const Paper& paper;
    const Rects& letters;  ///< chained ones
    int text_height;       ///< 0: unknown
};

/// Makes the page. Prints as the library does.
Page make_page(const PageSource& source, PageKind kind);

}  // namespace docprep

#endif  // DOCPREP_PAGE_H
