#include "drawing.h"

#include <algorithm>
#include <cstring>

namespace docprep {

Image in_colour(Image picture) {
    if (picture.channels == 3) return picture;
    Image colour;
    colour.mat_create(picture.rows, picture.cols, 3, 0);
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    for (ptrdiff_t i = 0; i < n; ++i) std::memset(colour.data + 3 * i, picture.data[i], 3);
    return colour;
}

int line_thickness(const Image& picture) {
    constexpr int kPixelsPerThickness = 700;
    return 1 + std::min(picture.rows, picture.cols) / kPixelsPerThickness;
}

}  // namespace docprep
