// out[i] = 0 where bytes[i] < threshold, else 255; 0 <= threshold <= 255. In place is allowed.
static void threshold_bytes(const uint8_t* bytes, uint8_t* out, ptrdiff_t n, int threshold) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    const U8 level = U8{} + (uint8_t)threshold;
    for (; i + kBytes <= n; i += kBytes) {
        const U8 v = load(bytes + i);
        store(out + i, (U8)(maximum(v, level) == v));
    }
#endif
    for (; i < n; ++i) out[i] = bytes[i] < threshold ? 0 : 255;
}

// As threshold_bytes, every result then exclusive-ored with `invert` (0 or 255), and 0 where the mask byte is
// 0. `out` may alias either input.
static void threshold_masked_bytes(const uint8_t* bytes, const uint8_t* mask, uint8_t* out, ptrdiff_t n,
                                   int threshold, uint8_t invert) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    const U8 level = U8{} + (uint8_t)threshold, flip = U8{} + invert;
    for (; i + kBytes <= n; i += kBytes) {
        const U8 v = load(bytes + i);
        store(out + i, ((U8)(maximum(v, level) == v) ^ flip) & (U8)(load(mask + i) != 0));
    }
#endif
    for (; i < n; ++i) out[i] = mask[i] == 0 ? 0 : (uint8_t)((bytes[i] < threshold ? 0 : 255) ^ invert);
}
