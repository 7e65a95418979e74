#include "thresholds.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace reference {

namespace {
constexpr float kEpsilon = 1.1920929e-7f;
}

float pow(float base, int exponent) {
    if (exponent == 0) return base;
    const int64_t n = std::llabs(static_cast<long long>(exponent));
    float result = base;
    for (int64_t k = 1; k < n; ++k) result = result * base;
    if (exponent > 0) return result;
    const float guarded = result + kEpsilon;
    return 1.0f / guarded;
}

int otsu(const Image<Byte>& src, const Image<Byte>& mask) {
    check(1 == src.channels, "1 == src.channels", "otsu");
    check(src.rows == mask.rows, "src.rows == mask.rows", "otsu");
    check(src.cols == mask.cols, "src.cols == mask.cols", "otsu");
    const int n = src.counted();
    mask.counted();
    int64_t count[256] = {};
    int selected = 0;
    for (int i = 0; i < n; ++i) {
        if (mask.data.at(static_cast<size_t>(i)) == 0) continue;
        ++count[src.data.at(static_cast<size_t>(i))];
        ++selected;
    }
    const float r = 1.0f / static_cast<float>(selected);
    float p[256];
    for (int k = 0; k < 256; ++k) p[k] = static_cast<float>(count[k]) * r;
    float total = 0.0f;
    for (int k = 0; k < 256; ++k) {
        const float term = static_cast<float>(k) * p[k];
        total = total + term;
    }
    float w0 = 0.0f, mu = 0.0f, best = 0.0f;
    int t = 0;
    for (int k = 0; k < 256; ++k) {
        const float term = static_cast<float>(k) * p[k];
        mu = term + mu;
        w0 = w0 + p[k];
        const float w1 = 1.0f - w0;
        const float dark = mu / (w0 + kEpsilon);
        const float bright = (total - mu) / (w1 + kEpsilon);
        const float d = dark - bright;
        const float weights = w1 * w0;
        const float sigma = pow(d, 2) * weights;
        if (sigma > best) t = k;
        best = std::fmax(sigma, best);
    }
    return t;
}

int otsu(const Image<Byte>& src) {
    Image<Byte> mask;
    mask.create(src.rows, src.cols, 1, 0);
    mask.fill(255);
    return otsu(src, mask);
}

void thresholdSeg(Image<Byte> src, Image<Byte>& dst, int threshold) {
    check(!src.empty(), "!src.empty()", "thresholdSeg");
    check(1 == src.channels, "1 == src.channels", "thresholdSeg");
    check(threshold >= 0 && threshold < 256, "threshold >= 0 && threshold < 256", "thresholdSeg");
    if (dst.cols != src.cols || dst.rows != src.rows || !dst.allocated) dst.create(src.rows, src.cols, 1, 0);
    src.flat();
    dst.flat();
    for (int i = 0; i < src.rows * src.cols; ++i)
        dst.data.at(static_cast<size_t>(i)) = src.data.at(static_cast<size_t>(i)) < threshold ? 0 : 255;
    print_line("thresholdSeg cost time: #ms");
}

int threshold(Image<Byte> src, Image<Byte>& dst, int low_th, int high_th, int type, const Image<Byte>& mask) {
    if ((type & 8) == 0) throw Failure{1, "only support otsu binary mode"};
    if (low_th != 0 || high_th != 255)
        throw Failure{1, "currently low_th must be 0  and high_th must be 255"};
    const bool invert = (type & 1) != 0;
    if (mask.rows != 0 && mask.cols != 0) {
        const int t = otsu(src, mask);
        const int n = src.counted();
        if (n >= 1) dst.need(n);
        for (int i = 0; i < n; ++i) {
            const size_t at = static_cast<size_t>(i);
            if (mask.data.at(at) == 0)
                dst.data.at(at) = 0;
            else
                dst.data.at(at) = ((src.data.at(at) < t) != invert) ? 0 : 255;
        }
        return t;
    }
    const int t = otsu(src);
    thresholdSeg(src, dst, t);
    if (invert) dst.complement();
    return t;
}

}  // namespace reference
