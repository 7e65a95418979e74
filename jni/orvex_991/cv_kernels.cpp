#include "fp_strict.h"
//
#include "cv_kernels.h"

// The vector extension of GCC and Clang, for processors that store the low byte first. ORVEX_SCALAR builds
// without it, as other compilers do.
#if defined(__GNUC__) && defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ && \
    !defined(ORVEX_SCALAR)
#define ORVEX_HAS_VECTORS
#if defined(__SSE2__)
#include <immintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#endif
#endif

// ORVEX_BASELINE_ONLY leaves the second compilation out, for tests of the first and for the smallest binary.
#if defined(ORVEX_HAS_VECTORS) && defined(__x86_64__) && !defined(ORVEX_BASELINE_ONLY)
#define ORVEX_AVX2
#endif

namespace orvex_cv_991 {
namespace baseline {
#ifdef ORVEX_HAS_VECTORS
#define ORVEX_VEC 16
#endif
#include "kernels/all.h"
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
#include "kernels/all.h"
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

#ifdef ORVEX_AVX2
#define ORVEX_PICK(isa, call) return (isa) == Isa::kAvx2 ? avx2::call : baseline::call
#else
#define ORVEX_PICK(isa, call) return (void)(isa), baseline::call
#endif

namespace kernels {

void gray_from_bgr(Isa isa, const uint8_t* bgr, uint8_t* gray, ptrdiff_t n) {
    ORVEX_PICK(isa, gray_from_bgr(bgr, gray, n));
}

void bgr_from_nv21_row(Isa isa, const uint8_t* luma, const uint8_t* vu, uint8_t* bgr, int cols) {
    ORVEX_PICK(isa, bgr_from_nv21_row(luma, vu, bgr, cols));
}

void hsv_from_bgr(Isa isa, const uint8_t* bgr, uint8_t* hsv, ptrdiff_t n) {
    ORVEX_PICK(isa, hsv_from_bgr(bgr, hsv, n));
}

void hsv_from_strided(Isa isa, const uint8_t* pixels, ptrdiff_t bytes, ptrdiff_t stride, uint8_t* hsv,
                      ptrdiff_t n) {
    ORVEX_PICK(isa, hsv_from_strided(pixels, bytes, stride, hsv, n));
}

void count_bytes(Isa isa, const uint8_t* bytes, ptrdiff_t n, uint32_t* counts) {
    ORVEX_PICK(isa, count_bytes(bytes, n, counts));
}

void count_masked_bytes(Isa isa, const uint8_t* bytes, const uint8_t* mask, ptrdiff_t n, uint32_t* counts) {
    ORVEX_PICK(isa, count_masked_bytes(bytes, mask, n, counts));
}

void threshold_bytes(Isa isa, const uint8_t* bytes, uint8_t* out, ptrdiff_t n, int threshold) {
    ORVEX_PICK(isa, threshold_bytes(bytes, out, n, threshold));
}

void threshold_masked_bytes(Isa isa, const uint8_t* bytes, const uint8_t* mask, uint8_t* out, ptrdiff_t n,
                            int threshold, uint8_t invert) {
    ORVEX_PICK(isa, threshold_masked_bytes(bytes, mask, out, n, threshold, invert));
}

void look_up_bytes(Isa isa, const uint8_t* bytes, const uint8_t* table, uint8_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, look_up_bytes(bytes, table, out, n));
}

void pack_nonzero(Isa isa, const uint8_t* bytes, uint64_t* words, int cols) {
    ORVEX_PICK(isa, pack_nonzero(bytes, words, cols));
}

void pack_below_128(Isa isa, const uint8_t* bytes, uint64_t* words, int cols) {
    ORVEX_PICK(isa, pack_below_128(bytes, words, cols));
}

void unpack_bits(Isa isa, const uint64_t* words, uint8_t* bytes, int cols, uint8_t invert) {
    ORVEX_PICK(isa, unpack_bits(words, bytes, cols, invert));
}

void or_words(Isa isa, const uint64_t* a, const uint64_t* b, uint64_t* out, int n) {
    ORVEX_PICK(isa, or_words(a, b, out, n));
}

void warp_row(Isa isa, const uint8_t* src, ptrdiff_t stride, int channels, float row_x, float step_x,
              float offset_x, float row_y, float step_y, float offset_y, int first, uint8_t* out, int n) {
    ORVEX_PICK(isa, warp_row(src, stride, channels, row_x, step_x, offset_x, row_y, step_y, offset_y, first,
                             out, n));
}

void copy_row(Isa isa, const uint8_t* src, int rows, int cols, int channels, float row_x, float step_x,
              float offset_x, float row_y, float step_y, float offset_y, int first, uint8_t* out, int n) {
    ORVEX_PICK(isa, copy_row(src, rows, cols, channels, row_x, step_x, offset_x, row_y, step_y, offset_y,
                             first, out, n));
}

void sample_columns(Isa isa, float row_x, float step_x, float offset_x, int first, int32_t* left,
                    int16_t* weight, int n) {
    ORVEX_PICK(isa, sample_columns(row_x, step_x, offset_x, first, left, weight, n));
}

bool can_stretch_in_steps(Isa isa) {
    ORVEX_PICK(isa, can_stretch_in_steps());
}

void stretch_row(Isa isa, const uint8_t* row, const int32_t* at, const int16_t* weight, int channels,
                 int32_t* out_q11, ptrdiff_t n) {
    ORVEX_PICK(isa, stretch_row(row, at, weight, channels, out_q11, n));
}

void stretch_row_in_steps(Isa isa, const uint8_t* row, const int32_t* base, const uint8_t* index,
                          const int16_t* weights, int32_t* out_q11, ptrdiff_t steps) {
    ORVEX_PICK(isa, stretch_row_in_steps(row, base, index, weights, out_q11, steps));
}

void blend_rows(Isa isa, const int32_t* upper_q11, const int32_t* lower_q11, int weight, uint8_t* out,
                ptrdiff_t n) {
    ORVEX_PICK(isa, blend_rows(upper_q11, lower_q11, weight, out, n));
}

void halve_rows(Isa isa, const uint8_t* upper, const uint8_t* lower, int channels, uint8_t* out,
                ptrdiff_t n) {
    ORVEX_PICK(isa, halve_rows(upper, lower, channels, out, n));
}

void max_bytes(Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, max_bytes(a, b, out, n));
}

void min_bytes(Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, min_bytes(a, b, out, n));
}

void subtract_bytes(Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, subtract_bytes(a, b, out, n));
}

void add_words32(Isa isa, const uint32_t* a, const uint32_t* b, uint32_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, add_words32(a, b, out, n));
}

void sum_bytes(Isa isa, const uint8_t* bytes, ptrdiff_t n, uint64_t* sum, uint64_t* sum_of_squares) {
    ORVEX_PICK(isa, sum_bytes(bytes, n, sum, sum_of_squares));
}

ptrdiff_t count_nonzero_bytes(Isa isa, const uint8_t* bytes, ptrdiff_t n) {
    ORVEX_PICK(isa, count_nonzero_bytes(bytes, n));
}

ptrdiff_t find_nonzero(Isa isa, const uint8_t* bytes, ptrdiff_t n) {
    ORVEX_PICK(isa, find_nonzero(bytes, n));
}

ptrdiff_t find_last_nonzero(Isa isa, const uint8_t* bytes, ptrdiff_t n) {
    ORVEX_PICK(isa, find_last_nonzero(bytes, n));
}

void reverse_pixels(Isa isa, const uint8_t* pixels, uint8_t* out, int channels, ptrdiff_t n) {
    ORVEX_PICK(isa, reverse_pixels(pixels, out, channels, n));
}

void turn_pixels(Isa isa, const uint8_t* src, int rows, int cols, int channels, bool upward, bool leftward,
                 uint8_t* out) {
    ORVEX_PICK(isa, turn_pixels(src, rows, cols, channels, upward, leftward, out));
}

void compare_with_mean(Isa isa, const uint8_t* pixels, const uint32_t* sums, const int32_t* counts,
                       double offset, uint8_t* out, ptrdiff_t n, uint8_t invert) {
    ORVEX_PICK(isa, compare_with_mean(pixels, sums, counts, offset, out, n, invert));
}

void add_words16(Isa isa, const uint16_t* a, const uint16_t* b, uint16_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, add_words16(a, b, out, n));
}

void widen_bytes16(Isa isa, const uint8_t* bytes, uint16_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, widen_bytes16(bytes, out, n));
}

void sum_rows16(Isa isa, const uint16_t* const* rows, int count, uint16_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, sum_rows16(rows, count, out, n));
}

void sum_rows32(Isa isa, const uint16_t* const* rows, int count, uint32_t* out, ptrdiff_t n) {
    ORVEX_PICK(isa, sum_rows32(rows, count, out, n));
}

void compare_with_line(Isa isa, const uint8_t* pixels, const uint16_t* const* rows, int narrow_rows,
                       int count, int32_t slope, int32_t intercept, uint8_t* out, ptrdiff_t n,
                       uint8_t invert) {
    ORVEX_PICK(isa, compare_with_line(pixels, rows, narrow_rows, count, slope, intercept, out, n, invert));
}

}  // namespace kernels
}  // namespace orvex_cv_991
