// Four tables, so that runs of one value do not wait for their own counter.
static inline void count_four(const uint8_t* bytes, uint32_t tables[4][256]) {
    ++tables[0][bytes[0]];
    ++tables[1][bytes[1]];
    ++tables[2][bytes[2]];
    ++tables[3][bytes[3]];
}

// counts[v] = how many of the n bytes are v, n < 2^31.
static void count_bytes(const uint8_t* bytes, ptrdiff_t n, uint32_t* counts) {
    uint32_t tables[4][256] = {};
    ptrdiff_t i = 0;
    for (; i + 4 <= n; i += 4) count_four(bytes + i, tables);
    for (; i < n; ++i) ++tables[0][bytes[i]];
    for (int v = 0; v < 256; ++v) counts[v] = tables[0][v] + tables[1][v] + tables[2][v] + tables[3][v];
}

// The same over the bytes whose mask byte is not 0.
static void count_masked_bytes(const uint8_t* bytes, const uint8_t* mask, ptrdiff_t n, uint32_t* counts) {
    uint32_t tables[4][256] = {};
    ptrdiff_t i = 0;
    while (i < n) {
        // Masks are mostly areas: where a stretch of one is all or nothing, its bytes need not be looked at.
        const ptrdiff_t end = n - i < 64 ? n : i + 64;
        const int whole = end - i == 64;
        uint64_t selected = 0;
        if (whole) pack_nonzero(mask + i, &selected, 64);
        if (whole && selected == ~(uint64_t)0) {
            for (; i < end; i += 4) count_four(bytes + i, tables);
        } else if (whole && selected == 0) {
            i = end;
        } else {
            for (; i < end; ++i) tables[i & 3][bytes[i]] += mask[i] != 0;
        }
    }
    for (int v = 0; v < 256; ++v) counts[v] = tables[0][v] + tables[1][v] + tables[2][v] + tables[3][v];
}
