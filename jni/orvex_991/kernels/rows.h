// Whole rows combined element by element, for windows. `out` may be `a`; `b` may lie ahead of `out` in one
// row.

static void max_bytes(const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes <= n; i += kBytes) store(out + i, maximum(load(a + i), load(b + i)));
#endif
    for (; i < n; ++i) out[i] = a[i] > b[i] ? a[i] : b[i];
}

static void min_bytes(const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes <= n; i += kBytes) store(out + i, minimum(load(a + i), load(b + i)));
#endif
    for (; i < n; ++i) out[i] = a[i] < b[i] ? a[i] : b[i];
}

static void subtract_bytes(const uint8_t* a, const uint8_t* b, uint8_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes <= n; i += kBytes) store(out + i, load(a + i) - load(b + i));
#endif
    for (; i < n; ++i) out[i] = (uint8_t)(a[i] - b[i]);
}

// Sums wrap in 32 bits.
static void add_words32(const uint32_t* a, const uint32_t* b, uint32_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes / 4 <= n; i += kBytes / 4) store(out + i, (U8)((U32)load(a + i) + (U32)load(b + i)));
#endif
    for (; i < n; ++i) out[i] = a[i] + b[i];
}
