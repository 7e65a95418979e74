#include "algorithms/quarter_turn.h"

#include <cstddef>
#include <cstring>

namespace orvex_cv_991 {

void turn_image(const Mat<unsigned char>& src, int turns, bool mirrored, Isa isa, Mat<unsigned char>& out) {
    const ptrdiff_t rows = src.rows, cols = src.cols, pixel = src.channels, stride = cols * pixel;
    if (turns % 2 == 1) {
        // A clockwise turn reads each source column from below, an anticlockwise one from above; the columns
        // come from the right in an anticlockwise turn, and mirroring reverses them.
        const bool upward = turns == 1;
        kernels::turn_pixels(isa, src.data, src.rows, src.cols, src.channels, upward, mirrored == upward,
                             out.data);
        return;
    }
    const bool upside_down = turns == 2;
    const bool reversed = mirrored != upside_down;
    for (ptrdiff_t row = 0; row < rows; ++row) {
        const unsigned char* const from = src.data + (upside_down ? rows - 1 - row : row) * stride;
        if (reversed)
            kernels::reverse_pixels(isa, from, out.data + row * stride, src.channels, cols);
        else
            std::memcpy(out.data + row * stride, from, static_cast<size_t>(stride));
    }
}

}  // namespace orvex_cv_991
