// Ten fraction bits; 262143 is 255 with all of them set, so the shift gives 0 .. 255.
static inline uint8_t clamp_q10(int value_q10) {
    return (uint8_t)((value_q10 < 0 ? 0 : value_q10 > 262143 ? 262143 : value_q10) >> 10);
}

// One row of an NV21 frame to interleaved B, G, R. `vu` points at the row's first (V, U) pair; a pair serves
// two columns, so an odd `cols` reads cols + 1 chroma bytes and none beyond.
static void bgr_from_nv21_row(const uint8_t* luma, const uint8_t* vu, uint8_t* bgr, int cols) {
    int col = 0;
#ifdef ORVEX_VEC
    // The same in 16 bits, with Y = luma - 16 and V, U less 128. Each sum is split into a whole part
    // and a remainder that Y's share cannot carry out of the lane; the definition's two clamps are
    // the saturation of narrow().
    //   R = (596 Y + 817 V) >> 9            = Y + (v_whole + ((84 Y + v_rest) >> 9)),  0 <= v_rest < 512
    //   B = (596 Y + 1033 U) >> 9           = Y + (2 U + ((84 Y + 9 U) >> 9))
    //   G = (1192 Y - 833 V - 400 U) >> 10  = Y + (g_whole + ((168 Y + g_rest) >> 10)), 0 <= g_rest < 2047
    // 168 * 239 + 2046 < 2^16, and the rest stays below 2^15 in size.
    for (; col + kBytes <= cols; col += kBytes) {
        const U16 pairs = (U16)load(vu + col);
        const I16 v = (I16)(pairs & 255) - 128, u = (I16)(pairs >> 8) - 128;
        // 817 V = 512 (V + (V >> 1)) + 256 (V & 1) + 49 V
        const I16 v_part = ((v & 1) << 8) + 49 * v;
        const I16 v_whole = v + (v >> 1) + (v_part >> 9), v_rest = v_part & 511;
        // -833 V = -1024 V + 191 V, -400 U = -1024 (U >> 1) - 512 (U & 1) + 112 U
        const I16 gv_part = 191 * v, gu_part = 112 * u - ((u & 1) << 9);
        const I16 g_whole = (gv_part >> 10) - v + (gu_part >> 10) - (u >> 1);
        const I16 g_rest = (gv_part & 1023) + (gu_part & 1023);
        const I16 u_whole = u + u, u_rest = 9 * u;

        const U8 y = maximum(load(luma + col), U8{} + 16) - 16;
        I16 b[2], g[2], r[2];
        for (int h = 0; h < 2; ++h) {
#define ORVEX_TWICE(x) (h ? ORVEX_INTERLEAVE16_HIGH(x, x) : ORVEX_INTERLEAVE16_LOW(x, x))
            const I16 y_lane = (I16)(h ? widen_high(y) : widen_low(y)), y84 = 84 * y_lane;
            b[h] = y_lane + (ORVEX_TWICE(u_whole) + ((y84 + ORVEX_TWICE(u_rest)) >> 9));
            g[h] = y_lane + (ORVEX_TWICE(g_whole) + (I16)(((U16)y84 * 2 + (U16)ORVEX_TWICE(g_rest)) >> 10));
            r[h] = y_lane + (ORVEX_TWICE(v_whole) + ((y84 + ORVEX_TWICE(v_rest)) >> 9));
#undef ORVEX_TWICE
        }
        join3(bgr + 3 * (ptrdiff_t)col, narrow(b[0], b[1]), narrow(g[0], g[1]), narrow(r[0], r[1]));
    }
#endif
    int v = 0;
    int u = 0;
    for (; col < cols; ++col) {
        const int y_q10 = 1192 * (luma[col] < 16 ? 0 : luma[col] - 16);
        if (col % 2 == 0) {
            v = vu[col] - 128;
            u = vu[col + 1] - 128;
        }
        uint8_t* const pixel = bgr + 3 * (ptrdiff_t)col;
        pixel[0] = clamp_q10(y_q10 + 2066 * u);
        pixel[1] = clamp_q10(y_q10 - 833 * v - 400 * u);
        pixel[2] = clamp_q10(y_q10 + 1634 * v);
    }
}
