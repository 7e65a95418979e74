// The level page that a photograph becomes.
#ifndef DOCPREP_PAGE_H
#define DOCPREP_PAGE_H

#include <string>
#include <vector>

#include "binarise.h"
#include "deskew.h"
#include "paper.h"
#include "soft_ink.h"

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
    Image
        print;  ///< 255 where the page has print, and beyond the photograph, so that what the photograph's border
                ///< cuts touches the page's, as text_components.h expects
    Ink ink;
};

/// Makes the page. Prints as the library does.
/// @param gray         the photograph
/// @param binary       its print by `how`: taken where the page is the photograph, so that nothing is done twice
/// @param how          how a binary page is made
/// @param text_height  0: unknown
Page make_page(const Image& gray, const Image& binary, const Binarisation& how, PageKind kind,
               const Deskew& deskew, const Paper& paper, int text_height);

}  // namespace docprep

#endif  // DOCPREP_PAGE_H
