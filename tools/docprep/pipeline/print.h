// What is printed on a page.
#ifndef DOCPREP_PRINT_H
#define DOCPREP_PRINT_H

#include <string>

#include "base/image.h"
#include "pipeline/text_components.h"

namespace docprep {

/// The components of a binary page, and which of them are text.
struct Print {
    Rects components;
    TextComponents text;
};

/// Finds the components of what is 255, the rest being 0, and the text among them. Prints
/// as the library does.
/// @param file  the photograph, for messages
/// @throws Failure for noise that would take too much memory
Print find_print(const std::string& file, const Image& binary);

}  // namespace docprep

#endif  // DOCPREP_PRINT_H
