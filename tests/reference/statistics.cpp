#include "statistics.h"

#include <algorithm>
#include <cmath>

namespace reference {

void equalizeHist(Image<Byte> src, Image<Byte>& dst) {
    check(!src.empty(), "!src.empty()", "equalizeHist");
    check(1 == src.channels, "1 == src.channels", "equalizeHist");
    dst.create(src.rows, src.cols, 1, 0);
    const int n = src.flat();
    int64_t count[256] = {};
    for (int i = 0; i < n; ++i) ++count[src.data.at(static_cast<size_t>(i))];
    const float scale = 1.0f / static_cast<float>(n);
    float p[256], c[256];
    for (int k = 0; k < 256; ++k) p[k] = static_cast<float>(count[k]) * scale;
    c[0] = p[0];
    for (int k = 1; k < 256; ++k) c[k] = c[k - 1] + p[k];
    int lut[256];
    for (int k = 0; k < 256; ++k) {
        const double spread = static_cast<double>(c[k]) * 255.0;
        lut[k] = to_int(spread + 0.5);
    }
    for (int i = 0; i < n; ++i)
        dst.data.at(static_cast<size_t>(i)) = static_cast<Byte>(lut[src.data.at(static_cast<size_t>(i))]);
}

void hist(const Image<Byte>& src, List<float>& h) {
    h.clear();
    check(!src.empty(), "!src.empty()", "hist");
    check(1 == src.channels, "1 == src.channels", "hist");
    const int n = src.counted();
    int64_t count[256] = {};
    for (int i = 0; i < n; ++i) ++count[src.data.at(static_cast<size_t>(i))];
    const float guarded = static_cast<float>(n) + 1.1920929e-7f;
    const float scale = 1.0f / guarded;
    for (int k = 0; k < 256; ++k) h.push_back(static_cast<float>(count[k]) * scale);
}

void meanStdDev(const Image<Byte>& src, float& mean, float& stddev) {
    mean = 0;
    stddev = 0;
    if (src.rows == 0 || src.cols == 0) return;
    const int n = src.counted();
    double sum = 0, sumsq = 0;
    for (int i = 0; i < n; ++i) {
        const float v = static_cast<float>(src.data.at(static_cast<size_t>(i)));
        const float square = v * v;
        sum += static_cast<double>(v);
        sumsq += static_cast<double>(square);
    }
    mean = static_cast<float>(sum / n);
    const float squared_mean = mean * mean;
    stddev = sqrtf(static_cast<float>(sumsq / n - static_cast<double>(squared_mean)));
}

Byte minVal(const Image<Byte>& src) {
    check(!src.empty(), "!src.empty()", "minVal");
    check(1 == src.channels, "1 == src.channels", "minVal");
    if (src.counted() < 1) return 255;
    return std::min<Byte>(255, src.data.at(0));
}

Byte maxVal(const Image<Byte>& src) {
    check(!src.empty(), "!src.empty()", "maxVal");
    check(1 == src.channels, "1 == src.channels", "maxVal");
    if (src.counted() < 1) return 255;
    return std::max<Byte>(255, src.data.at(0));
}

int countNonZero(const Image<Byte>& src) {
    const int n = src.counted();
    int count = 0;
    for (int i = 0; i < n; ++i) count += src.data.at(static_cast<size_t>(i)) != 0;
    return count;
}

float countNonZeroRate(const Image<Byte>& src) {
    const int count = countNonZero(src);
    return static_cast<float>(count) / static_cast<float>(src.counted());
}

}  // namespace reference
