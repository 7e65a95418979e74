// Bilinear sampling in fixed point, the weights with 11 fraction bits. There is no rounding term. Deliberate:
// results lie up to one level low (test: half_of_101_is_truncated).

enum { kWarpBlock = 64 };

// The samples of a block of output pixels.
typedef struct {
    int32_t at[kWarpBlock];  // byte of the upper left neighbour: the whole source is below 2^31
    int32_t wx[kWarpBlock];  // both horizontal weights, the left one in the low half
    int32_t wy[kWarpBlock];  // the upper weight
} WarpBlock;

// Where the output pixels first .. first + n - 1 of a row lie in the source.
static inline void locate_samples(CoordinateLine x, CoordinateLine y, int first, ptrdiff_t stride,
                                  int channels, WarpBlock* block, int n) {
    int k = 0;
#ifdef ORVEX_VEC
    enum { kLanes = kBytes / 4 };
    I32 lane;
    for (int i = 0; i < kLanes; ++i) lane[i] = i;
    for (; k + kLanes <= n; k += kLanes) {
        const F32 col = __builtin_convertvector(lane + (first + k), F32);
        const F32 at_x = (x.row_share + x.step * col) + x.offset;
        const F32 at_y = (y.row_share + y.step * col) + y.offset;
        const I32 left = __builtin_convertvector(at_x, I32), top = __builtin_convertvector(at_y, I32);
        const F32 rest_x = 1.0f - (at_x - __builtin_convertvector(left, F32));
        const F32 rest_y = 1.0f - (at_y - __builtin_convertvector(top, F32));
        const I32 left_weight = __builtin_convertvector(rest_x * (float)kOne_q11, I32);
        store(block->wx + k, (U8)(left_weight | (kOne_q11 - left_weight) << 16));
        store(block->wy + k, (U8) __builtin_convertvector(rest_y * (float)kOne_q11, I32));
        store(block->at + k, (U8)(top * (int32_t)stride + left * channels));
    }
#endif
    for (; k < n; ++k) {
        const float col = (float)(first + k);
        const float at_x = (x.row_share + x.step * col) + x.offset;
        const float at_y = (y.row_share + y.step * col) + y.offset;
        const int left = (int)at_x, top = (int)at_y;  // inside, hence not negative: truncation is the floor
        const int left_weight = (int)((1.0f - (at_x - (float)left)) * (float)kOne_q11);
        block->wx[k] = left_weight | (kOne_q11 - left_weight) << 16;
        block->wy[k] = (int)((1.0f - (at_y - (float)top)) * (float)kOne_q11);
        block->at[k] = (int32_t)(top * stride + (ptrdiff_t)left * channels);
    }
}

#ifdef ORVEX_VEC
// The leading pixels of a block of one channel; returns how many.
ORVEX_INLINE int blend_gray_samples(const uint8_t* src, ptrdiff_t stride, const WarpBlock* block,
                                    uint8_t* out, int n) {
    enum { kLanes = kBytes / 4 };
    // The four neighbours in one word: upper left, upper right, lower left, lower right.
    uint32_t four[kWarpBlock];
    for (int i = 0; i < n; ++i) {
        uint16_t upper, lower;
        __builtin_memcpy(&upper, src + block->at[i], 2);
        __builtin_memcpy(&lower, src + block->at[i] + stride, 2);
        four[i] = upper | (uint32_t)lower << 16;
    }
    int k = 0;
    for (; k + kBytes <= n; k += kBytes) {
        I32 sum[4];
        for (int q = 0; q < 4; ++q) {
            const int i = k + q * kLanes;
            const U32 p = (U32)load(four + i);
            const I16 weights = (I16)load(block->wx + i);
            const I32 upper = multiply_add_pairs((I16)((p & 0xff) | (p & 0xff00) << 8), weights);
            const I32 lower = multiply_add_pairs((I16)((p >> 16 & 0xff) | (p >> 24) << 16), weights);
            const I32 upper_weight = (I32)load(block->wy + i);
            sum[q] = (upper * upper_weight + lower * (kOne_q11 - upper_weight)) >> (2 * kWeightBits);
        }
        store(out + k, narrow_to_bytes(sum[0], sum[1], sum[2], sum[3]));
    }
    return k;
}
#endif

#ifdef ORVEX_LOOKUP
// The leading pixels of a block of three channels, one in every half of a vector; returns how many. Four
// bytes are stored for three, so the last pixels are left over.
ORVEX_INLINE int blend_bgr_samples(const uint8_t* src, ptrdiff_t stride, const WarpBlock* block, uint8_t* out,
                                   int n) {
    const U8 upper_pairs = ORVEX_REPEAT(0, 255, 3, 255, 1, 255, 4, 255, 2, 255, 5, 255, 255, 255, 255, 255);
    const U8 lower_pairs =
        ORVEX_REPEAT(10, 255, 13, 255, 11, 255, 14, 255, 12, 255, 15, 255, 255, 255, 255, 255);
    const U8 low_bytes =
        ORVEX_REPEAT(0, 4, 8, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255);
    // Each half's weight, four times.
    const U8 copies = ORVEX_PER_HALF(ORVEX_TIMES4(0, 1, 2, 3), ORVEX_TIMES4(4, 5, 6, 7));
    enum { kPixels = kBytes / 16 };
    // Eight bytes of each row hold both neighbours. The upper row's may run on into the lower; the lower
    // row's end with the neighbours, for there may be nothing behind them.
    uint64_t eight[2 * kWarpBlock];
    for (int i = 0; i < n; ++i) {
        __builtin_memcpy(eight + 2 * i, src + block->at[i], 8);
        __builtin_memcpy(eight + 2 * i + 1, src + block->at[i] + stride - 2, 8);
    }
    int k = 0;
    for (; k + 2 < n; k += kPixels) {
        uint64_t two_wx, two_wy;
        __builtin_memcpy(&two_wx, block->wx + k, 8);
        __builtin_memcpy(&two_wy, block->wy + k, 8);
        const U8 pixels = load(eight + 2 * k);
        const I16 x_weights = (I16)pick((U8)(U64{} + two_wx), copies);
        const I32 y_weights = (I32)pick((U8)(U64{} + two_wy), copies);
        const I32 upper = multiply_add_pairs((I16)pick(pixels, upper_pairs), x_weights);
        const I32 lower = multiply_add_pairs((I16)pick(pixels, lower_pairs), x_weights);
        const I32 sum = upper * y_weights + lower * (kOne_q11 - y_weights);
        const U8 result = pick((U8)(sum >> (2 * kWeightBits)), low_bytes);
        for (int i = 0; i < kPixels; ++i) {
            const uint32_t bgr = ((U32)result)[4 * i];
            __builtin_memcpy(out + 3 * (k + i), &bgr, 4);
        }
    }
    return k;
}
#endif

// Output pixels first .. first + n - 1 of one row, all of whose 2 x 2 neighbourhoods lie inside the source,
// which is rows of `stride` bytes, two at least.
static void warp_row(const uint8_t* src, ptrdiff_t stride, int channels, CoordinateLine x, CoordinateLine y,
                     int first, uint8_t* out, int n) {
    WarpBlock block;
    for (int done = 0; done < n; done += kWarpBlock, out += kWarpBlock * (ptrdiff_t)channels) {
        const int width = n - done < kWarpBlock ? n - done : kWarpBlock;
        locate_samples(x, y, first + done, stride, channels, &block, width);
        int k = 0;
#ifdef ORVEX_VEC
        if (channels == 1) k = blend_gray_samples(src, stride, &block, out, width);
#endif
#ifdef ORVEX_LOOKUP
        if (channels == 3) k = blend_bgr_samples(src, stride, &block, out, width);
#endif
        for (; k < width; ++k) {
            const uint8_t* const p = src + block.at[k];
            const int wx0 = block.wx[k] & 0xffff, wx1 = kOne_q11 - wx0;
            const int wy0 = block.wy[k], wy1 = kOne_q11 - wy0;
            for (int c = 0; c < channels; ++c) {
                const uint8_t* const q = p + c + stride;
                const int upper = p[c] * wx0 + p[c + channels] * wx1, lower = q[0] * wx0 + q[channels] * wx1;
                out[k * channels + c] = (uint8_t)((upper * wy0 + lower * wy1) >> (2 * kWeightBits));
            }
        }
    }
}

// The same pixels copied from the source pixels that hold their points, clamped into the image of rows x
// cols. Coordinates are finite.
static void copy_row(const uint8_t* src, int rows, int cols, int channels, CoordinateLine x, CoordinateLine y,
                     int first, uint8_t* out, int n) {
    // Limits that leave the floor and its clamping as they are and keep the conversion in range.
    const float least = -1.0f, most = 2147483520.0f;
    int32_t at_row[kWarpBlock], at_col[kWarpBlock];
    for (int done = 0; done < n; done += kWarpBlock) {
        const int width = n - done < kWarpBlock ? n - done : kWarpBlock;
        for (int k = 0; k < width; ++k) {
            const float col = (float)(first + done + k);
            float at_x = (x.row_share + x.step * col) + x.offset;
            float at_y = (y.row_share + y.step * col) + y.offset;
            at_x = at_x < least ? least : at_x > most ? most : at_x;
            at_y = at_y < least ? least : at_y > most ? most : at_y;
            int left = (int)at_x, top = (int)at_y;
            left -= (float)left > at_x;
            top -= (float)top > at_y;
            left = left > cols - 1 ? cols - 1 : left < 0 ? 0 : left;
            top = top > rows - 1 ? rows - 1 : top < 0 ? 0 : top;
            at_row[k] = top;
            at_col[k] = left;
        }
        for (int k = 0; k < width; ++k) {
            const uint8_t* const pixel = src + ((ptrdiff_t)at_row[k] * cols + at_col[k]) * channels;
            for (int c = 0; c < channels; ++c) *out++ = pixel[c];
        }
    }
}
