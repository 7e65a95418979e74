// Sum and sum of squares of n bytes, n < 2^31: 255^2 * 2^31 < 2^47.
static void sum_bytes(const uint8_t* bytes, ptrdiff_t n, uint64_t* sum, uint64_t* sum_of_squares) {
    uint64_t total = 0, squares = 0;
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    while (i + kBytes <= n) {
        // 128 vectors: a 16-bit lane takes two bytes of each, 255 * 256 < 2^16; a 32-bit lane takes two
        // products of two squares of each, 4 * 255^2 * 128 < 2^31.
        const ptrdiff_t left = (n - i) / kBytes, end = i + kBytes * (left < 128 ? left : 128);
        U16 part = {};
        I32 part_squares = {};
        for (; i < end; i += kBytes) {
            const U8 v = load(bytes + i);
            const U16 low = widen_low(v), high = widen_high(v);
            part += low + high;
            part_squares += multiply_add_pairs((I16)low, (I16)low) + multiply_add_pairs((I16)high, (I16)high);
        }
        for (int lane = 0; lane < kBytes / 2; ++lane) total += part[lane];
        for (int lane = 0; lane < kBytes / 4; ++lane) squares += (uint32_t)part_squares[lane];
    }
#endif
    for (; i < n; ++i) {
        total += bytes[i];
        squares += (uint32_t)bytes[i] * bytes[i];
    }
    *sum = total;
    *sum_of_squares = squares;
}

static ptrdiff_t count_nonzero_bytes(const uint8_t* bytes, ptrdiff_t n) {
    ptrdiff_t count = 0;
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    while (i + kBytes <= n) {
        const ptrdiff_t left = (n - i) / kBytes,
                        end = i + kBytes * (left < 255 ? left : 255);  // lanes are bytes
        U8 zeros = {};
        ptrdiff_t seen = end - i;
        for (; i < end; i += kBytes) zeros -= (U8)(load(bytes + i) == 0);
        for (int lane = 0; lane < kBytes; ++lane) seen -= zeros[lane];
        count += seen;
    }
#endif
    for (; i < n; ++i) count += bytes[i] != 0;
    return count;
}
