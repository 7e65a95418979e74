#include "base/fp_strict.h"
//
#include "kernels/kernels.h"

// Each of these leaves something out, for tests of what then does the work: ORVEX_SCALAR all vectors,
// as other compilers build the loops; ORVEX_PLAIN_VECTORS the instructions that simd.h takes by name,
// as on processors that it does not know; ORVEX_BASELINE_ONLY the second compilation, which also
// makes the binary smallest.

// The vector extension of GCC and Clang, for processors that store the low byte first.
#if defined(__GNUC__) && defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ && \
    !defined(ORVEX_SCALAR)
#define ORVEX_HAS_VECTORS
#if defined(ORVEX_PLAIN_VECTORS)
#elif defined(__SSE2__)
#include <immintrin.h>
#define ORVEX_SSE2
#if defined(__SSSE3__)
#define ORVEX_SSSE3
#endif
#if defined(__x86_64__) && !defined(ORVEX_BASELINE_ONLY)
#define ORVEX_AVX2
#endif
#elif defined(__aarch64__)
#include <arm_neon.h>
#define ORVEX_NEON64
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#define ORVEX_WASM
#endif
#endif

namespace orvex_cv_991 {
namespace baseline {
#ifdef ORVEX_HAS_VECTORS
#define ORVEX_VEC 16
#endif
#include "kernels/loops.h"
#undef ORVEX_VEC
}  // namespace baseline

#ifdef ORVEX_AVX2
#ifdef __clang__
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif
namespace avx2 {
#define ORVEX_VEC 32
#include "kernels/loops.h"
#undef ORVEX_VEC
}  // namespace avx2
#ifdef __clang__
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#endif

Isa fastest_isa() {
#ifdef ORVEX_AVX2
    if (__builtin_cpu_supports("avx2")) return Isa::kAvx2;
#endif
    return Isa::kBaseline;
}

namespace kernels {

#ifdef ORVEX_AVX2
#define ORVEX_KERNEL(result, name, parameters, arguments)                           \
    result name parameters {                                                        \
        return isa == Isa::kAvx2 ? avx2::name arguments : baseline::name arguments; \
    }
#else
#define ORVEX_KERNEL(result, name, parameters, arguments) \
    result name parameters {                              \
        return (void)isa, baseline::name arguments;       \
    }
#endif
#include "kernels/list.def"
#undef ORVEX_KERNEL

}  // namespace kernels
}  // namespace orvex_cv_991
