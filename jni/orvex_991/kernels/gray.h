// gray[i] = (107 B + 601 G + 306 R + 512) >> 10, 0 <= i < n, from interleaved B, G, R bytes.
// Deliberate: blue weighs 107, so the weights sum to 1014 and white maps to 253 (test: white_maps_to_253).
static void gray_from_bgr(const uint8_t* bgr, uint8_t* gray, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    // The same in 16 bits: with each weight as 256 q + r, the r parts sum to at most 246 * 255 < 2^16, and
    // ((2 G + R + 2) + ((107 B + 89 G + 50 R) >> 8)) >> 2 equals the definition for every colour (test:
    // every_colour_converts_to_gray_and_hsv_as_defined).
    for (; i + kBytes <= n; i += kBytes) {
        U8 b, g, r;
        split3(bgr + 3 * i, &b, &g, &r);
        U16 half[2];
        for (int h = 0; h < 2; ++h) {
            const U16 blue = h ? widen_high(b) : widen_low(b), green = h ? widen_high(g) : widen_low(g),
                      red = h ? widen_high(r) : widen_low(r);
            half[h] = ((green + green + red + 2) + ((107 * blue + 89 * green + 50 * red) >> 8)) >> 2;
        }
        store(gray + i, narrow((I16)half[0], (I16)half[1]));
    }
#endif
    for (; i < n; ++i)
        gray[i] = (uint8_t)((107u * bgr[3 * i] + 601u * bgr[3 * i + 1] + 306u * bgr[3 * i + 2] + 512u) >> 10);
}
