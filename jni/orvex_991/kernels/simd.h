// The vectors that the streaming kernels are written with: ORVEX_VEC bytes (16 or 32) of the GCC and Clang
// vector extension, whose operators work lane by lane. Only what the operators cannot say has a function
// here, the few instructions that compilers do not find by themselves with one branch a processor.
//
// Where bytes are widened to 16 bits and back, vectors of 32 bytes work in two halves of 16 that never mix:
// widening takes the lower and the upper 8 bytes of each half, and narrowing puts them back in order.

#define ORVEX_INLINE static inline __attribute__((always_inline))

// Before loops over a few vectors, which shall stay in registers: at -O2 GCC does not unroll them by itself.
// Clang does.
#ifdef __clang__
#define ORVEX_UNROLL
#else
#define ORVEX_UNROLL _Pragma("GCC unroll 16")
#endif

typedef uint8_t U8 __attribute__((vector_size(ORVEX_VEC)));
typedef int8_t I8 __attribute__((vector_size(ORVEX_VEC)));
typedef uint16_t U16 __attribute__((vector_size(ORVEX_VEC)));
typedef int16_t I16 __attribute__((vector_size(ORVEX_VEC)));
typedef uint32_t U32 __attribute__((vector_size(ORVEX_VEC)));
typedef int32_t I32 __attribute__((vector_size(ORVEX_VEC)));
typedef uint64_t U64 __attribute__((vector_size(ORVEX_VEC)));
typedef float F32 __attribute__((vector_size(ORVEX_VEC)));
typedef uint8_t Half __attribute__((vector_size(16)));

enum { kBytes = ORVEX_VEC };

ORVEX_INLINE U8 load(const void* from) {
    U8 v;
    __builtin_memcpy(&v, from, sizeof v);
    return v;
}

ORVEX_INLINE void store(void* to, U8 v) {
    __builtin_memcpy(to, &v, sizeof v);
}

// Asks for the memory where a loop over short rows will be some rows further on, perhaps beyond the image: streams
// that change places with every row are more than the processor foresees.
ORVEX_INLINE void prefetch_ahead(const uint8_t* at) {
#ifdef ORVEX_SSE2
    enum { kAhead = 2560 };
    // NOLINTNEXTLINE(performance-no-int-to-ptr): beyond the image there is no pointer to compute with.
    __builtin_prefetch((const void*)((uintptr_t)at + kAhead));
#else
    (void)at;
#endif
}

// The same vector; compilers do not see what is in it.
ORVEX_INLINE I16 opaque(I16 v) {
#if defined(__GNUC__) && (defined(__SSE2__) || defined(__AVX2__))
    __asm__("" : "+x"(v));
#endif
    return v;
}

ORVEX_INLINE U8 maximum(U8 a, U8 b) {
    return a > b ? a : b;
}
ORVEX_INLINE U8 minimum(U8 a, U8 b) {
    return a < b ? a : b;
}

#if ORVEX_VEC == 32
#define ORVEX_INTERLEAVE_LOW(a, b)                                                                        \
    __builtin_shufflevector(a, b, 0, 32, 1, 33, 2, 34, 3, 35, 4, 36, 5, 37, 6, 38, 7, 39, 16, 48, 17, 49, \
                            18, 50, 19, 51, 20, 52, 21, 53, 22, 54, 23, 55)
#define ORVEX_INTERLEAVE_HIGH(a, b)                                                                         \
    __builtin_shufflevector(a, b, 8, 40, 9, 41, 10, 42, 11, 43, 12, 44, 13, 45, 14, 46, 15, 47, 24, 56, 25, \
                            57, 26, 58, 27, 59, 28, 60, 29, 61, 30, 62, 31, 63)
#define ORVEX_INTERLEAVE16_LOW(a, b) \
    __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 8, 24, 9, 25, 10, 26, 11, 27)
#define ORVEX_INTERLEAVE16_HIGH(a, b) \
    __builtin_shufflevector(a, b, 4, 20, 5, 21, 6, 22, 7, 23, 12, 28, 13, 29, 14, 30, 15, 31)
#define ORVEX_INTERLEAVE64_LOW(a, b) __builtin_shufflevector(a, b, 0, 4, 2, 6)
#define ORVEX_INTERLEAVE64_HIGH(a, b) __builtin_shufflevector(a, b, 1, 5, 3, 7)
#else
#define ORVEX_INTERLEAVE_LOW(a, b) \
    __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23)
#define ORVEX_INTERLEAVE_HIGH(a, b) \
    __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31)
#define ORVEX_INTERLEAVE16_LOW(a, b) __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11)
#define ORVEX_INTERLEAVE16_HIGH(a, b) __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15)
#define ORVEX_INTERLEAVE64_LOW(a, b) __builtin_shufflevector(a, b, 0, 2)
#define ORVEX_INTERLEAVE64_HIGH(a, b) __builtin_shufflevector(a, b, 1, 3)
#endif

ORVEX_INLINE U16 widen_low(U8 v) {
    return (U16)ORVEX_INTERLEAVE_LOW(v, U8{});
}
ORVEX_INLINE U16 widen_high(U8 v) {
    return (U16)ORVEX_INTERLEAVE_HIGH(v, U8{});
}

// Bytes of signed 16-bit lanes, saturated to 0 .. 255.
ORVEX_INLINE U8 narrow(I16 low, I16 high) {
#if ORVEX_VEC == 32
    return (U8)_mm256_packus_epi16((__m256i)low, (__m256i)high);
#elif defined(ORVEX_SSE2)
    return (U8)_mm_packus_epi16((__m128i)low, (__m128i)high);
#elif defined(ORVEX_NEON64)
    return (U8)vqmovun_high_s16(vqmovun_s16((int16x8_t)low), (int16x8_t)high);
#else
    low = low < 0 ? I16{} : low > 255 ? I16{} + 255 : low;
    high = high < 0 ? I16{} : high > 255 ? I16{} + 255 : high;
    return __builtin_shufflevector((U8)low, (U8)high, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28,
                                   30);
#endif
}

// The same from 16 to 32 bits and back.
ORVEX_INLINE I32 widen16_low(I16 v) {
    return (I32)ORVEX_INTERLEAVE16_LOW(I16{}, v) >> 16;
}
ORVEX_INLINE I32 widen16_high(I16 v) {
    return (I32)ORVEX_INTERLEAVE16_HIGH(I16{}, v) >> 16;
}

// 16-bit lanes of 32-bit ones that they can hold.
ORVEX_INLINE I16 narrow16(I32 low, I32 high) {
#if ORVEX_VEC == 32
    return (I16)_mm256_packs_epi32((__m256i)low, (__m256i)high);
#elif defined(ORVEX_SSE2)
    return (I16)_mm_packs_epi32((__m128i)low, (__m128i)high);
#else
    return __builtin_shufflevector((I16)low, (I16)high, 0, 2, 4, 6, 8, 10, 12, 14);
#endif
}

// Sums of neighbouring products: lane i is a[2i] * b[2i] + a[2i + 1] * b[2i + 1].
ORVEX_INLINE I32 multiply_add_pairs(I16 a, I16 b) {
#if ORVEX_VEC == 32
    return (I32)_mm256_madd_epi16((__m256i)a, (__m256i)b);
#elif defined(ORVEX_SSE2)
    return (I32)_mm_madd_epi16((__m128i)a, (__m128i)b);
#elif defined(ORVEX_NEON64)
    return (I32)vpaddq_s32(vmull_s16(vget_low_s16((int16x8_t)a), vget_low_s16((int16x8_t)b)),
                           vmull_high_s16((int16x8_t)a, (int16x8_t)b));
#else
    return ((I32)a << 16 >> 16) * ((I32)b << 16 >> 16) + ((I32)a >> 16) * ((I32)b >> 16);
#endif
}

// The same of bytes and of signed ones, where that is one instruction; no sum may leave 16 bits.
#if ORVEX_VEC == 32
#define ORVEX_BYTE_PRODUCTS
ORVEX_INLINE I16 multiply_add_byte_pairs(U8 a, I8 b) {
    return (I16)_mm256_maddubs_epi16((__m256i)a, (__m256i)b);
}
#elif defined(ORVEX_SSSE3)
#define ORVEX_BYTE_PRODUCTS
ORVEX_INLINE I16 multiply_add_byte_pairs(U8 a, I8 b) {
    return (I16)_mm_maddubs_epi16((__m128i)a, (__m128i)b);
}
#endif

// Sums of neighbouring bytes: lane i is v[2i] + v[2i + 1].
ORVEX_INLINE U16 add_pairs(U8 v) {
#if defined(ORVEX_BYTE_PRODUCTS)
    return (U16)multiply_add_byte_pairs(v, I8{} + 1);
#elif defined(ORVEX_NEON64)
    return (U16)vpaddlq_u8((uint8x16_t)v);
#else
    return ((U16)v & 255) + ((U16)v >> 8);
#endif
}

// Bit i is the top bit of byte i.
ORVEX_INLINE uint32_t top_bits(U8 v) {
#if ORVEX_VEC == 32
    return (uint32_t)_mm256_movemask_epi8((__m256i)v);
#elif defined(ORVEX_SSE2)
    return (uint32_t)_mm_movemask_epi8((__m128i)v);
#else
    // The product gathers the eight top bits of a word, one from each byte, in its own top byte.
    const U64 words = (U64)(v >> 7);
    return (uint32_t)(words[0] * 0x0102040810204080u >> 56 | words[1] * 0x0102040810204080u >> 56 << 8);
#endif
}

// The bytes of kBytes 32-bit lanes that hold 0 .. 255, in order.
ORVEX_INLINE U8 narrow_to_bytes(I32 a, I32 b, I32 c, I32 d) {
    const U8 v = narrow(narrow16(a, b), narrow16(c, d));
#if ORVEX_VEC == 32
    return (U8)__builtin_shufflevector((U32)v, (U32)v, 0, 4, 1, 5, 2, 6, 3, 7);
#else
    return v;
#endif
}

// Where byte shuffles by a vector of indices are one instruction: each half of the result takes bytes of the
// same half of `table` by indices of 0 .. 15. Those of 128 or more give 0, and those between either 0, too, or the
// byte that their low four bits pick.
#if ORVEX_VEC == 32
#define ORVEX_LOOKUP
#define ORVEX_PICKS_BY_LOW_BITS
ORVEX_INLINE U8 pick(U8 table, U8 index) {
    return (U8)_mm256_shuffle_epi8((__m256i)table, (__m256i)index);
}
#elif defined(ORVEX_SSSE3)
#define ORVEX_LOOKUP
#define ORVEX_PICKS_BY_LOW_BITS
ORVEX_INLINE U8 pick(U8 table, U8 index) {
    return (U8)_mm_shuffle_epi8((__m128i)table, (__m128i)index);
}
#elif defined(ORVEX_NEON64)
#define ORVEX_LOOKUP
ORVEX_INLINE U8 pick(U8 table, U8 index) {
    return (U8)vqtbl1q_u8((uint8x16_t)table, (uint8x16_t)index);
}
#elif defined(ORVEX_WASM)
#define ORVEX_LOOKUP
ORVEX_INLINE U8 pick(U8 table, U8 index) {
    return (U8)wasm_i8x16_swizzle((v128_t)table, (v128_t)index);
}
#endif

// A vector of 16 bytes, or of 32 with the same or with others in its upper half.
#if ORVEX_VEC == 32
#define ORVEX_PER_HALF(low, high) (U8{low, high})
#define ORVEX_REPEAT(...) (U8{__VA_ARGS__, __VA_ARGS__})
#else
#define ORVEX_PER_HALF(low, high) (U8{low})
#define ORVEX_REPEAT(...) (U8{__VA_ARGS__})
#endif
#define ORVEX_TIMES4(a, b, c, d) a, b, c, d, a, b, c, d, a, b, c, d, a, b, c, d

// Vectors whose lower halves are the 16 bytes at `from`, and upper ones, if any, those `apart` bytes further
// on; and the way back.
ORVEX_INLINE U8 load_halves(const uint8_t* from, ptrdiff_t apart) {
#if ORVEX_VEC == 32
    return (U8)_mm256_inserti128_si256(
        _mm256_castsi128_si256(_mm_loadu_si128((const __m128i*)(const void*)from)),
        _mm_loadu_si128((const __m128i*)(const void*)(from + apart)), 1);
#else
    (void)apart;
    return load(from);
#endif
}

ORVEX_INLINE void store_halves(uint8_t* to, ptrdiff_t apart, U8 v) {
#if ORVEX_VEC == 32
    _mm_storeu_si128((__m128i*)(void*)to, _mm256_castsi256_si128((__m256i)v));
    _mm_storeu_si128((__m128i*)(void*)(to + apart), _mm256_extracti128_si256((__m256i)v, 1));
#else
    (void)apart;
    store(to, v);
#endif
}

// The three bytes of kBytes pixels, parted. In every half, byte 3k + c of 48 is the one of pixel k
// and channel c, and 3k + c mod 16 runs through all positions as k does: each channel is three
// blends and one shuffle.
#ifdef ORVEX_LOOKUP
ORVEX_INLINE U8 blend3(U8 at0, U8 at1, U8 at2) {
    const I8 is0 = (I8)ORVEX_REPEAT(255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255);
    const I8 is1 = (I8)ORVEX_REPEAT(0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0);
    const U8 rest = is1 < 0 ? at1 : at2;
    return is0 < 0 ? at0 : rest;
}

ORVEX_INLINE void split3(const uint8_t* from, U8* c0, U8* c1, U8* c2) {
    const U8 x0 = load_halves(from, 48), x1 = load_halves(from + 16, 48), x2 = load_halves(from + 32, 48);
    *c0 = pick(blend3(x0, x2, x1), ORVEX_REPEAT(0, 3, 6, 9, 12, 15, 2, 5, 8, 11, 14, 1, 4, 7, 10, 13));
    *c1 = pick(blend3(x1, x0, x2), ORVEX_REPEAT(1, 4, 7, 10, 13, 0, 3, 6, 9, 12, 15, 2, 5, 8, 11, 14));
    *c2 = pick(blend3(x2, x1, x0), ORVEX_REPEAT(2, 5, 8, 11, 14, 1, 4, 7, 10, 13, 0, 3, 6, 9, 12, 15));
}

// The way back, from the lanes of two channels and the bytes of the third. One vector has the two of the first
// 8 pixels of every half, another those of the last 8.
ORVEX_INLINE void join3(uint8_t* to, const I16 c0[2], const I16 c1[2], U8 c2) {
    const U8 first = narrow(c0[0], c1[0]), last = narrow(c0[1], c1[1]);
    const U8 third = pick(c2, ORVEX_REPEAT(10, 5, 0, 11, 6, 1, 12, 7, 2, 13, 8, 3, 14, 9, 4, 15));
    const U8 in0 = ORVEX_REPEAT(0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0),
             in1 = ORVEX_REPEAT(0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0),
             in2 = ORVEX_REPEAT(255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255);
    enum { no = 255 };
    const U8 x0 = pick(first, ORVEX_REPEAT(0, 8, no, 1, 9, no, 2, 10, no, 3, 11, no, 4, 12, no, 5)),
             x1 = pick(first, ORVEX_REPEAT(13, no, 6, 14, no, 7, 15, no, no, no, no, no, no, no, no, no)) |
                  pick(last, ORVEX_REPEAT(no, no, no, no, no, no, no, no, 0, 8, no, 1, 9, no, 2, 10)),
             x2 = pick(last, ORVEX_REPEAT(no, 3, 11, no, 4, 12, no, 5, 13, no, 6, 14, no, 7, 15, no));
    store_halves(to, 48, x0 | (third & in0));
    store_halves(to + 16, 48, x1 | (third & in1));
    store_halves(to + 32, 48, x2 | (third & in2));
}
#else
// Without such shuffles, by perfect shuffles of the 48 bytes: one moves byte i to 2i mod 47, so four of them
// move byte 3k + c to k + 16c.
ORVEX_INLINE void split3(const uint8_t* from, U8* c0, U8* c1, U8* c2) {
    U8 x0 = load(from), x1 = load(from + 16), x2 = load(from + 32);
    for (int step = 0; step < 4; ++step) {
        const U8 middle =
            __builtin_shufflevector(x0, x2, 8, 16, 9, 17, 10, 18, 11, 19, 12, 20, 13, 21, 14, 22, 15, 23);
        const U8 low =
            __builtin_shufflevector(x0, x1, 0, 24, 1, 25, 2, 26, 3, 27, 4, 28, 5, 29, 6, 30, 7, 31);
        const U8 high =
            __builtin_shufflevector(x1, x2, 0, 24, 1, 25, 2, 26, 3, 27, 4, 28, 5, 29, 6, 30, 7, 31);
        x0 = low, x1 = middle, x2 = high;
    }
    *c0 = x0, *c1 = x1, *c2 = x2;
}

// The way back: even bytes to the front, odd ones behind them, four times.
ORVEX_INLINE void join3(uint8_t* to, const I16 from0[2], const I16 from1[2], U8 c2) {
    U8 c0 = narrow(from0[0], from0[1]), c1 = narrow(from1[0], from1[1]);
    const U16 byte = U16{} + 255;
    for (int step = 0; step < 4; ++step) {
        const U8 even = narrow((I16)((U16)c0 & byte), (I16)((U16)c1 & byte));
        const U8 middle = narrow((I16)((U16)c2 & byte), (I16)((U16)c0 >> 8));
        const U8 odd = narrow((I16)((U16)c1 >> 8), (I16)((U16)c2 >> 8));
        c0 = even, c1 = middle, c2 = odd;
    }
    store(to, c0), store(to + 16, c1), store(to + 32, c2);
}
#endif
