#include "formats/samples.h"

#include <algorithm>
#include <utility>

namespace docprep {

namespace {

/// Replaces samples and their alpha by blend(sample, alpha).
template <class Blend>
Image without_alpha(const Image& image, const Blend& blend) {
    const int channels = image.channels - 1;
    Image out;
    out.mat_create(image.rows, image.cols, channels, 0);
    const int64_t n = static_cast<int64_t>(image.rows) * image.cols;
    const unsigned char* in = image.data;
    unsigned char* to = out.data;
    for (int64_t i = 0; i < n; ++i, in += channels + 1, to += channels) {
        const int alpha = in[channels];
        for (int k = 0; k < channels; ++k) to[k] = static_cast<unsigned char>(blend(in[k], alpha));
    }
    return out;
}

}  // namespace

void swap_red_and_blue(unsigned char* pixels, size_t n, int channels) {
    for (size_t i = 0; i < n; ++i, pixels += channels) std::swap(pixels[0], pixels[2]);
}

void bgr_from_cmyk(const unsigned char* cmyk, unsigned char* bgr, size_t n, unsigned no_ink) {
    const unsigned flip = 255 - no_ink;
    for (size_t i = 0; i < n; ++i, cmyk += 4, bgr += 3) {
        const unsigned white = cmyk[3] ^ flip;
        for (int k = 0; k < 3; ++k)
            bgr[2 - k] = static_cast<unsigned char>(((cmyk[k] ^ flip) * white + 127) / 255);
    }
}

Image on_white(const Image& image) {
    return without_alpha(
        image, [](int sample, int alpha) { return (sample * alpha + 255 * (255 - alpha) + 127) / 255; });
}

Image multiplied_on_white(const Image& image) {
    return without_alpha(image, [](int sample, int alpha) { return std::min(sample + 255 - alpha, 255); });
}

}  // namespace docprep
