#include "base/fp_strict.h"
//
#include "algorithms/red_mask.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "base/numeric.h"

namespace orvex_cv_991 {

bool Redness::is_somewhere() const {
    return largest >= 1.0f && largest - smallest >= kFloatEpsilon;
}

Redness redness_of(const Mat<unsigned char>& bgr) {
    Redness redness{{}, std::numeric_limits<float>::max(), 0.0f};
    redness.scores.resize(static_cast<size_t>(bgr.rows) * static_cast<size_t>(bgr.cols), 0.0f);
    for (size_t i = 0; i < redness.scores.size(); ++i) {
        const int b = bgr.data[3 * i], g = bgr.data[3 * i + 1], r = bgr.data[3 * i + 2];
        if (b > r || g > r) continue;
        const float score = static_cast<float>((r - b) * (r - g));
        redness.scores[i] = score;
        redness.smallest = std::min(redness.smallest, score);
        redness.largest = std::max(redness.largest, score);
    }
    return redness;
}

void mark_red(const Redness& redness, const Mat<unsigned char>& hsv, Mat<unsigned char>& mask) {
    constexpr float kLeastShare = 0.19607843f;  // 50 / 255
    const float range = redness.largest - redness.smallest;
    for (size_t i = 0; i < redness.scores.size(); ++i) {
        const int h = hsv.data[3 * i], s = hsv.data[3 * i + 1], v = hsv.data[3 * i + 2];
        const bool red = (redness.scores[i] - redness.smallest) / range > kLeastShare ||
                         ((h < 9 || h > 159) && s >= 81 && v >= 51 && v <= 219);
        mask.data[i] = red ? 255 : 0;
    }
}

}  // namespace orvex_cv_991
