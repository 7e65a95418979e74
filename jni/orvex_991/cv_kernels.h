// Internal: the arithmetic kernels, each compiled for the baseline processor and, on x86-64, for AVX2.
//
// An operation asks once which instruction set to use and passes it down; nothing is remembered between
// calls. Every kernel gives the same bytes under every instruction set. What each one computes, and which of
// its pointers may be equal, is stated at its definition in kernels/.
#ifndef ORVEX_991_CV_KERNELS_H
#define ORVEX_991_CV_KERNELS_H

#include <cstddef>
#include <cstdint>

namespace orvex_cv_991 {

enum class Isa { kBaseline, kAvx2 };

/// The widest instruction set that both this build and this processor have.
Isa fastest_isa();

namespace kernels {

void gray_from_bgr(Isa isa, const uint8_t* bgr, uint8_t* gray, ptrdiff_t n);
void bgr_from_nv21_row(Isa isa, const uint8_t* luma, const uint8_t* vu, uint8_t* bgr, int cols);
void hsv_from_bgr(Isa isa, const uint8_t* bgr, uint8_t* hsv, ptrdiff_t n);
void hsv_from_strided(Isa isa, const uint8_t* pixels, ptrdiff_t bytes, ptrdiff_t stride, uint8_t* hsv,
                      ptrdiff_t n);
void count_bytes(Isa isa, const uint8_t* bytes, ptrdiff_t n, uint32_t* counts);
void count_masked_bytes(Isa isa, const uint8_t* bytes, const uint8_t* mask, ptrdiff_t n, uint32_t* counts);
void threshold_bytes(Isa isa, const uint8_t* bytes, uint8_t* out, ptrdiff_t n, int threshold);
void threshold_masked_bytes(Isa isa, const uint8_t* bytes, const uint8_t* mask, uint8_t* out, ptrdiff_t n,
                            int threshold, uint8_t invert);
void look_up_bytes(Isa isa, const uint8_t* bytes, const uint8_t* table, uint8_t* out, ptrdiff_t n);
void pack_nonzero(Isa isa, const uint8_t* bytes, uint64_t* words, int cols);
void pack_below_128(Isa isa, const uint8_t* bytes, uint64_t* words, int cols);
void unpack_bits(Isa isa, const uint64_t* words, uint8_t* bytes, int cols, uint8_t invert);
void or_words(Isa isa, const uint64_t* a, const uint64_t* b, uint64_t* out, int n);
void warp_row(Isa isa, const uint8_t* src, ptrdiff_t stride, int channels, float row_x, float step_x,
              float offset_x, float row_y, float step_y, float offset_y, int first, uint8_t* out, int n);
void copy_row(Isa isa, const uint8_t* src, int rows, int cols, int channels, float row_x, float step_x,
              float offset_x, float row_y, float step_y, float offset_y, int first, uint8_t* out, int n);
void sample_columns(Isa isa, float row_x, float step_x, float offset_x, int first, int32_t* left,
                    int16_t* weight, int n);
bool can_stretch_in_steps(Isa isa);
void stretch_row(Isa isa, const uint8_t* row, const int32_t* at, const int16_t* weight, int channels,
                 int32_t* out_q11, ptrdiff_t n);
void stretch_row_in_steps(Isa isa, const uint8_t* row, const int32_t* base, const uint8_t* index,
                          const int16_t* weights, int32_t* out_q11, ptrdiff_t steps);
void blend_rows(Isa isa, const int32_t* upper_q11, const int32_t* lower_q11, int weight, uint8_t* out,
                ptrdiff_t n);
void halve_rows(Isa isa, const uint8_t* upper, const uint8_t* lower, int channels, uint8_t* out, ptrdiff_t n);

void max_bytes(Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n);
void min_bytes(Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n);
void subtract_bytes(Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n);
void add_words32(Isa isa, const uint32_t* a, const uint32_t* b, uint32_t* out, ptrdiff_t n);
void sum_bytes(Isa isa, const uint8_t* bytes, ptrdiff_t n, uint64_t* sum, uint64_t* sum_of_squares);
ptrdiff_t count_nonzero_bytes(Isa isa, const uint8_t* bytes, ptrdiff_t n);
ptrdiff_t find_nonzero(Isa isa, const uint8_t* bytes, ptrdiff_t n);
ptrdiff_t find_last_nonzero(Isa isa, const uint8_t* bytes, ptrdiff_t n);
void reverse_pixels(Isa isa, const uint8_t* pixels, uint8_t* out, int channels, ptrdiff_t n);
void turn_pixels(Isa isa, const uint8_t* src, int rows, int cols, int channels, bool upward, bool leftward,
                 uint8_t* out);
void compare_with_mean(Isa isa, const uint8_t* pixels, const uint32_t* sums, const int32_t* counts,
                       double offset, uint8_t* out, ptrdiff_t n, uint8_t invert);
void add_words16(Isa isa, const uint16_t* a, const uint16_t* b, uint16_t* out, ptrdiff_t n);
void widen_bytes16(Isa isa, const uint8_t* bytes, uint16_t* out, ptrdiff_t n);
void sum_rows16(Isa isa, const uint16_t* const* rows, int count, uint16_t* out, ptrdiff_t n);
void sum_rows32(Isa isa, const uint16_t* const* rows, int count, uint32_t* out, ptrdiff_t n);
void compare_with_line(Isa isa, const uint8_t* pixels, const uint16_t* const* rows, int narrow_rows,
                       int count, int32_t slope, int32_t intercept, uint8_t* out, ptrdiff_t n,
                       uint8_t invert);

}  // namespace kernels
}  // namespace orvex_cv_991

#endif  // ORVEX_991_CV_KERNELS_H
