#include "statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "color.h"
#include "geometry.h"
#include "morphology.h"
#include "thresholds.h"

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

float getSharpness(const Image<Byte>& src) {
    check(!src.empty(), "!src.empty()", "getSharpness");
    check(1 == src.channels || 3 == src.channels, "1 == src.channels || 3 == src.channels", "getSharpness");
    Image<Byte> gray, mask;
    bgr2gray(src, gray);
    mask.create(src.rows, src.cols, 1, 0);
    mask.fill(255);
    return getSharpness(gray, mask);
}

float getSharpness(const Image<Byte>& src, const Image<Byte>& mask) {
    check(!src.empty(), "!src.empty()", "getSharpness");
    check(1 == src.channels, "1 == src.channels", "getSharpness");
    check(!mask.empty(), "!mask.empty()", "getSharpness");
    check(1 == mask.channels, "1 == mask.channels", "getSharpness");
    check(src.rows == mask.rows, "src.rows == mask.rows", "getSharpness");
    check(src.cols == mask.cols, "src.cols == mask.cols", "getSharpness");
    Image<Byte> gray, small_mask, dilated, diff, eq;
    bgr2gray(src, gray);
    const float scale = 15.0f / static_cast<float>(src.rows);
    const float scaled = static_cast<float>(src.cols) * scale;
    const int width = to_int(scaled);
    resize(gray, gray, Size{width, 15}, 0);
    resize(mask, small_mask, Size{width, 15}, 0);
    dilateGray(gray, dilated, Size{3, 3});
    diff.create(gray.rows, gray.cols, 1, 0);
    int maxdiff = 0;
    for (size_t i = 0; i < gray.data.size(); ++i) {
        diff.data.at(i) = static_cast<Byte>(dilated.data.at(i) - gray.data.at(i));
        maxdiff = std::max<int>(maxdiff, diff.data.at(i));
    }
    print_line("max diff: " + std::to_string(maxdiff));
    const int t = std::max(to_int(maxdiff * 0.25), 8);
    thresholdSeg(diff, diff, t);
    equalizeHist(gray, eq);
    float sum = 0;
    int count = 0;
    const int rows = gray.rows, cols = gray.cols;
    for (int r = 1; rows >= 3 && cols >= 3 && r <= rows - 2; ++r) {
        for (int c = 1; c <= cols - 2; ++c) {
            const int m = small_mask.data.at(static_cast<size_t>(r * cols + 2 * c - 1));
            if (m == 0 || diff.at(r, c) == 0) continue;
            const int d =
                eq.at(r - 1, c - 1) + eq.at(r - 1, c + 1) + eq.at(r + 1, c - 1) + eq.at(r + 1, c + 1);
            const int e = eq.at(r - 1, c) + eq.at(r + 1, c) + eq.at(r, c - 1) + eq.at(r, c + 1);
            const int value = 827 * d + 1643 * e - 9878 * eq.at(r, c);
            sum += static_cast<float>(std::abs(value));
            ++count;
        }
    }
    const float scaled_sum = sum * 0.00048828125f;
    const float score = scaled_sum / static_cast<float>(count + 1);
    char text[64];
    std::snprintf(text, sizeof text, "sharpness: %f", static_cast<double>(score));
    print_line(text);
    return score;
}

}  // namespace reference
