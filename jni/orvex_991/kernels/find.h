// Index of the first byte that is not 0, or n.
static ptrdiff_t find_nonzero(const uint8_t* bytes, ptrdiff_t n) {
    ptrdiff_t at = 0;
#ifdef ORVEX_VEC
    for (; at + 2 * kBytes <= n; at += 2 * kBytes)
        if (top_bits((U8)((load(bytes + at) | load(bytes + at + kBytes)) != 0))) break;
    for (; at + kBytes <= n; at += kBytes) {
        const uint32_t bits = top_bits((U8)(load(bytes + at) != 0));
        if (bits) return at + __builtin_ctz(bits);
    }
#endif
    while (at < n && bytes[at] == 0) ++at;
    return at;
}

// Index of the last byte that is not 0, or -1.
static ptrdiff_t find_last_nonzero(const uint8_t* bytes, ptrdiff_t n) {
#ifdef ORVEX_VEC
    for (; n >= 2 * kBytes; n -= 2 * kBytes)
        if (top_bits((U8)((load(bytes + n - kBytes) | load(bytes + n - 2 * kBytes)) != 0))) break;
    for (; n >= kBytes; n -= kBytes) {
        const uint32_t bits = top_bits((U8)(load(bytes + n - kBytes) != 0));
        if (bits) return n - kBytes + 31 - __builtin_clz(bits);
    }
#endif
    while (n > 0 && bytes[n - 1] == 0) --n;
    return n - 1;
}
