// 255 * 4096 / x rounded to nearest, 0 for x = 0. Exact in single precision for every x in
// 1 .. 255 (test: hsv_division_equals_the_rounded_quotient).
static inline int hsv_division(int x) {
    return x == 0 ? 0 : (int)(1044480.0f / (float)x + 0.5f);
}

// H, S, V of one pixel. Deliberate: the hue divides by the saturation's table, so a step of h / diff is
// 255 * 15 / 128 = 29.88 units, not 30; the six corner hues still come out as 0, 30, .. 150
// (test: every_colour_converts_to_gray_and_hsv_as_defined).
static inline void hsv_of_pixel(int b, int g, int r, uint8_t* hsv) {
    const int largest = b > g ? (b > r ? b : r) : (g > r ? g : r);
    const int smallest = b < g ? (b < r ? b : r) : (g < r ? g : r);
    const int diff = largest - smallest;
    const int h = largest == r ? g - b : largest == g ? b - r + 2 * diff : r - g + 4 * diff;
    // |h| <= 5 * diff and division(diff) * diff < 1044480 + 128, so the product stays below 2^27.
    const int hue = ((hsv_division(diff) * h * 15 + 262144) >> 19) + (h < 0 ? 180 : 0);
    hsv[0] = (uint8_t)hue;
    hsv[1] = (uint8_t)((unsigned)(hsv_division(largest) * diff) >> 12);
    hsv[2] = (uint8_t)largest;
}

#ifdef ORVEX_VEC
// hsv_division of 1 .. 255.
ORVEX_INLINE I32 hsv_divisions(I32 x) {
    return __builtin_convertvector(1044480.0f / __builtin_convertvector(x, F32) + 0.5f, I32);
}
#endif

static void hsv_from_bgr(const uint8_t* bgr, uint8_t* hsv, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes <= n; i += kBytes) {
        U8 b, g, r;
        split3(bgr + 3 * i, &b, &g, &r);
        const U8 largest = maximum(maximum(b, g), r);
        const U8 diff = largest - minimum(minimum(b, g), r);
        const U8 is_red = (U8)(largest == r), is_green = (U8)(largest == g) & ~is_red;
        I32 hue[4], saturation[4];
        for (int h = 0; h < 2; ++h) {
#define ORVEX_WIDE(x) ((I16)(h ? widen_high(x) : widen_low(x)))
            const I16 blue = ORVEX_WIDE(b), green = ORVEX_WIDE(g), red = ORVEX_WIDE(r),
                      spread = ORVEX_WIDE(diff);
            const I16 value = ORVEX_WIDE(largest);
            // A mask of 255 in the low byte of each lane becomes one of the whole lane.
            const I16 red_lane = -(ORVEX_WIDE(is_red) & 1), green_lane = -(ORVEX_WIDE(is_green) & 1);
#undef ORVEX_WIDE
            const I16 from_blue = red - green + 4 * spread;
            const I16 from_green = blue - red + 2 * spread;
            const I16 numerator = (red_lane & (green - blue)) | (green_lane & from_green) |
                                  (~(red_lane | green_lane) & from_blue);
            const I16 fifteen_times = 15 * numerator;  // at most 15 * 5 * 255 < 2^15
            for (int q = 0; q < 2; ++q) {
                const I32 d = q ? widen16_high(spread) : widen16_low(spread);
                const I32 v = q ? widen16_high(value) : widen16_low(value);
                const I32 h15 = q ? widen16_high(fifteen_times) : widen16_low(fifteen_times);
                // Where a divisor is 0 the product's other factor is, too.
                saturation[2 * h + q] = (hsv_divisions(v > 1 ? v : I32{} + 1) * d) >> 12;
                const I32 sector = (hsv_divisions(d > 1 ? d : I32{} + 1) * h15 + 262144) >> 19;
                hue[2 * h + q] = sector + ((I32)(h15 < 0) & 180);
            }
        }
        const I16 hues[2] = {narrow16(hue[0], hue[1]), narrow16(hue[2], hue[3])};
        const I16 saturations[2] = {narrow16(saturation[0], saturation[1]),
                                    narrow16(saturation[2], saturation[3])};
        join3(hsv + 3 * i, hues, saturations, largest);
    }
#endif
    for (; i < n; ++i) hsv_of_pixel(bgr[3 * i], bgr[3 * i + 1], bgr[3 * i + 2], hsv + 3 * i);
}

// Pixels that are not 3 bytes apart: pixel i is the 3 bytes at i * stride, stride >= 0. Bytes at or beyond
// `bytes` count as 0 and are not read.
static void hsv_from_strided(const uint8_t* pixels, ptrdiff_t bytes, ptrdiff_t stride, uint8_t* hsv,
                             ptrdiff_t n) {
    for (ptrdiff_t i = 0; i < n; ++i, hsv += 3) {
        const ptrdiff_t at = i * stride;
        const int b = at < bytes ? pixels[at] : 0;
        const int g = at + 1 < bytes ? pixels[at + 1] : 0;
        const int r = at + 2 < bytes ? pixels[at + 2] : 0;
        hsv_of_pixel(b, g, r, hsv);
    }
}
