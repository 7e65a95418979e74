// out[i] = table[bytes[i]], 0 <= i < n. In place is allowed.
static void look_up_bytes(const uint8_t* bytes, const uint8_t* table, uint8_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_LOOKUP
    // All 16 sixteenths of the table are asked for the low four bits; the high ones then choose, bit by bit.
    U8 part[16];
    ORVEX_UNROLL
    for (int k = 0; k < 16; ++k) part[k] = load_halves(table + 16 * k, 0);
    for (; i + kBytes <= n; i += kBytes) {
        const U8 v = load(bytes + i);
        const U8 low = v & 15;
        U8 chosen[16];
        ORVEX_UNROLL
        for (int k = 0; k < 16; ++k) chosen[k] = pick(part[k], low);
        const U8 bit7 = v, bit6 = v + v, bit5 = bit6 + bit6, bit4 = bit5 + bit5;  // each on top of its byte
        ORVEX_UNROLL
        for (int k = 0; k < 8; ++k) chosen[k] = (I8)bit4 < 0 ? chosen[2 * k + 1] : chosen[2 * k];
        ORVEX_UNROLL
        for (int k = 0; k < 4; ++k) chosen[k] = (I8)bit5 < 0 ? chosen[2 * k + 1] : chosen[2 * k];
        ORVEX_UNROLL
        for (int k = 0; k < 2; ++k) chosen[k] = (I8)bit6 < 0 ? chosen[2 * k + 1] : chosen[2 * k];
        chosen[0] = (I8)bit7 < 0 ? chosen[1] : chosen[0];
        store(out + i, chosen[0]);
    }
#endif
    for (; i < n; ++i) out[i] = table[bytes[i]];
}
