// Bilinear sampling in fixed point: weights have 11 fraction bits, so a product of two and a byte has 22, and
// 255 * 2048 * 2048 < 2^30 keeps the sum of four in 32 bits. There is no rounding term. Deliberate: results
// lie up to one level low (test: half_of_101_is_truncated). The four-term sum may be taken along rows first,
// H = p * wx + q * (2048 - wx), and then H * wy + H' * (2048 - wy): integers, so the order does not matter.

// Output pixels first .. first + n - 1 of one row, all of whose 2 x 2 neighbourhoods lie inside the source,
// which is rows of `stride` bytes, two at least. `row_x` and `row_y` are the row's share of the coordinates;
// float steps as in the definition: x = (row_x + step_x * col) + offset_x.
static void warp_row(const uint8_t* src, ptrdiff_t stride, int channels, float row_x, float step_x,
                     float offset_x, float row_y, float step_y, float offset_y, int first, uint8_t* out,
                     int n) {
    enum { kBlock = 64 };
    int32_t at[kBlock];              // byte of the upper left neighbour: the whole source is below 2^31
    int32_t wx[kBlock], wy[kBlock];  // wx: both weights, the left one in the low half
    for (int done = 0; done < n; done += kBlock, out += kBlock * (ptrdiff_t)channels) {
        const int width = n - done < kBlock ? n - done : kBlock;
        int k = 0;
#ifdef ORVEX_VEC
        enum { kLanes = kBytes / 4 };
        I32 lane;
        for (int i = 0; i < kLanes; ++i) lane[i] = i;
        for (; k + kLanes <= width; k += kLanes) {
            const F32 col = __builtin_convertvector(lane + (first + done + k), F32);
            const F32 x = (row_x + step_x * col) + offset_x;
            const F32 y = (row_y + step_y * col) + offset_y;
            const I32 left = __builtin_convertvector(x, I32), top = __builtin_convertvector(y, I32);
            const F32 rest_x = 1.0f - (x - __builtin_convertvector(left, F32));
            const F32 rest_y = 1.0f - (y - __builtin_convertvector(top, F32));
            const I32 left_weight = __builtin_convertvector(rest_x * 2048.0f, I32);
            store(wx + k, (U8)(left_weight | (2048 - left_weight) << 16));
            store(wy + k, (U8) __builtin_convertvector(rest_y * 2048.0f, I32));
            store(at + k, (U8)(top * (int32_t)stride + left * channels));
        }
#endif
        for (; k < width; ++k) {
            const float col = (float)(first + done + k);
            const float x = (row_x + step_x * col) + offset_x;
            const float y = (row_y + step_y * col) + offset_y;
            const int left = (int)x, top = (int)y;  // inside, hence not negative: truncation is the floor
            const int left_weight = (int)((1.0f - (x - (float)left)) * 2048.0f);
            wx[k] = left_weight | (2048 - left_weight) << 16;
            wy[k] = (int)((1.0f - (y - (float)top)) * 2048.0f);
            at[k] = (int32_t)(top * stride + (ptrdiff_t)left * channels);
        }
        k = 0;
#ifdef ORVEX_VEC
        if (channels == 1) {
            // The four neighbours in one word: upper left, upper right, lower left, lower right.
            uint32_t four[kBlock];
            for (int i = 0; i < width; ++i) {
                uint16_t upper, lower;
                __builtin_memcpy(&upper, src + at[i], 2);
                __builtin_memcpy(&lower, src + at[i] + stride, 2);
                four[i] = upper | (uint32_t)lower << 16;
            }
            for (; k + kBytes <= width; k += kBytes) {
                I32 sum[4];
                for (int q = 0; q < 4; ++q) {
                    const int i = k + q * kLanes;
                    const U32 p = (U32)load(four + i);
                    const I16 weights = (I16)load(wx + i);
                    const I32 upper = multiply_add_pairs((I16)((p & 0xff) | (p & 0xff00) << 8), weights);
                    const I32 lower = multiply_add_pairs((I16)((p >> 16 & 0xff) | (p >> 24) << 16), weights);
                    const I32 upper_weight = (I32)load(wy + i);
                    sum[q] = (upper * upper_weight + lower * (2048 - upper_weight)) >> 22;
                }
                store(out + k, narrow_to_bytes(sum[0], sum[1], sum[2], sum[3]));
            }
        }
#endif
#ifdef ORVEX_LOOKUP
        if (channels == 3) {
            // A pixel in every half: eight bytes of each row hold both neighbours. The upper row's may run on
            // into the lower; the lower row's end with the neighbours, for there may be nothing behind them.
            // Four bytes are stored for three, so the last pixels are left to the plain loop.
            const U8 upper_pairs =
                ORVEX_REPEAT(0, 255, 3, 255, 1, 255, 4, 255, 2, 255, 5, 255, 255, 255, 255, 255);
            const U8 lower_pairs =
                ORVEX_REPEAT(10, 255, 13, 255, 11, 255, 14, 255, 12, 255, 15, 255, 255, 255, 255, 255);
            const U8 low_bytes =
                ORVEX_REPEAT(0, 4, 8, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255);
            // Each half's weight, four times.
            const U8 copies = ORVEX_PER_HALF(ORVEX_TIMES4(0, 1, 2, 3), ORVEX_TIMES4(4, 5, 6, 7));
            enum { kPixels = kBytes / 16 };
            uint64_t eight[2 * kBlock];
            for (int i = 0; i < width; ++i) {
                __builtin_memcpy(eight + 2 * i, src + at[i], 8);
                __builtin_memcpy(eight + 2 * i + 1, src + at[i] + stride - 2, 8);
            }
            for (; k + 2 < width; k += kPixels) {
                uint64_t two_wx, two_wy;
                __builtin_memcpy(&two_wx, wx + k, 8);
                __builtin_memcpy(&two_wy, wy + k, 8);
                const U8 pixels = load(eight + 2 * k);
                const I16 x_weights = (I16)pick((U8)(U64{} + two_wx), copies);
                const I32 y_weights = (I32)pick((U8)(U64{} + two_wy), copies);
                const I32 upper = multiply_add_pairs((I16)pick(pixels, upper_pairs), x_weights);
                const I32 lower = multiply_add_pairs((I16)pick(pixels, lower_pairs), x_weights);
                const U8 result =
                    pick((U8)((upper * y_weights + lower * (2048 - y_weights)) >> 22), low_bytes);
                for (int i = 0; i < kPixels; ++i) {
                    const uint32_t bgr = ((U32)result)[4 * i];
                    __builtin_memcpy(out + 3 * (k + i), &bgr, 4);
                }
            }
        }
#endif
        for (; k < width; ++k) {
            const uint8_t* const p = src + at[k];
            const int wx0 = wx[k] & 0xffff, wx1 = 2048 - wx0, wy0 = wy[k], wy1 = 2048 - wy0;
            for (int c = 0; c < channels; ++c) {
                const uint8_t* const q = p + c + stride;
                out[k * channels + c] = (uint8_t)(((p[c] * wx0 + p[c + channels] * wx1) * wy0 +
                                                   (q[0] * wx0 + q[channels] * wx1) * wy1) >>
                                                  22);
            }
        }
    }
}

// The same pixels copied from the source pixels that hold their points, clamped into the image of rows x
// cols. Coordinates are finite.
static void copy_row(const uint8_t* src, int rows, int cols, int channels, float row_x, float step_x,
                     float offset_x, float row_y, float step_y, float offset_y, int first, uint8_t* out,
                     int n) {
    enum { kBlock = 64 };
    // Limits that leave the floor and its clamping as they are and keep the conversion in range.
    const float most = 2147483520.0f;
    int32_t at_row[kBlock], at_col[kBlock];
    for (int done = 0; done < n; done += kBlock) {
        const int width = n - done < kBlock ? n - done : kBlock;
        for (int k = 0; k < width; ++k) {
            const float col = (float)(first + done + k);
            float x = (row_x + step_x * col) + offset_x;
            float y = (row_y + step_y * col) + offset_y;
            x = x < -1.0f ? -1.0f : x > most ? most : x;
            y = y < -1.0f ? -1.0f : y > most ? most : y;
            int left = (int)x, top = (int)y;
            left -= (float)left > x;
            top -= (float)top > y;
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

// Where the output columns first .. first + n - 1 lie between source columns: the left neighbour's column and
// weight. Coordinates as above, all inside the source.
static void sample_columns(float row_x, float step_x, float offset_x, int first, int32_t* left,
                           int16_t* weight, int n) {
    int k = 0;
#ifdef ORVEX_VEC
    enum { kLanes = kBytes / 4 };
    I32 lane;
    for (int i = 0; i < kLanes; ++i) lane[i] = i;
    for (; k + kLanes <= n; k += kLanes) {
        const F32 x = (row_x + step_x * __builtin_convertvector(lane + (first + k), F32)) + offset_x;
        const I32 floor = __builtin_convertvector(x, I32);
        const F32 rest = 1.0f - (x - __builtin_convertvector(floor, F32));
        const I32 weights = __builtin_convertvector(rest * 2048.0f, I32);
        store(left + k, (U8)floor);
        for (int i = 0; i < kLanes; ++i) weight[k + i] = (int16_t)weights[i];
    }
#endif
    for (; k < n; ++k) {
        const float x = (row_x + step_x * (float)(first + k)) + offset_x;
        left[k] = (int)x;
        weight[k] = (int16_t)((1.0f - (x - (float)left[k])) * 2048.0f);
    }
}

// H along one source row: out_q11[e] = row[at[e]] * weight[e] + row[at[e] + channels] * (2048 - weight[e])
// for the n bytes of an output row.
static void stretch_row(const uint8_t* row, const int32_t* at, const int16_t* weight, int channels,
                        int32_t* out_q11, ptrdiff_t n) {
    for (ptrdiff_t e = 0; e < n; ++e)
        out_q11[e] = row[at[e]] * weight[e] + row[at[e] + channels] * (2048 - weight[e]);
}

// The same where each four output bytes take theirs from 16 source bytes: of step s those from base[s] on.
// index holds 16 bytes a step, pairs of a position there and 255, and weights 8 a step, both weights of each
// output byte. Without byte shuffles it is no gain.
static bool can_stretch_in_steps() {
#ifdef ORVEX_LOOKUP
    return true;
#else
    return false;
#endif
}

static void stretch_row_in_steps(const uint8_t* row, const int32_t* base, const uint8_t* index,
                                 const int16_t* weights, int32_t* out_q11, ptrdiff_t steps) {
    ptrdiff_t s = 0;
#ifdef ORVEX_LOOKUP
    enum { kSteps = kBytes / 16 };
    for (; s + kSteps <= steps; s += kSteps) {
        const U8 pixels = load_halves(row + base[s], base[s + kSteps - 1] - base[s]);
        store(out_q11 + 4 * s,
              (U8)multiply_add_pairs((I16)pick(pixels, load(index + 16 * s)), (I16)load(weights + 8 * s)));
    }
#endif
    for (; s < steps; ++s) {
        const uint8_t* const pixels = row + base[s];
        for (int e = 0; e < 4; ++e)
            out_q11[4 * s + e] = pixels[index[16 * s + 4 * e]] * weights[8 * s + 2 * e] +
                                 pixels[index[16 * s + 4 * e + 2]] * weights[8 * s + 2 * e + 1];
    }
}

// out[e] = (upper[e] * weight + lower[e] * (2048 - weight)) >> 22.
static void blend_rows(const int32_t* upper_q11, const int32_t* lower_q11, int weight, uint8_t* out,
                       ptrdiff_t n) {
    ptrdiff_t e = 0;
#ifdef ORVEX_VEC
    enum { kLanes = kBytes / 4 };
    for (; e + kBytes <= n; e += kBytes) {
        I32 sum[4];
        for (int q = 0; q < 4; ++q)
            sum[q] = ((I32)load(upper_q11 + e + q * kLanes) * weight +
                      (I32)load(lower_q11 + e + q * kLanes) * (2048 - weight)) >>
                     22;
        store(out + e, narrow_to_bytes(sum[0], sum[1], sum[2], sum[3]));
    }
#endif
    for (; e < n; ++e) out[e] = (uint8_t)((upper_q11[e] * weight + lower_q11[e] * (2048 - weight)) >> 22);
}

// Four weights of a quarter each: output pixel k is the truncated mean of the pixels 2k and 2k + 1 of both
// rows.
static void halve_rows(const uint8_t* upper, const uint8_t* lower, int channels, uint8_t* out, ptrdiff_t n) {
    ptrdiff_t k = 0;
#ifdef ORVEX_VEC
    if (channels == 1) {
        for (; k + kBytes <= n; k += kBytes) {
            U16 sum[2];
            for (int h = 0; h < 2; ++h) {
                const U16 u = (U16)load(upper + 2 * k + h * kBytes),
                          l = (U16)load(lower + 2 * k + h * kBytes);
                sum[h] = ((u & 255) + (u >> 8) + (l & 255) + (l >> 8)) >> 2;
            }
            const U8 v = narrow((I16)sum[0], (I16)sum[1]);
#if ORVEX_VEC == 32
            store(out + k, (U8)__builtin_shufflevector((U64)v, (U64)v, 0, 2, 1, 3));
#else
            store(out + k, v);
#endif
        }
    }
#endif
#ifdef ORVEX_LOOKUP
    if (channels == 3) {
        // Two output pixels in every half, from 12 of 16 bytes that are read; 8 are written for 6. What is
        // too much belongs to the next pixel, so the last one is left to the plain loop.
        const U8 pairs = ORVEX_REPEAT(0, 3, 1, 4, 2, 5, 6, 9, 7, 10, 8, 11, 255, 255, 255, 255);
        const U8 low_bytes =
            ORVEX_REPEAT(0, 2, 4, 6, 8, 10, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255);
        enum { kPixels = kBytes / 8 };
        for (; k + kPixels < n; k += kPixels) {
            const U16 u = (U16)pick(load_halves(upper + 6 * k, 12), pairs);
            const U16 l = (U16)pick(load_halves(lower + 6 * k, 12), pairs);
            const U16 sum = (u & 255) + (u >> 8) + (l & 255) + (l >> 8);
            const U64 six = (U64)pick((U8)(sum >> 2), low_bytes);
            for (int half = 0; half < kBytes / 16; ++half) {
                const uint64_t bytes = six[2 * half];
                __builtin_memcpy(out + 3 * (k + 2 * half), &bytes, 8);
            }
        }
    }
#endif
    for (; k < n; ++k)
        for (int c = 0; c < channels; ++c) {
            const ptrdiff_t at = 2 * k * channels + c;
            out[k * channels + c] =
                (uint8_t)((upper[at] + upper[at + channels] + lower[at] + lower[at + channels]) >> 2);
        }
}
