// Where a photograph comes from.
#ifndef DOCPREP_SOURCE_H
#define DOCPREP_SOURCE_H

#include <string>

#include "base/image.h"
#include "base/steps.h"

namespace docprep {

/// What is reported about the photograph. Extents are pixels; "stored" is before the orientation.
struct Source {
    std::string file;  ///< as the user wrote it
    std::string format;
    int stored_cols = 0;
    int stored_rows = 0;
    int orientation = 1;
    int cols = 0;
    int rows = 0;
};

/// Turns a photograph as stored upright, and notes its extents and the orientation (as in base/orientation.h).
void bring_upright(Image& photo, int orientation, Source& source, Steps& steps);

}  // namespace docprep

#endif  // DOCPREP_SOURCE_H
