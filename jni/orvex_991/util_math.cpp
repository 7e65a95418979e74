#include "base/fp_strict.h"
//
#include "util_math.h"

#include "base/numeric.h"

namespace orvex_991 {

template <class T>
T pow(T base, int exponent) {
    constexpr T kEpsilon = static_cast<T>(orvex_cv_991::kFloatEpsilon);
    if (exponent == 0) return base;
    const unsigned factors =
        exponent < 0 ? 0u - static_cast<unsigned>(exponent) : static_cast<unsigned>(exponent);
    T result = base;
    for (unsigned k = 1; k < factors; ++k) result *= base;
    return exponent > 0 ? result : 1 / (result + kEpsilon);
}

template float pow<float>(float base, int exponent);

}  // namespace orvex_991
