// Ten fraction bits; 262143 is 255 with all of them set, so the shift gives 0 .. 255.
static inline uint8_t clamp_q10(int value_q10) {
    return (uint8_t)((value_q10 < 0 ? 0 : value_q10 > 262143 ? 262143 : value_q10) >> 10);
}

#ifdef ORVEX_VEC
// What the (V, U) pairs of kBytes columns add to their pixels, for columns of each half of a row; see below.
typedef struct {
    I16 v_whole[2], v_rest[2], g_whole[2], g_rest[2], u_whole[2], u_rest[2];
} Chroma;

// Factors that compilers shall not turn into shifts and sums: those take longer than a product.
typedef struct {
    I16 by_49, by_191, by_112, by_9, by_84;
} Factors;

ORVEX_INLINE void for_each_column(I16 pairs, I16 columns[2]) {
    columns[0] = ORVEX_INTERLEAVE16_LOW(pairs, pairs);
    columns[1] = ORVEX_INTERLEAVE16_HIGH(pairs, pairs);
}

ORVEX_INLINE Chroma chroma_of(const uint8_t* vu, const Factors* by) {
    const U16 pairs = (U16)load(vu);
    const I16 v = (I16)(pairs & 255) - 128, u = (I16)(pairs >> 8) - 128;
    Chroma chroma;
    // 817 V = 512 (V + (V >> 1)) + 256 (V & 1) + 49 V
    const I16 v_part = ((v & 1) << 8) + by->by_49 * v;
    for_each_column(v + (v >> 1) + (v_part >> 9), chroma.v_whole);
    for_each_column(v_part & 511, chroma.v_rest);
    // -833 V = -1024 V + 191 V, -400 U = -1024 (U >> 1) - 512 (U & 1) + 112 U
    const I16 gv_part = by->by_191 * v, gu_part = by->by_112 * u - ((u & 1) << 9);
    for_each_column((gv_part >> 10) - v + (gu_part >> 10) - (u >> 1), chroma.g_whole);
    for_each_column((gv_part & 1023) + (gu_part & 1023), chroma.g_rest);
    for_each_column(u + u, chroma.u_whole);
    for_each_column(by->by_9 * u, chroma.u_rest);
    return chroma;
}

// kBytes pixels. The definition in 16 bits, with Y = luma - 16 and V, U less 128: each sum is split into a whole part
// and a remainder that Y's share cannot carry out of the lane. Saturation by narrow() is the definition's two clamps.
//   R = (596 Y + 817 V) >> 9            = Y + (v_whole + ((84 Y + v_rest) >> 9)),  0 <= v_rest < 512
//   B = (596 Y + 1033 U) >> 9           = Y + (2 U + ((84 Y + 9 U) >> 9))
//   G = (1192 Y - 833 V - 400 U) >> 10  = Y + (g_whole + ((168 Y + g_rest) >> 10)), 0 <= g_rest < 2047
// 168 * 239 + 2046 < 2^16, and the rest stays below 2^15 in size.
ORVEX_INLINE void bgr_from_luma(const uint8_t* luma, const Chroma* chroma, const Factors* by, uint8_t* bgr) {
    const U8 y = maximum(load(luma), U8{} + 16) - 16;
    I16 b[2], g[2], r[2];
    ORVEX_UNROLL
    for (int h = 0; h < 2; ++h) {
        const I16 y_lane = (I16)(h ? widen_high(y) : widen_low(y)), y84 = by->by_84 * y_lane;
        b[h] = y_lane + (chroma->u_whole[h] + ((y84 + chroma->u_rest[h]) >> 9));
        g[h] = y_lane + (chroma->g_whole[h] + (I16)(((U16)y84 + (U16)y84 + (U16)chroma->g_rest[h]) >> 10));
        r[h] = y_lane + (chroma->v_whole[h] + ((y84 + chroma->v_rest[h]) >> 9));
    }
    join3(bgr, b, g, narrow(r[0], r[1]));
}
#endif

// One row of an NV21 frame to interleaved B, G, R, or two that share their chroma, with their pixels one row behind the
// other. `vu` points at the rows' first (V, U) pair; a pair serves two columns, so an odd `cols` reads cols + 1 chroma
// bytes and none beyond.
static void bgr_from_nv21_rows(const uint8_t* luma, const uint8_t* vu, uint8_t* bgr, int cols, int rows) {
    int done = 0;
#ifdef ORVEX_VEC
    const Factors by = {opaque(I16{} + 49), opaque(I16{} + 191), opaque(I16{} + 112), opaque(I16{} + 9),
                        opaque(I16{} + 84)};
    for (; done + kBytes <= cols; done += kBytes) {
        const Chroma chroma = chroma_of(vu + done, &by);
        bgr_from_luma(luma + done, &chroma, &by, bgr + 3 * (ptrdiff_t)done);
        if (rows > 1) bgr_from_luma(luma + cols + done, &chroma, &by, bgr + 3 * ((ptrdiff_t)cols + done));
    }
#endif
    for (int row = 0; row < rows; ++row) {
        int v = 0;
        int u = 0;
        for (int col = done; col < cols; ++col) {
            const int y = luma[(ptrdiff_t)row * cols + col];
            const int y_q10 = 1192 * (y < 16 ? 0 : y - 16);
            if (col % 2 == 0) {
                v = vu[col] - 128;
                u = vu[col + 1] - 128;
            }
            uint8_t* const pixel = bgr + 3 * ((ptrdiff_t)row * cols + col);
            pixel[0] = clamp_q10(y_q10 + 2066 * u);
            pixel[1] = clamp_q10(y_q10 - 833 * v - 400 * u);
            pixel[2] = clamp_q10(y_q10 + 1634 * v);
        }
    }
}
