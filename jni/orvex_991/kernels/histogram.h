// counts[v] = how many of the n bytes are v, n < 2^31. Four tables, so that runs of one value do not wait for
// their own counter.
static void count_bytes(const uint8_t* bytes, ptrdiff_t n, uint32_t* counts) {
    uint32_t tables[4][256] = {};
    ptrdiff_t i = 0;
    for (; i + 4 <= n; i += 4) {
        ++tables[0][bytes[i]];
        ++tables[1][bytes[i + 1]];
        ++tables[2][bytes[i + 2]];
        ++tables[3][bytes[i + 3]];
    }
    for (; i < n; ++i) ++tables[0][bytes[i]];
    for (int v = 0; v < 256; ++v) counts[v] = tables[0][v] + tables[1][v] + tables[2][v] + tables[3][v];
}

// The same over the bytes whose mask byte is not 0.
static void count_masked_bytes(const uint8_t* bytes, const uint8_t* mask, ptrdiff_t n, uint32_t* counts) {
    uint32_t tables[4][256] = {};
    ptrdiff_t i = 0;
    for (; i + 4 <= n; i += 4) {
        tables[0][bytes[i]] += mask[i] != 0;
        tables[1][bytes[i + 1]] += mask[i + 1] != 0;
        tables[2][bytes[i + 2]] += mask[i + 2] != 0;
        tables[3][bytes[i + 3]] += mask[i + 3] != 0;
    }
    for (; i < n; ++i) tables[0][bytes[i]] += mask[i] != 0;
    for (int v = 0; v < 256; ++v) counts[v] = tables[0][v] + tables[1][v] + tables[2][v] + tables[3][v];
}
