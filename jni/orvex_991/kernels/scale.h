// Bilinear sampling in two steps: along source rows first, H = p * w + q * (2048 - w), and then between rows,
// H * w' + H' * (2048 - w'). Integers, so the outcome is that of the four-term sum of warp.h.

// Where the output columns first .. first + n - 1 lie between source columns: the left neighbour's column and
// weight. All of them lie inside the source.
static void sample_columns(CoordinateLine x, int first, int32_t* left, int16_t* weight, int n) {
    int k = 0;
#ifdef ORVEX_VEC
    enum { kLanes = kBytes / 4 };
    I32 lane;
    for (int i = 0; i < kLanes; ++i) lane[i] = i;
    for (; k + kLanes <= n; k += kLanes) {
        const F32 at = (x.row_share + x.step * __builtin_convertvector(lane + (first + k), F32)) + x.offset;
        const I32 floor = __builtin_convertvector(at, I32);
        const F32 rest = 1.0f - (at - __builtin_convertvector(floor, F32));
        const I32 weights = __builtin_convertvector(rest * (float)kOne_q11, I32);
        store(left + k, (U8)floor);
        for (int i = 0; i < kLanes; ++i) weight[k + i] = (int16_t)weights[i];
    }
#endif
    for (; k < n; ++k) {
        const float at = (x.row_share + x.step * (float)(first + k)) + x.offset;
        left[k] = (int)at;
        weight[k] = (int16_t)((1.0f - (at - (float)left[k])) * (float)kOne_q11);
    }
}

// H along one source row: out_q11[e] = row[at[e]] * weight[e] + row[at[e] + channels] * (2048 - weight[e])
// for the n bytes of an output row.
static void stretch_row(const uint8_t* row, const int32_t* at, const int16_t* weight, int channels,
                        int32_t* out_q11, ptrdiff_t n) {
    for (ptrdiff_t e = 0; e < n; ++e)
        out_q11[e] = row[at[e]] * weight[e] + row[at[e] + channels] * (kOne_q11 - weight[e]);
}

// The same where each four output bytes take theirs from 16 source bytes: of step s those from base[s] on.
// index holds 16 bytes a step, pairs of a position there and 255, and weights 8 a step, both weights of each
// output byte. Without byte shuffles it is no gain.
static bool can_stretch_in_steps() {
#ifdef ORVEX_LOOKUP
    return true;
#else
    return false;
#endif
}

static void stretch_row_in_steps(const uint8_t* row, const int32_t* base, const uint8_t* index,
                                 const int16_t* weights, int32_t* out_q11, ptrdiff_t steps) {
    ptrdiff_t s = 0;
#ifdef ORVEX_LOOKUP
    enum { kSteps = kBytes / 16 };
    for (; s + kSteps <= steps; s += kSteps) {
        const U8 pixels = load_halves(row + base[s], base[s + kSteps - 1] - base[s]);
        store(out_q11 + 4 * s,
              (U8)multiply_add_pairs((I16)pick(pixels, load(index + 16 * s)), (I16)load(weights + 8 * s)));
    }
#endif
    for (; s < steps; ++s) {
        const uint8_t* const pixels = row + base[s];
        for (int e = 0; e < 4; ++e)
            out_q11[4 * s + e] = pixels[index[16 * s + 4 * e]] * weights[8 * s + 2 * e] +
                                 pixels[index[16 * s + 4 * e + 2]] * weights[8 * s + 2 * e + 1];
    }
}

// out[e] = (upper[e] * weight + lower[e] * (2048 - weight)) >> 22.
static void blend_rows(const int32_t* upper_q11, const int32_t* lower_q11, int weight, uint8_t* out,
                       ptrdiff_t n) {
    ptrdiff_t e = 0;
#ifdef ORVEX_VEC
    enum { kLanes = kBytes / 4 };
    for (; e + kBytes <= n; e += kBytes) {
        I32 sum[4];
        for (int q = 0; q < 4; ++q)
            sum[q] = ((I32)load(upper_q11 + e + q * kLanes) * weight +
                      (I32)load(lower_q11 + e + q * kLanes) * (kOne_q11 - weight)) >>
                     (2 * kWeightBits);
        store(out + e, narrow_to_bytes(sum[0], sum[1], sum[2], sum[3]));
    }
#endif
    for (; e < n; ++e)
        out[e] = (uint8_t)((upper_q11[e] * weight + lower_q11[e] * (kOne_q11 - weight)) >> (2 * kWeightBits));
}

// Both in one, where no stretched row serves twice: 4 * steps bytes of an output row between two source rows.
static void blend_rows_in_steps(const uint8_t* upper, const uint8_t* lower, const int32_t* base,
                                const uint8_t* index, const int16_t* weights, int weight, uint8_t* out,
                                ptrdiff_t steps) {
    ptrdiff_t s = 0;
#ifdef ORVEX_LOOKUP
    enum { kSteps = kBytes / 16, kGroup = 4 * kSteps };
    while (s < steps && steps >= kGroup) {
        s = s + kGroup <= steps ? s : steps - kGroup;  // the last ones, some of them once more
        I32 sum[4];
        ORVEX_UNROLL
        for (int q = 0; q < 4; ++q) {
            const ptrdiff_t at = s + q * kSteps, apart = base[at + kSteps - 1] - base[at];
            const U8 from = load(index + 16 * at);
            const I16 by = (I16)load(weights + 8 * at);
            const I32 above = multiply_add_pairs((I16)pick(load_halves(upper + base[at], apart), from), by),
                      below = multiply_add_pairs((I16)pick(load_halves(lower + base[at], apart), from), by);
            sum[q] = (above * weight + below * (kOne_q11 - weight)) >> (2 * kWeightBits);
        }
        store(out + 4 * s, narrow_to_bytes(sum[0], sum[1], sum[2], sum[3]));
        s += kGroup;
    }
#endif
    for (; s < steps; ++s) {
        int32_t above[4], below[4];
        stretch_row_in_steps(upper, base + s, index + 16 * s, weights + 8 * s, above, 1);
        stretch_row_in_steps(lower, base + s, index + 16 * s, weights + 8 * s, below, 1);
        blend_rows(above, below, weight, out + 4 * s, 4);
    }
}

#ifdef ORVEX_VEC
// What narrow() made of two vectors whose halves follow each other.
ORVEX_INLINE U8 quarters_in_order(U8 v) {
#if ORVEX_VEC == 32
    return (U8)__builtin_shufflevector((U64)v, (U64)v, 0, 2, 1, 3);
#else
    return v;
#endif
}

// Means, truncated, of two neighbouring bytes of both rows.
ORVEX_INLINE I16 mean_of_pairs(U8 upper, U8 lower) {
    return (I16)((add_pairs(upper) + add_pairs(lower)) >> 2);
}
#endif

#ifdef ORVEX_LOOKUP
// Of four output pixels of 3 bytes in every half, the 12 bytes from 24 of both rows; the other half's lie 24 bytes
// further on. Of 16 bytes that are read two output pixels take those from `skipped` on.
ORVEX_INLINE U8 halve_pixels(const uint8_t* upper, const uint8_t* lower, uint8_t skipped) {
    const U8 pairs = ORVEX_REPEAT(0, 3, 1, 4, 2, 5, 6, 9, 7, 10, 8, 11, 128, 128, 128, 128) + skipped;
    const U8 sixes = ORVEX_REPEAT(0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13, 255, 255, 255, 255);
    I16 mean[2];
    for (int two = 0; two < 2; ++two) {
        const ptrdiff_t at = 12 * two - skipped;
        mean[two] =
            mean_of_pairs(pick(load_halves(upper + at, 24), pairs), pick(load_halves(lower + at, 24), pairs));
    }
    return pick(narrow(mean[0], mean[1]), sixes);
}

#if ORVEX_VEC == 32
// The same where 4 bytes before those of the output pixels may be read, too: from there 32 bytes have those of four
// pixels, two in each half.
ORVEX_INLINE U8 halve_pixels_after_others(const uint8_t* upper, const uint8_t* lower) {
    const U8 pairs = U8{4, 7, 5, 8, 6, 9, 10, 13, 11, 14, 12, 15, 128, 128, 128, 128,
                        0, 3, 1, 4, 2, 5, 6,  9,  7,  10, 8,  11, 128, 128, 128, 128};
    const U8 sixes = ORVEX_REPEAT(0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13, 255, 255, 255, 255);
    I16 mean[2];
    for (int four = 0; four < 2; ++four) {
        const ptrdiff_t at = 24 * four - 4;
        mean[four] = mean_of_pairs(pick(load(upper + at), pairs), pick(load(lower + at), pairs));
    }
    return pick(quarters_in_order(narrow(mean[0], mean[1])), sixes);
}
#endif
#endif

// Four weights of a quarter each: pixel k of an output row is the truncated mean of the pixels 2k and 2k +
// 1 of two source rows.
static inline void halve_two_rows(const uint8_t* upper, const uint8_t* lower, int channels, uint8_t* out,
                                  ptrdiff_t n) {
    ptrdiff_t k = 0;
#ifdef ORVEX_VEC
    if (channels == 1) {
        for (; k + kBytes <= n; k += kBytes) {
            const uint8_t *const u = upper + 2 * k, *const l = lower + 2 * k;
            prefetch_ahead(u), prefetch_ahead(l);
            const U8 v =
                narrow(mean_of_pairs(load(u), load(l)), mean_of_pairs(load(u + kBytes), load(l + kBytes)));
            store(out + k, quarters_in_order(v));
        }
    }
#endif
#ifdef ORVEX_LOOKUP
    if (channels == 3) {
        // 4 bytes too many are read and written: they belong to the next pixels, of which there must be two.
        enum { kPixels = kBytes / 4 };
        for (; k + kPixels + 2 <= n; k += kPixels) {
            const uint8_t *const u = upper + 6 * k, *const l = lower + 6 * k;
            prefetch_ahead(u), prefetch_ahead(l);
#if ORVEX_VEC == 32
            store_halves(out + 3 * k, 12, k > 0 ? halve_pixels_after_others(u, l) : halve_pixels(u, l, 0));
#else
            store_halves(out + 3 * k, 12, halve_pixels(u, l, 0));
#endif
        }
        // The last ones, some perhaps once more, with the bytes before theirs; a pixel may be left between.
        if (k > 0) {
            n -= kPixels;
            uint8_t last[kBytes];
            store_halves(last, 12, halve_pixels(upper + 6 * n, lower + 6 * n, 4));
            __builtin_memcpy(out + 3 * n, last, 3 * kPixels);
        }
    }
#endif
    for (; k < n; ++k)
        for (int c = 0; c < channels; ++c) {
            const ptrdiff_t at = 2 * k * channels + c;
            out[k * channels + c] =
                (uint8_t)((upper[at] + upper[at + channels] + lower[at] + lower[at + channels]) >> 2);
        }
}

// `rows` output rows of n pixels, one behind the other, from twice as many source rows.
static void halve_rows(const uint8_t* src, ptrdiff_t stride, int channels, uint8_t* out, ptrdiff_t n,
                       int rows) {
    for (int row = 0; row < rows; ++row)
        halve_two_rows(src + 2 * row * stride, src + (2 * row + 1) * stride, channels,
                       out + row * n * channels, n);
}
