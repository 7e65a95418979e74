// out[i] = table[bytes[i]], 0 <= i < n. In place is allowed.
static void look_up_bytes(const uint8_t* bytes, const uint8_t* table, uint8_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_LOOKUP
    // Of each quarter of the table, the sixteenth of it that an index points into; then the top bits choose a quarter.
    U8 part[16];
    ORVEX_UNROLL
    for (int k = 0; k < 16; ++k) part[k] = load_halves(table + 16 * k, 0);
#ifdef ORVEX_PICKS_BY_LOW_BITS
    // Sixteenths before that one are picked from, too: each holds how it differs from the one before.
    ORVEX_UNROLL
    for (int k = 15; k > 0; --k)
        if (k % 4 != 0) part[k] ^= part[k - 1];
#endif
    for (; i + kBytes <= n; i += kBytes) {
        const U8 v = load(bytes + i);
        U8 index = v & 63, chosen[4] = {};
        ORVEX_UNROLL
        for (int k = 0; k < 4; ++k, index -= 16) {
            ORVEX_UNROLL
            for (int quarter = 0; quarter < 4; ++quarter)
                chosen[quarter] ^= pick(part[4 * quarter + k], index);
        }
        const U8 bit6 = v + v;  // on top of its byte
        const U8 low = (I8)bit6 < 0 ? chosen[1] : chosen[0], high = (I8)bit6 < 0 ? chosen[3] : chosen[2];
        store(out + i, (I8)v < 0 ? high : low);
    }
#endif
    for (; i < n; ++i) out[i] = table[bytes[i]];
}
