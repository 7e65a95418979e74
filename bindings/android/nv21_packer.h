// A camera frame of three planes as one NV21 frame.
#ifndef ORVEX_ANDROID_NV21_PACKER_H
#define ORVEX_ANDROID_NV21_PACKER_H

#include <cstddef>
#include <cstdint>

namespace orvex_android {

/// Sample (row, col) is data[row * row_stride + col * pixel_stride].
struct Plane {
    const uint8_t* data;
    ptrdiff_t row_stride;    ///< bytes
    ptrdiff_t pixel_stride;  ///< bytes
};

/// Writes rows x cols bytes of luma, then a (V, U) pair for each 2 x 2 block, row by row.
///
/// @param[in]  y    rows x cols
/// @param[in]  u    half of both extents, rounded up
/// @param[in]  v    as u; may be interleaved with it
/// @param[in]  cols even
/// @param[out] out  cols * (rows + (rows + 1) / 2) bytes that none of the planes shares
void pack_nv21(const Plane& y, const Plane& u, const Plane& v, int rows, int cols, uint8_t* out);

}  // namespace orvex_android

#endif  // ORVEX_ANDROID_NV21_PACKER_H
