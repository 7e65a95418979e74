#include "base/fp_strict.h"
//
#include "algorithms/saliency.h"

#include <algorithm>
#include <limits>

#include "base/numeric.h"

namespace orvex_cv_991 {

void level_saliency_of(const uint32_t* counts, int64_t n, unsigned char* table) {
    // Nothing counted gives shares of 0, not a division by zero.
    const float r = 1.0f / (static_cast<float>(n) + kFloatEpsilon);

    // Every level's sum runs over ascending k in single precision; the levels are independent of each other,
    // so they stand side by side in vector lanes.
    float saliency[256] = {};
    for (int k = 0; k < 256; ++k) {
        const float p = static_cast<float>(counts[k]) * r;
        for (int level = 0; level < 256; ++level) {
            const int distance = level < k ? k - level : level - k;
            saliency[level] += static_cast<float>(distance) * p;
        }
    }
    const float smallest =
        std::min(std::numeric_limits<float>::max(), *std::min_element(saliency, saliency + 256));
    const float largest = std::max(0.0f, *std::max_element(saliency, saliency + 256));
    if (kFloatEpsilon > largest - smallest) {
        std::fill_n(table, 256, static_cast<unsigned char>(128));
        return;
    }
    for (int level = 0; level < 256; ++level) {
        const float share = (saliency[level] - smallest) / (largest - smallest) * 255.0f;
        table[level] = static_cast<unsigned char>(static_cast<int>(share));
    }
}

}  // namespace orvex_cv_991
