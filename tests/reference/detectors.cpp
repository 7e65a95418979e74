#include "detectors.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "color.h"
#include "components.h"
#include "geometry.h"
#include "morphology.h"
#include "statistics.h"
#include "thresholds.h"

namespace reference {

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

void saliencyDetect(Image<Byte> src, Image<Byte>& dst, const Image<Byte>& mask, List<Byte>& level_saliency) {
    check(!src.empty(), "!src.empty()", "saliencyDetect");
    check(!mask.empty(), "!mask.empty()", "saliencyDetect");
    if (src.rows != mask.rows || src.cols != mask.cols || src.channels != 1 || mask.channels != 1)
        throw Failure{1, "saliency detection input format error"};
    dst.create(src.rows, src.cols, src.channels, 0);
    dst.data = src.data;
    dst.flat();
    mask.flat();
    int64_t count[256] = {}, selected = 0;
    for (int i = 0; i < src.rows * src.cols; ++i) {
        if (mask.data.at(static_cast<size_t>(i)) == 0) continue;
        ++count[src.data.at(static_cast<size_t>(i))];
        ++selected;
    }
    const float total = static_cast<float>(selected) + 1.1920929e-7f;
    const float r = 1.0f / total;
    float p[256], s[256];
    for (int k = 0; k < 256; ++k) p[k] = static_cast<float>(count[k]) * r;
    float smallest = 3.4028235e38f, largest = 0.0f;
    for (int g = 0; g < 256; ++g) {
        float sum = 0.0f;
        for (int k = 0; k < 256; ++k) {
            const float term = static_cast<float>(std::abs(g - k)) * p[k];
            sum = sum + term;
        }
        s[g] = sum;
        if (sum < smallest) smallest = sum;
        if (sum > largest) largest = sum;
    }
    Byte table[256];
    const float range = largest - smallest;
    for (int g = 0; g < 256; ++g) {
        if (1.1920929e-7f > range) {
            table[g] = 128;
        } else {
            const float share = (s[g] - smallest) / range;
            table[g] = static_cast<Byte>(to_int(share * 255.0f));
        }
    }
    level_saliency.clear();
    for (const Byte level : table) level_saliency.push_back(level);
    for (Byte& pixel : dst.data) pixel = table[pixel];
}

void redColorDetect(Image<Byte> src, Image<Byte>& dst, bool relaxed) {
    print_line("begin to red color detection");
    check(!src.empty(), "!src.empty()", "redColorDetect");
    check(3 == src.channels, "3 == src.channels", "redColorDetect");
    dst.create(src.rows, src.cols, 1, 0);
    const int new_w = src.cols < 321 ? src.cols : 320;
    const float scale = static_cast<float>(new_w) / static_cast<float>(src.cols);
    const float scaled = static_cast<float>(src.rows) * scale;
    const int new_h = to_int(scaled);
    Image<Byte> small;
    resize(src, small, Size{new_w, new_h}, 0);

    std::vector<float> score;
    float maximum = 0.0f, minimum = 3.4028235e38f;
    for (size_t i = 0; i < small.data.size(); i += 3) {
        const int b = small.data[i], g = small.data[i + 1], r = small.data[i + 2];
        score.push_back(0.0f);
        if (!(b <= r && g <= r)) continue;
        score.back() = static_cast<float>(r - b) * static_cast<float>(r - g);
        maximum = std::max(maximum, score.back());
        minimum = std::min(minimum, score.back());
    }
    if (score.empty() || maximum < 1.0f || maximum - minimum < 1.1920929e-7f) return;  // dst is all 0 already
    for (float& value : score) value = (value - minimum) / (maximum - minimum);

    Image<Byte> hsv, mask, closed;
    bgr2hsv(small, hsv);
    mask.create(small.rows, small.cols, 1, 0);
    for (size_t i = 0; i < score.size(); ++i) {
        const int h = hsv.data[3 * i], s = hsv.data[3 * i + 1], v = hsv.data[3 * i + 2];
        if (score[i] > 0.19607843f)
            mask.data[i] = 255;
        else if ((h < 9 || h > 159) && s >= 81 && 51 <= v && v <= 219)
            mask.data[i] = 255;
    }
    closeBinary(mask, closed, Size{3, 3});
    List<Rect> rects;
    List<List<Point>> pixels;
    connectdComponent(closed, rects, &pixels);

    const int n = rects.size();
    std::vector<int> keep;
    std::vector<Rect> candidates;
    for (const float threshold : {0.5f, 0.25f}) {
        keep.clear();
        for (int k = 0; k < n; ++k) {
            const Rect& rect = rects[k];
            const float fill =
                static_cast<float>(pixels[k].size()) / static_cast<float>(rect.width * rect.height);
            bool accept;
            if (relaxed)
                accept = rect.width >= 10 && rect.height >= 10 && fill >= threshold;
            else
                accept = rect.width <= small.cols / 2 && rect.width >= 10 && rect.height >= 10 &&
                         rect.width <= 3 * rect.height && rect.height <= 3 * rect.width &&
                         rect.height <= small.rows / 2 && fill >= threshold;
            keep.push_back(accept ? 1 : 0);
            if (accept) candidates.push_back(rect);
        }
        if (!candidates.empty()) break;
    }
    if (candidates.empty()) {
        print_prefix('E');
        print("could not find any valid red circle\n");
        throw Failure{2, "could not find any valid red circle"};
    }
    for (int k = 0; k < n; ++k) {
        if (keep[static_cast<size_t>(k)] == 1) continue;
        const Rect& rect = rects[k];
        if (rect.width >= 6 && rect.height < 5) continue;
        for (size_t c = 0; c < candidates.size(); ++c) {
            const Rect& seal = candidates[c];
            const int left = seal.x - seal.width / 4, top = seal.y - seal.height / 4;
            const int right = to_int(left + 1.5 * seal.width), bottom = to_int(top + 1.5 * seal.height);
            const int w = std::max(std::min(right, rect.x + rect.width) - std::max(left, rect.x), 0);
            const int h = std::max(std::min(bottom, rect.y + rect.height) - std::max(top, rect.y), 0);
            if (2 * w * h > rect.width * rect.height) {
                print_prefix();
                print("set " + std::to_string(k) + " near " + std::to_string(c) + " to be true \n");
                keep[static_cast<size_t>(k)] = 1;
                break;
            }
        }
    }
    for (int k = 0; k < n; ++k) {
        if (keep[static_cast<size_t>(k)] == 1) continue;
        for (const Point& point : pixels[k].items) closed.at(point.y, point.x) = 0;
    }
    closeBinary(closed, closed, Size{6, 6});
    Image<Byte> big;
    resize(closed, big, Size{src.cols, src.rows}, 0);
    thresholdSeg(big, dst, 128);
    print_line("red color detection done (#ms)");
}

}  // namespace reference
