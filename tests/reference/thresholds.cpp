#include "thresholds.h"
#include "statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

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

void adaptiveThreshold(Image<Byte> src, Image<Byte>& dst, int block_size, double std_ratio, bool inverse) {
    check(!src.empty(), "!src.empty()", "adaptiveThreshold");
    check(1 == src.channels, "1 == src.channels", "adaptiveThreshold");
    float mean = 0, sigma = 0;
    meanStdDev(src, mean, sigma);
    const double b = static_cast<double>(sigma) * std_ratio;
    src.flat();
    Image<Byte> out;
    out.create(src.rows, src.cols, 1, 0);
    out.data = src.data;
    const int64_t h = block_size / 2;
    for (int64_t r = 0; r < src.rows; ++r) {
        for (int64_t c = 0; c < src.cols; ++c) {
            const int64_t bottom = r + h < src.rows ? r + h + 1 : src.rows;
            const int64_t right = c + h < src.cols ? c + h + 1 : src.cols;
            int sum = 0, count = 0;
            for (int64_t y = std::max<int64_t>(r - h, 0); y < bottom; ++y)
                for (int64_t x = std::max<int64_t>(c - h, 0); x < right; ++x) {
                    sum = wrapping(static_cast<int64_t>(sum) +
                                   src.data.at(static_cast<size_t>(y * src.cols + x)));
                    ++count;
                }
            const double m = static_cast<double>(sum) / static_cast<double>(count);
            const double t = m + b;
            const size_t at = static_cast<size_t>(r * src.cols + c);
            const bool above = static_cast<double>(src.data.at(at)) > t;
            out.data.at(at) = above ? 255 : 0;
            if (inverse) out.data.at(at) = static_cast<Byte>(~out.data.at(at));
        }
    }
    std::swap(dst, out);
}

}  // namespace reference
