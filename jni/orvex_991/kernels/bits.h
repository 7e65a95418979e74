// Binary rows in packed bits: column col is bit col % 64 of words[col / 64].

// The bit of col says whether bytes[col] is not 0; bits from `cols` on are 0.
static void pack_nonzero(const uint8_t* bytes, uint64_t* words, int cols) {
    int at = 0;
#ifdef ORVEX_VEC
    for (; at + 64 <= cols; at += 64) {
        uint64_t zeros = 0;
        for (int part = 0; part < 64; part += kBytes)
            zeros |= (uint64_t)top_bits((U8)(load(bytes + at + part) == 0)) << part;
        words[at / 64] = ~zeros;
    }
#endif
    for (; at < cols; at += 64) {
        const int width = cols - at < 64 ? cols - at : 64;
        uint64_t word = 0;
        for (int bit = 0; bit < width; ++bit) word |= (uint64_t)(bytes[at + bit] != 0) << bit;
        words[at / 64] = word;
    }
}

// The bit of col says whether bytes[col] is below 128; bits from `cols` on are 0.
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

// out[i] = a[i] | b[i]. `out` may alias either input.
static void or_words(const uint64_t* a, const uint64_t* b, uint64_t* out, int n) {
    for (int i = 0; i < n; ++i) out[i] = a[i] | b[i];
}

// Index of the lowest set bit of a word that is not 0.
static inline int lowest_bit(uint64_t word) {
#ifdef __GNUC__
    return __builtin_ctzll(word);
#else
    int bit = 0;
    while (!(word >> bit & 1)) ++bit;
    return bit;
#endif
}

// Where the runs of set bits begin and end, in turn and ascending; a run that reaches the last column ends at
// `cols`. Bits from `cols` on must be 0. Returns how many there are, an even number of at most cols + 1.
static int find_runs(const uint64_t* words, int cols, int32_t* bounds) {
    // There a bit differs from the one before it.
    int32_t* next = bounds;
    uint64_t last_bit = 0;
    const ptrdiff_t used_words = ((ptrdiff_t)cols + 63) / 64;
    for (ptrdiff_t w = 0; w < used_words; ++w) {
        uint64_t changes = words[w] ^ (words[w] << 1 | last_bit);
        last_bit = words[w] >> 63;
        for (; changes; changes &= changes - 1) *next++ = (int32_t)(64 * w) + lowest_bit(changes);
    }
    if ((next - bounds) % 2 != 0) *next++ = cols;
    return (int)(next - bounds);
}
