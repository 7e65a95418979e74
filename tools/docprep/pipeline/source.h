// Where a photograph comes from.
#ifndef DOCPREP_SOURCE_H
#define DOCPREP_SOURCE_H

#include <string>

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

}  // namespace docprep

#endif  // DOCPREP_SOURCE_H
