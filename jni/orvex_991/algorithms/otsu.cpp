#include "base/fp_strict.h"
//
#include "algorithms/otsu.h"

#include "base/numeric.h"
#include "util_math.h"

namespace orvex_cv_991 {

// All of it in single precision and in this order: for extreme proportions the rounding decides the level.
int otsu_threshold(const uint32_t* counts, int n) {
    const float r = 1.0f / static_cast<float>(n);
    float p[256];
    float total_mean = 0.0f;
    for (int k = 0; k < 256; ++k) {
        p[k] = static_cast<float>(counts[k]) * r;
        total_mean += static_cast<float>(k) * p[k];
    }

    float dark_weight = 0.0f;
    float dark_sum = 0.0f;
    float best = 0.0f;
    int threshold = 0;
    for (int k = 0; k < 256; ++k) {
        dark_sum = static_cast<float>(k) * p[k] + dark_sum;
        dark_weight = dark_weight + p[k];
        const float bright_weight = 1.0f - dark_weight;
        // The epsilon keeps an empty class from dividing by zero.
        const float distance = dark_sum / (dark_weight + kFloatEpsilon) -
                               (total_mean - dark_sum) / (bright_weight + kFloatEpsilon);
        const float variance = orvex_991::pow(distance, 2) * (bright_weight * dark_weight);
        if (variance > best) {  // never for not-a-number, which an empty histogram gives throughout
            best = variance;
            threshold = k;
        }
    }
    return threshold;
}

}  // namespace orvex_cv_991
