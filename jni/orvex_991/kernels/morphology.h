// Bit col % 64 of words[col / 64] says whether bytes[col] is below 128; bits from `cols` on are 0.
static void pack_below_128(const uint8_t* bytes, uint64_t* words, int cols) {
    int at = 0;
#ifdef ORVEX_VEC
    for (; at + 64 <= cols; at += 64) {
        uint64_t above = 0;
        for (int part = 0; part < 64; part += kBytes)
            above |= (uint64_t)top_bits(load(bytes + at + part)) << part;
        words[at / 64] = ~above;
    }
#endif
    for (; at < cols; at += 64) {
        const int width = cols - at < 64 ? cols - at : 64;
        uint64_t word = 0;
        for (int bit = 0; bit < width; ++bit) word |= (uint64_t)(bytes[at + bit] < 128) << bit;
        words[at / 64] = word;
    }
}

// bytes[col] = 255 where the bit of `col` is set, else 0, exclusive-ored with `invert` (0 or 255).
static void unpack_bits(const uint64_t* words, uint8_t* bytes, int cols, uint8_t invert) {
    int col = 0;
#ifdef ORVEX_VEC
    // Eight copies of a byte of bits, one bit kept in each.
    const U64 bit = U64{} + 0x8040201008040201u;
    const U8 flip = U8{} + invert;
    for (; col + 64 <= cols; col += 64) {
        const uint64_t word = words[col / 64];
        ORVEX_UNROLL
        for (int part = 0; part < 64; part += kBytes) {
            U64 copies;
            ORVEX_UNROLL
            for (int lane = 0; lane < kBytes / 8; ++lane)
                copies[lane] = (word >> (part + 8 * lane) & 255) * 0x0101010101010101u;
            store(bytes + col + part, (U8)((U8)(copies & bit) != 0) ^ flip);
        }
    }
#endif
    for (; col < cols; ++col) bytes[col] = (uint8_t)(0 - (words[col / 64] >> (col % 64) & 1)) ^ invert;
}

// out[i] = a[i] | b[i]. `out` may be either input.
static void or_words(const uint64_t* a, const uint64_t* b, uint64_t* out, int n) {
    for (int i = 0; i < n; ++i) out[i] = a[i] | b[i];
}
