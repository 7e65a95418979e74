#include "base/fp_strict.h"
//
#include "algorithms/equalization.h"

namespace orvex_cv_991 {

void equalizing_table(const uint32_t* counts, int n, unsigned char* table) {
    // Shares and their sum in single precision, one level after the other; only the last step is in double.
    const float scale = 1.0f / static_cast<float>(n);
    float share = 0.0f;
    for (int level = 0; level < 256; ++level) {
        share += static_cast<float>(counts[level]) * scale;
        table[level] = static_cast<unsigned char>(static_cast<int>(static_cast<double>(share) * 255.0 + 0.5));
    }
}

}  // namespace orvex_cv_991
