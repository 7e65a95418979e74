#include "pipeline/source.h"

#include "base/orientation.h"

namespace docprep {

void bring_upright(Image& photo, int orientation, Source& source, Steps& steps) {
    source.stored_cols = photo.cols;
    source.stored_rows = photo.rows;
    source.orientation = orientation;
    steps.run("orient", [&] { apply_orientation(photo, orientation); });
    source.cols = photo.cols;
    source.rows = photo.rows;
}

}  // namespace docprep
