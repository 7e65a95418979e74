// Internal: arithmetic that plain C++ leaves undefined or inexact, with the one answer the
// library gives for it.
#ifndef ORVEX_991_BASE_NUMERIC_H
#define ORVEX_991_BASE_NUMERIC_H

#include <cmath>
#include <cstdint>
#include <limits>

namespace orvex_cv_991 {

/// 2^-23, the distance from 1 to the next float. It keeps divisors that may be 0 from being 0, and is
/// the least range of values that counts as one.
constexpr float kFloatEpsilon = 1.1920929e-7f;

// Signed 32-bit arithmetic that wraps. The conversion back to int is two's complement on
// every compiler we use.
inline int wrap_add(int a, int b) {
    return static_cast<int>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
inline int wrap_sub(int a, int b) {
    return static_cast<int>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
inline int wrap_mul(int a, int b) {
    return static_cast<int>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

/// Truncates toward zero; values outside int's range give the nearest int, not-a-number gives 0.
template <class Float>
int saturate_to_int(Float value) {
    constexpr Float kAboveAll = static_cast<Float>(2147483648.0);  // 2^31, exact in both precisions
    if (value >= kAboveAll) return std::numeric_limits<int>::max();
    if (value > -kAboveAll) return static_cast<int>(value);
    return std::isnan(value) ? 0 : std::numeric_limits<int>::min();
}

/// The floor, with the same answers out of range.
inline int floor_to_int(float value) {
    const int truncated = saturate_to_int(value);
    return truncated > std::numeric_limits<int>::min() && static_cast<float>(truncated) > value
               ? truncated - 1
               : truncated;
}

/// A product of two differences of ints, exact: magnitudes of differences are below 2^32, so
/// theirs is below 2^64.
class ExactProduct {
 public:
    ExactProduct(int64_t a, int64_t b)
        : magnitude_(magnitude(a) * magnitude(b)), negative_((a < 0) != (b < 0) && magnitude_ != 0) {}

    friend bool operator<(const ExactProduct& a, const ExactProduct& b) {
        if (a.negative_ != b.negative_) return a.negative_;
        return a.negative_ ? a.magnitude_ > b.magnitude_ : a.magnitude_ < b.magnitude_;
    }

 private:
    static uint64_t magnitude(int64_t value) { return static_cast<uint64_t>(value < 0 ? -value : value); }

    uint64_t magnitude_;
    bool negative_;
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_BASE_NUMERIC_H
