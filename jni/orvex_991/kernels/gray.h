#ifdef ORVEX_VEC
// In 16 bits: with each weight as 256 q + r, the r parts sum to at most 246 * 255 < 2^16, and
// ((2 G + R + 2) + ((107 B + 89 G + 50 R) >> 8)) >> 2 equals the definition for every colour (test:
// every_colour_converts_to_gray_and_hsv_as_defined). `wholes` is 2 G + R, `rests` the sum of the r parts.
ORVEX_INLINE I16 gray_of(U16 wholes, U16 rests) {
    return (I16)((wholes + 2 + (rests >> 8)) >> 2);
}
#endif

#ifdef ORVEX_BYTE_PRODUCTS
// Of eight pixels in each half of the result; those of the other half lie 48 bytes further on.
ORVEX_INLINE I16 gray_of_eight(const uint8_t* bgr) {
    // Of four pixels their bytes B and G, and then their bytes G and R.
    const U8 pairs = ORVEX_REPEAT(0, 1, 3, 4, 6, 7, 9, 10, 1, 2, 4, 5, 7, 8, 10, 11);
    const U64 four = (U64)pick(load_halves(bgr, 48), pairs),
              next = (U64)pick(load_halves(bgr + 8, 48), pairs + 4);
    const U8 bg = (U8)ORVEX_INTERLEAVE64_LOW(four, next), gr = (U8)ORVEX_INTERLEAVE64_HIGH(four, next);
    // G's 89 is parted so that neither sum of two leaves 15 bits.
    return gray_of((U16)multiply_add_byte_pairs(gr, (I8)(U16{} + 0x0102)),
                   (U16)multiply_add_byte_pairs(bg, (I8)(U16{} + (20 << 8 | 107))) +
                       (U16)multiply_add_byte_pairs(gr, (I8)(U16{} + (50 << 8 | 69))));
}
#endif

// gray[i] = (107 B + 601 G + 306 R + 512) >> 10, 0 <= i < n, from interleaved B, G, R bytes.
// Deliberate: blue weighs 107, so the weights sum to 1014 and white maps to 253 (test: white_maps_to_253).
static void gray_from_bgr(const uint8_t* bgr, uint8_t* gray, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes <= n; i += kBytes) {
#ifdef ORVEX_BYTE_PRODUCTS
        store(gray + i, narrow(gray_of_eight(bgr + 3 * i), gray_of_eight(bgr + 3 * i + 24)));
#else
        U8 b, g, r;
        split3(bgr + 3 * i, &b, &g, &r);
        I16 half[2];
        for (int h = 0; h < 2; ++h) {
            const U16 blue = h ? widen_high(b) : widen_low(b), green = h ? widen_high(g) : widen_low(g),
                      red = h ? widen_high(r) : widen_low(r);
            half[h] = gray_of(green + green + red, 107 * blue + 89 * green + 50 * red);
        }
        store(gray + i, narrow(half[0], half[1]));
#endif
    }
#endif
    for (; i < n; ++i)
        gray[i] = (uint8_t)((107u * bgr[3 * i] + 601u * bgr[3 * i + 1] + 306u * bgr[3 * i + 2] + 512u) >> 10);
}
