// Widths and heights.
#ifndef DOCPREP_EXTENTS_H
#define DOCPREP_EXTENTS_H

#include <string>

namespace docprep {

/// Columns and rows, of a picture or of a window.
struct Extents {
    int cols = 0;
    int rows = 0;
};

/// Reads "1280x720", also with X and with spaces round it; false, with `extents` unchanged, unless both
/// are whole numbers above 0 that fit in int.
bool parse_extents(const std::string& text, Extents& extents);

/// As "1280x720".
std::string as_text(const Extents& extents);

}  // namespace docprep

#endif  // DOCPREP_EXTENTS_H
