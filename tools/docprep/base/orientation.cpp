#include "base/orientation.h"

#include <algorithm>
#include <cstddef>

namespace docprep {

void apply_orientation(Image& image, int orientation) {
    if (orientation <= 1 || orientation > 8) return;
    const bool transposed = orientation >= 5;
    const ptrdiff_t channels = image.channels;
    const ptrdiff_t rows = image.rows;
    const ptrdiff_t cols = image.cols;
    Image upright;
    upright.mat_create(transposed ? image.cols : image.rows, transposed ? image.rows : image.cols,
                       image.channels, 0);

    // Where a step down and a step right in the upright picture lead in the stored one, and
    // where (0, 0) lies.
    const bool from_right = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    const bool from_bottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    const ptrdiff_t row_step = (from_bottom ? -cols : cols) * channels;
    const ptrdiff_t col_step = from_right ? -channels : channels;
    const ptrdiff_t down = transposed ? col_step : row_step;
    const ptrdiff_t right = transposed ? row_step : col_step;
    const unsigned char* const origin =
        image.data + ((from_bottom ? rows - 1 : 0) * cols + (from_right ? cols - 1 : 0)) * channels;

    unsigned char* to = upright.data;
    for (ptrdiff_t row = 0; row < upright.rows; ++row) {
        for (ptrdiff_t col = 0; col < upright.cols; ++col) {
            const unsigned char* const from = origin + row * down + col * right;
            to = std::copy_n(from, channels, to);
        }
    }
    image.swap(upright);
}

}  // namespace docprep
