// Bit col % 64 of words[col / 64] says whether bytes[col] is not 0; bits from `cols` on are 0.
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
