#include "algorithms/text_rows.h"

#include <algorithm>
#include <cstdint>

#include "base/key_sort.h"
#include "base/numeric.h"

namespace orvex_cv_991 {

Bands find_bands(const orvex_991::vector<Rect>& rects) {
    // By top, rectangles that cover something before others, so that a band is known before it is asked for.
    constexpr int kIndexBits = 31;
    std::vector<uint64_t> keys(static_cast<size_t>(rects.size()));
    for (size_t k = 0; k < keys.size(); ++k) {
        const Rect& rect = rects.data[k];
        const bool covers = wrap_add(rect.y, rect.height) > rect.y;
        if (covers && rect.y < 0) throw orvex_991::CException(4);
        keys[k] = (uint64_t{ordered_bits(rect.y)} << 1 | (covers ? 0 : 1)) << kIndexBits | k;
    }
    sort_keys(keys, kIndexBits);

    Bands bands;
    bands.of.resize(keys.size());
    int bottom = -1;  // of the band so far
    for (const uint64_t key : keys) {
        const size_t k = key & ((uint64_t{1} << kIndexBits) - 1);
        const Rect& rect = rects.data[k];
        const bool covers = (key >> kIndexBits & 1) == 0;
        if (covers && rect.y > bottom) ++bands.count;
        if (covers) bottom = std::max(bottom, wrap_add(rect.y, rect.height));
        bands.of[k] = bands.count - 1;
    }
    return bands;
}

std::vector<int> order_by_x(const orvex_991::vector<Rect>& rects) {
    std::vector<uint64_t> keys(static_cast<size_t>(rects.size()));
    for (size_t k = 0; k < keys.size(); ++k) keys[k] = uint64_t{ordered_bits(rects.data[k].x)} << 32 | k;
    sort_keys(keys, 32);
    std::vector<int> order(keys.size());
    std::transform(keys.begin(), keys.end(), order.begin(),
                   [](uint64_t key) { return static_cast<int>(static_cast<uint32_t>(key)); });
    return order;
}

}  // namespace orvex_cv_991
