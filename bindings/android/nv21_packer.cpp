#include "nv21_packer.h"

#include <cstring>

namespace orvex_android {

namespace {

void copy_row(const uint8_t* from, ptrdiff_t pixel_stride, int cols, uint8_t* out) {
    if (pixel_stride == 1) {
        std::memcpy(out, from, static_cast<size_t>(cols));
        return;
    }
    for (ptrdiff_t col = 0; col < cols; ++col) out[col] = from[col * pixel_stride];
}

}  // namespace

void pack_nv21(const Plane& y, const Plane& u, const Plane& v, int rows, int cols, uint8_t* out) {
    for (ptrdiff_t row = 0; row < rows; ++row, out += cols)
        copy_row(y.data + row * y.row_stride, y.pixel_stride, cols, out);
    for (ptrdiff_t row = 0; row < (rows + 1) / 2; ++row, out += cols) {
        const uint8_t* const v_row = v.data + row * v.row_stride;
        const uint8_t* const u_row = u.data + row * u.row_stride;
        for (ptrdiff_t col = 0; col < cols / 2; ++col) {
            out[2 * col] = v_row[col * v.pixel_stride];
            out[2 * col + 1] = u_row[col * u.pixel_stride];
        }
    }
}

}  // namespace orvex_android
