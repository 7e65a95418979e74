// Whole rows combined element by element, for windows. `out` may alias `a`, and `b` may lie ahead of
// `out` in the same row.

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

// Sums wrap in 16 bits.
static void add_words16(const uint16_t* a, const uint16_t* b, uint16_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes / 2 <= n; i += kBytes / 2) store(out + i, (U8)((U16)load(a + i) + (U16)load(b + i)));
#endif
    for (; i < n; ++i) out[i] = (uint16_t)(a[i] + b[i]);
}

// Sums wrap in 32 bits.
static void add_words32(const uint32_t* a, const uint32_t* b, uint32_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes / 4 <= n; i += kBytes / 4) store(out + i, (U8)((U32)load(a + i) + (U32)load(b + i)));
#endif
    for (; i < n; ++i) out[i] = a[i] + b[i];
}

// out[i] = bytes[i], as 16 bits.
static void widen_bytes16(const uint8_t* bytes, uint16_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes <= n; i += kBytes) {
        const U8 v = load(bytes + i);
        store_halves((uint8_t*)(out + i), 32, (U8)widen_low(v));
        store_halves((uint8_t*)(out + i) + 16, 32, (U8)widen_high(v));
    }
#endif
    for (; i < n; ++i) out[i] = bytes[i];
}

// out[i] = the sum of all rows' elements i, which 16 bits hold.
static void sum_rows16(const uint16_t* const* rows, int count, uint16_t* out, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_VEC
    for (; i + kBytes / 2 <= n; i += kBytes / 2) {
        U16 sum = (U16)load(rows[0] + i);
        for (int k = 1; k < count; ++k) sum += (U16)load(rows[k] + i);
        store(out + i, (U8)sum);
    }
#endif
    for (; i < n; ++i) {
        uint16_t sum = 0;
        for (int k = 0; k < count; ++k) sum = (uint16_t)(sum + rows[k][i]);
        out[i] = sum;
    }
}

// The same in 32 bits.
static void sum_rows32(const uint16_t* const* rows, int count, uint32_t* out, ptrdiff_t n) {
    for (ptrdiff_t i = 0; i < n; ++i) {
        uint32_t sum = 0;
        for (int k = 0; k < count; ++k) sum += rows[k][i];
        out[i] = sum;
    }
}
