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
        const U8 twice = v + v, four_times = twice + twice;
        const U8 bits[4] = {four_times + four_times, four_times, twice, v};  // bit 4, 5, 6, 7 on top
        ORVEX_UNROLL
        for (int step = 0; step < 4; ++step) {
            ORVEX_UNROLL
            for (int k = 0; k < 8 >> step; ++k)
                chosen[k] = (I8)bits[step] < 0 ? chosen[2 * k + 1] : chosen[2 * k];
        }
        store(out + i, chosen[0]);
    }
#endif
    for (; i < n; ++i) out[i] = table[bytes[i]];
}
