// The kernels: result, name, parameters, and the arguments to pass on. What a kernel computes, and which of
// its pointers may alias, is stated at its definition, in the file that stands above it here.
//
// Included where ORVEX_KERNEL(result, name, parameters, arguments) is defined: once to declare the kernels,
// once to choose among their instruction sets.

// gray.h, yuv.h, hsv.h
ORVEX_KERNEL(void, gray_from_bgr, (Isa isa, const uint8_t* bgr, uint8_t* gray, ptrdiff_t n), (bgr, gray, n))
ORVEX_KERNEL(void, bgr_from_nv21_row,
             (Isa isa, const uint8_t* luma, const uint8_t* vu, uint8_t* bgr, int cols), (luma, vu, bgr, cols))
ORVEX_KERNEL(void, hsv_from_bgr, (Isa isa, const uint8_t* bgr, uint8_t* hsv, ptrdiff_t n), (bgr, hsv, n))
ORVEX_KERNEL(void, hsv_from_strided,
             (Isa isa, const uint8_t* pixels, ptrdiff_t bytes, ptrdiff_t stride, uint8_t* hsv, ptrdiff_t n),
             (pixels, bytes, stride, hsv, n))

// histogram.h, lookup.h, stats.h
ORVEX_KERNEL(void, count_bytes, (Isa isa, const uint8_t* bytes, ptrdiff_t n, uint32_t* counts),
             (bytes, n, counts))
ORVEX_KERNEL(void, count_masked_bytes,
             (Isa isa, const uint8_t* bytes, const uint8_t* mask, ptrdiff_t n, uint32_t* counts),
             (bytes, mask, n, counts))
ORVEX_KERNEL(void, look_up_bytes,
             (Isa isa, const uint8_t* bytes, const uint8_t* table, uint8_t* out, ptrdiff_t n),
             (bytes, table, out, n))
ORVEX_KERNEL(void, sum_bytes,
             (Isa isa, const uint8_t* bytes, ptrdiff_t n, uint64_t* sum, uint64_t* sum_of_squares),
             (bytes, n, sum, sum_of_squares))
ORVEX_KERNEL(ptrdiff_t, count_nonzero_bytes, (Isa isa, const uint8_t* bytes, ptrdiff_t n), (bytes, n))

// threshold.h, adaptive.h
ORVEX_KERNEL(void, threshold_bytes, (Isa isa, const uint8_t* bytes, uint8_t* out, ptrdiff_t n, int threshold),
             (bytes, out, n, threshold))
ORVEX_KERNEL(void, threshold_masked_bytes,
             (Isa isa, const uint8_t* bytes, const uint8_t* mask, uint8_t* out, ptrdiff_t n, int threshold,
              uint8_t invert),
             (bytes, mask, out, n, threshold, invert))
ORVEX_KERNEL(void, compare_with_mean,
             (Isa isa, const uint8_t* pixels, const uint32_t* sums, const int32_t* counts, double offset,
              uint8_t* out, ptrdiff_t n, uint8_t invert),
             (pixels, sums, counts, offset, out, n, invert))
ORVEX_KERNEL(void, compare_with_line,
             (Isa isa, const uint8_t* pixels, const uint16_t* const* rows, int narrow_rows, int count,
              int32_t slope, int32_t intercept, uint8_t* out, ptrdiff_t n, uint8_t invert),
             (pixels, rows, narrow_rows, count, slope, intercept, out, n, invert))

// rows.h
ORVEX_KERNEL(void, max_bytes, (Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n),
             (a, b, out, n))
ORVEX_KERNEL(void, min_bytes, (Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n),
             (a, b, out, n))
ORVEX_KERNEL(void, subtract_bytes, (Isa isa, const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n),
             (a, b, out, n))
ORVEX_KERNEL(void, add_words16, (Isa isa, const uint16_t* a, const uint16_t* b, uint16_t* out, ptrdiff_t n),
             (a, b, out, n))
ORVEX_KERNEL(void, add_words32, (Isa isa, const uint32_t* a, const uint32_t* b, uint32_t* out, ptrdiff_t n),
             (a, b, out, n))
ORVEX_KERNEL(void, widen_bytes16, (Isa isa, const uint8_t* bytes, uint16_t* out, ptrdiff_t n),
             (bytes, out, n))
ORVEX_KERNEL(void, sum_rows16, (Isa isa, const uint16_t* const* rows, int count, uint16_t* out, ptrdiff_t n),
             (rows, count, out, n))
ORVEX_KERNEL(void, sum_rows32, (Isa isa, const uint16_t* const* rows, int count, uint32_t* out, ptrdiff_t n),
             (rows, count, out, n))

// bits.h, find.h
ORVEX_KERNEL(void, pack_nonzero, (Isa isa, const uint8_t* bytes, uint64_t* words, int cols),
             (bytes, words, cols))
ORVEX_KERNEL(void, pack_below_128, (Isa isa, const uint8_t* bytes, uint64_t* words, int cols),
             (bytes, words, cols))
ORVEX_KERNEL(void, unpack_bits, (Isa isa, const uint64_t* words, uint8_t* bytes, int cols, uint8_t invert),
             (words, bytes, cols, invert))
ORVEX_KERNEL(void, or_words, (Isa isa, const uint64_t* a, const uint64_t* b, uint64_t* out, int n),
             (a, b, out, n))
ORVEX_KERNEL(int, find_runs, (Isa isa, const uint64_t* words, int cols, int32_t* bounds),
             (words, cols, bounds))
ORVEX_KERNEL(ptrdiff_t, find_nonzero, (Isa isa, const uint8_t* bytes, ptrdiff_t n), (bytes, n))
ORVEX_KERNEL(ptrdiff_t, find_last_nonzero, (Isa isa, const uint8_t* bytes, ptrdiff_t n), (bytes, n))

// rotate.h
ORVEX_KERNEL(void, reverse_pixels, (Isa isa, const uint8_t* pixels, uint8_t* out, int channels, ptrdiff_t n),
             (pixels, out, channels, n))
ORVEX_KERNEL(void, turn_pixels,
             (Isa isa, const uint8_t* src, int rows, int cols, int channels, bool upward, bool leftward,
              uint8_t* out),
             (src, rows, cols, channels, upward, leftward, out))

// warp.h, scale.h
ORVEX_KERNEL(void, warp_row,
             (Isa isa, const uint8_t* src, ptrdiff_t stride, int channels, CoordinateLine x, CoordinateLine y,
              int first, uint8_t* out, int n),
             (src, stride, channels, x, y, first, out, n))
ORVEX_KERNEL(void, copy_row,
             (Isa isa, const uint8_t* src, int rows, int cols, int channels, CoordinateLine x,
              CoordinateLine y, int first, uint8_t* out, int n),
             (src, rows, cols, channels, x, y, first, out, n))
ORVEX_KERNEL(void, sample_columns,
             (Isa isa, CoordinateLine x, int first, int32_t* left, int16_t* weight, int n),
             (x, first, left, weight, n))
ORVEX_KERNEL(void, stretch_row,
             (Isa isa, const uint8_t* row, const int32_t* at, const int16_t* weight, int channels,
              int32_t* out_q11, ptrdiff_t n),
             (row, at, weight, channels, out_q11, n))
ORVEX_KERNEL(bool, can_stretch_in_steps, (Isa isa), ())
ORVEX_KERNEL(void, stretch_row_in_steps,
             (Isa isa, const uint8_t* row, const int32_t* base, const uint8_t* index, const int16_t* weights,
              int32_t* out_q11, ptrdiff_t steps),
             (row, base, index, weights, out_q11, steps))
ORVEX_KERNEL(void, blend_rows,
             (Isa isa, const int32_t* upper_q11, const int32_t* lower_q11, int weight, uint8_t* out,
              ptrdiff_t n),
             (upper_q11, lower_q11, weight, out, n))
ORVEX_KERNEL(void, halve_rows,
             (Isa isa, const uint8_t* upper, const uint8_t* lower, int channels, uint8_t* out, ptrdiff_t n),
             (upper, lower, channels, out, n))
