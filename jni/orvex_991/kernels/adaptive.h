// Comparisons of pixels with sums over their windows. A pixel is above its window where it is above mean +
// offset, in double precision; above becomes 255, others 0, exclusive-ored with `invert` (0 or 255).

// As defined, one division a pixel, from sums of `counts` pixels.
static void compare_with_mean(const uint8_t* pixels, const uint32_t* sums, const int32_t* counts,
                              double offset, uint8_t* out, ptrdiff_t n, uint8_t invert) {
    for (ptrdiff_t i = 0; i < n; ++i) {
        const double mean = (double)(int32_t)sums[i] / (double)counts[i];
        out[i] = (uint8_t)((double)pixels[i] > mean + offset ? 255 : 0) ^ invert;
    }
}

// Pixel i is above where the sum of all rows' elements i is at most slope * pixel + intercept. 16 bits hold
// the sum of the first `narrow_rows` rows; all other numbers and their differences stay in 32.
static void compare_with_line(const uint8_t* pixels, const uint16_t* const* rows, int narrow_rows, int count,
                              int32_t slope, int32_t intercept, uint8_t* out, ptrdiff_t n, uint8_t invert) {
    (void)narrow_rows;
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    const U8 flip = U8{} + invert;
    for (; i + kBytes <= n; i += kBytes) {
        const U8 v = load(pixels + i);
        I32 is_below[4];
        for (int h = 0; h < 2; ++h) {
            const I16 pixel = (I16)(h ? widen_high(v) : widen_low(v));
            // Halves as widening leaves them: 8 lanes from the first 16, 8 from the second.
            const ptrdiff_t at = i + 8 * h;
            U16 sum16 = {};
            for (int k = 0; k < narrow_rows; ++k)
                sum16 += (U16)load_halves((const uint8_t*)(rows[k] + at), 32);
            I32 low = (I32)ORVEX_INTERLEAVE16_LOW(sum16, U16{}),
                high = (I32)ORVEX_INTERLEAVE16_HIGH(sum16, U16{});
            for (int k = narrow_rows; k < count; ++k) {
                const U16 part = (U16)load_halves((const uint8_t*)(rows[k] + at), 32);
                low += (I32)ORVEX_INTERLEAVE16_LOW(part, U16{});
                high += (I32)ORVEX_INTERLEAVE16_HIGH(part, U16{});
            }
            is_below[2 * h] = (I32)(low - intercept > widen16_low(pixel) * slope);
            is_below[2 * h + 1] = (I32)(high - intercept > widen16_high(pixel) * slope);
        }
        // Masks of -1 and 0: their complements, -1 where above, become 255 when shifted right without sign.
        const U16 above_low = (U16)~narrow16(is_below[0], is_below[1]) >> 8;
        const U16 above_high = (U16)~narrow16(is_below[2], is_below[3]) >> 8;
        store(out + i, narrow((I16)above_low, (I16)above_high) ^ flip);
    }
#endif
    for (; i < n; ++i) {
        int32_t sum = 0;
        for (int k = 0; k < count; ++k) sum += rows[k][i];
        out[i] = (uint8_t)(sum <= slope * pixels[i] + intercept ? 255 : 0) ^ invert;
    }
}
