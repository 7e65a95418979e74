// What the readers of several formats do to samples.
#ifndef DOCPREP_SAMPLES_H
#define DOCPREP_SAMPLES_H

#include <cstddef>

#include "base/image.h"

namespace docprep {

/// 0 .. `most` as 0 .. 255, rounded; most <= 65535.
constexpr unsigned char to_8_bits(unsigned sample, unsigned most) {
    return static_cast<unsigned char>((sample * 255 + most / 2) / most);
}

/// Exchanges the first and the third channel of n pixels (B, G, R from R, G, B and back).
/// @param channels  3 or 4
void swap_red_and_blue(unsigned char* pixels, size_t n, int channels);

/// Ink to light, n pixels of C, M, Y, K to B, G, R; not in place.
/// @param no_ink  what a sample without ink is: 0 or 255
void bgr_from_cmyk(const unsigned char* cmyk, unsigned char* bgr, size_t n, unsigned no_ink);

/// Lays an image whose last channel is alpha on white.
Image on_white(const Image& image);

/// As on_white where the other channels have been multiplied by alpha already.
Image multiplied_on_white(const Image& image);

}  // namespace docprep

#endif  // DOCPREP_SAMPLES_H
