// out[i] = pixels[n - 1 - i] for n whole pixels of `channels` bytes.
static void reverse_pixels(const uint8_t* pixels, uint8_t* out, int channels, ptrdiff_t n) {
    ptrdiff_t i = 0;
#ifdef ORVEX_LOOKUP
    if (channels == 1 || channels == 2 || channels == 4) {
        const U8 reversed = channels == 1 ? ORVEX_REPEAT(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0)
                            : channels == 2
                                ? ORVEX_REPEAT(14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1)
                                : ORVEX_REPEAT(12, 13, 14, 15, 8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3);
        const ptrdiff_t bytes = n * channels;
        ptrdiff_t done = 0;
        for (; done + kBytes <= bytes; done += kBytes)
            store(out + done, pick(load_halves(pixels + bytes - done - 16, -16), reversed));
        i = done / channels;
    } else if (channels == 3) {
        // Five pixels, the last 15 of 16 bytes; the byte too many that is stored belongs to what follows.
        const U8 reversed = ORVEX_REPEAT(13, 14, 15, 10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3, 0);
        enum { kPixels = kBytes / 16 * 5 };
        for (; i + kPixels < n; i += kPixels) {
            const U8 v = pick(load_halves(pixels + 3 * (n - i) - 16, -15), reversed);
            store_halves(out + 3 * i, 15, v);
        }
        for (; i + 5 < n; i += 5) {
            const U8 v = pick(load_halves(pixels + 3 * (n - i) - 16, 0), reversed);
            __builtin_memcpy(out + 3 * i, &v, 16);
        }
        if (n > 5) {
            // The last five, some perhaps once more, from the first 15 of 16 bytes.
            const U8 ends = ORVEX_REPEAT(12, 13, 14, 9, 10, 11, 6, 7, 8, 3, 4, 5, 0, 1, 2, 255);
            const U8 v = pick(load_halves(pixels, 0), ends);
            __builtin_memcpy(out + 3 * n - 15, &v, 15);
            i = n;
        }
    }
#endif
    for (; i < n; ++i)
        for (int c = 0; c < channels; ++c) out[i * channels + c] = pixels[(n - 1 - i) * channels + c];
}

#ifdef ORVEX_VEC
// 16 rows of 16 bytes in every half of a vector: columns become rows.
ORVEX_INLINE void transpose_bytes(U8 v[16]) {
    ORVEX_UNROLL
    for (int step = 0; step < 4; ++step) {
        U8 w[16];
        ORVEX_UNROLL
        for (int k = 0; k < 8; ++k) {
            w[2 * k] = ORVEX_INTERLEAVE_LOW(v[k], v[k + 8]);
            w[2 * k + 1] = ORVEX_INTERLEAVE_HIGH(v[k], v[k + 8]);
        }
        ORVEX_UNROLL
        for (int k = 0; k < 16; ++k) v[k] = w[k];
    }
}

// 4 rows of 4 words in every half.
ORVEX_INLINE void transpose_words(U8 v[4]) {
    const U32 a = (U32)v[0], b = (U32)v[1], c = (U32)v[2], d = (U32)v[3];
#if ORVEX_VEC == 32
#define ORVEX_WORDS(x, y, i, j) \
    __builtin_shufflevector(x, y, (i), (i) + 8, (j), (j) + 8, (i) + 4, (i) + 12, (j) + 4, (j) + 12)
#else
#define ORVEX_WORDS(x, y, i, j) __builtin_shufflevector(x, y, (i), (i) + 4, (j), (j) + 4)
#endif
    const U32 ac_low = ORVEX_WORDS(a, c, 0, 1), ac_high = ORVEX_WORDS(a, c, 2, 3);
    const U32 bd_low = ORVEX_WORDS(b, d, 0, 1), bd_high = ORVEX_WORDS(b, d, 2, 3);
    v[0] = (U8)ORVEX_WORDS(ac_low, bd_low, 0, 1), v[1] = (U8)ORVEX_WORDS(ac_low, bd_low, 2, 3);
    v[2] = (U8)ORVEX_WORDS(ac_high, bd_high, 0, 1), v[3] = (U8)ORVEX_WORDS(ac_high, bd_high, 2, 3);
#undef ORVEX_WORDS
}
#endif

// A quarter turn under way: every source column becomes an output row of `rows` pixels.
typedef struct {
    const uint8_t* first;  // the row whose pixels come first in the output rows
    ptrdiff_t to_right;    // bytes from there to the row whose pixels come next
    int rows, cols, channels;
    bool leftward;  // whether the last column becomes the first output row
    uint8_t* out;
} Turn;

static inline uint8_t* turned_column(Turn turn, int col) {
    return turn.out + (turn.leftward ? turn.cols - 1 - col : col) * ((ptrdiff_t)turn.rows * turn.channels);
}

// Columns of the source, and of the output, that tiles have covered.
typedef struct {
    int cols, out_cols;
} Tiled;

#ifdef ORVEX_VEC
// Single bytes, in tiles of 16 source columns.
ORVEX_INLINE Tiled turn_byte_tiles(Turn turn) {
    const Tiled tiled = {turn.cols / 16 * 16, turn.rows / kBytes * kBytes};
    for (int j = 0; j < tiled.out_cols; j += kBytes) {
        for (int col = 0; col < tiled.cols; col += 16) {
            U8 v[16];
            ORVEX_UNROLL
            for (int k = 0; k < 16; ++k)
                v[k] = load_halves(turn.first + (j + k) * turn.to_right + col, 16 * turn.to_right);
            transpose_bytes(v);
            ORVEX_UNROLL
            for (int k = 0; k < 16; ++k) store(turned_column(turn, col + k) + j, v[k]);
        }
    }
    return tiled;
}
#endif

#ifdef ORVEX_LOOKUP
// Pixels of 3 or 4 bytes, in tiles of 4 source columns. 16 bytes are read and written at a time.
// Of 3-byte pixels 12 of them count: what is read too much lies in the two columns that tiles
// leave, and what is written too much is overwritten by the next tile or, in the two output
// columns that tiles leave, afterwards.
ORVEX_INLINE Tiled turn_pixel_tiles(Turn turn) {
    const bool three = turn.channels == 3;
    const U8 spread = three ? ORVEX_REPEAT(0, 1, 2, 0, 3, 4, 5, 0, 6, 7, 8, 0, 9, 10, 11, 0)
                            : ORVEX_REPEAT(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    const U8 squeeze = three ? ORVEX_REPEAT(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 0, 0, 0, 0) : spread;
    const int margin = three ? 2 : 0;
    enum { kTile = kBytes / 4 };
    const Tiled tiled = {turn.cols < margin ? 0 : (turn.cols - margin) / 4 * 4,
                         turn.rows < margin ? 0 : (turn.rows - margin) / kTile * kTile};
    for (int j = 0; j < tiled.out_cols; j += kTile) {
        for (int col = 0; col < tiled.cols; col += 4) {
            U8 v[4];
            ORVEX_UNROLL
            for (int k = 0; k < 4; ++k) {
                const uint8_t* const from =
                    turn.first + (j + k) * turn.to_right + (ptrdiff_t)col * turn.channels;
                v[k] = pick(load_halves(from, 4 * turn.to_right), spread);
            }
            transpose_words(v);
            ORVEX_UNROLL
            for (int k = 0; k < 4; ++k)
                store_halves(turned_column(turn, col + k) + (ptrdiff_t)j * turn.channels, 4 * turn.channels,
                             pick(v[k], squeeze));
        }
    }
    return tiled;
}
#endif

// What tiles have left, pixel by pixel.
static inline void turn_rest(Turn turn, Tiled tiled) {
    for (int col = 0; col < turn.cols; ++col) {
        const uint8_t* const column = turn.first + (ptrdiff_t)col * turn.channels;
        uint8_t* const out_row = turned_column(turn, col);
        for (int j = col < tiled.cols ? tiled.out_cols : 0; j < turn.rows; ++j)
            for (int c = 0; c < turn.channels; ++c)
                out_row[(ptrdiff_t)j * turn.channels + c] = column[j * turn.to_right + c];
    }
}

// A quarter turn of a rows x cols image of whole pixels: output (i, j), of cols x rows, is the
// source pixel whose row is j, counted from below if `upward`, and whose column is i, counted from
// the right if `leftward`.
static void turn_pixels(const uint8_t* src, int rows, int cols, int channels, bool upward, bool leftward,
                        uint8_t* out) {
    const ptrdiff_t stride = (ptrdiff_t)cols * channels;
    const Turn turn = {upward ? src + (rows - 1) * stride : src,
                       upward ? -stride : stride,
                       rows,
                       cols,
                       channels,
                       leftward,
                       out};
    Tiled tiled = {0, 0};
#ifdef ORVEX_VEC
    if (channels == 1) tiled = turn_byte_tiles(turn);
#endif
#ifdef ORVEX_LOOKUP
    if (channels == 3 || channels == 4) tiled = turn_pixel_tiles(turn);
#endif
    turn_rest(turn, tiled);
}
