#include "geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace reference {

void resize(Image<Byte> src, Image<Byte>& dst, Size out_size, int interp) {
    check(!src.empty(), "!src.empty()", "resize");
    check(out_size.width > 0, "out_size.width > 0", "resize");
    check(out_size.height > 0, "out_size.height > 0", "resize");
    const float fx = static_cast<float>(out_size.width) / static_cast<float>(src.cols);
    const float fy = static_cast<float>(out_size.height) / static_cast<float>(src.rows);
    Image<float> matrix;
    matrix.create(2, 3, 1, 0);
    matrix.at(0, 0) = fx;
    const float half_x = fx * 0.5f;
    matrix.at(0, 2) = half_x + (-0.5f);
    matrix.at(1, 1) = fy;
    const float half_y = fy * 0.5f;
    matrix.at(1, 2) = half_y + (-0.5f);
    warpAffine(std::move(src), dst, matrix, out_size, interp, nullptr);
    print_line("image resize cost time: #ms");
}

void resize(Image<Byte> src, Image<Byte>& dst, float scale, int interp) {
    check(!src.empty(), "!src.empty()", "resize");
    check(scale > 0.f, "scale > 0.f", "resize");
    const float rows = static_cast<float>(src.rows) * scale;
    check(rows >= 1, "src.rows * scale >= 1", "resize");
    const float cols = static_cast<float>(src.cols) * scale;
    check(cols >= 1, "src.cols * scale >= 1", "resize");
    resize(std::move(src), dst, Size{to_int(cols), to_int(rows)}, interp);
}

Image<float> getRotationMatrix2D(float cx, float cy, float angle, float scale) {
    check(scale > 0, "scale > 0", "getRotationMatrix2D");
    const float r = angle * 0.017453279f;
    const float alpha = cosf(r) * scale;
    const float beta = sinf(r) * scale;
    const float rest = 1.0f - alpha;
    const float cx_rest = cx * rest, cy_beta = cy * beta, rest_cy = rest * cy, beta_cx = beta * cx;
    Image<float> matrix;
    matrix.create(2, 3, 1, 0);
    matrix.data = {alpha, beta, cx_rest - cy_beta, -beta, alpha, rest_cy + beta_cx};
    return matrix;
}

void warpAffine(Image<Byte> src, Image<Byte>& dst, const Image<float>& trans_matrix, Size out_size,
                int interp, Image<Byte>* mask) {
    check(!src.empty(), "!src.empty()", "warpAffine");
    check(!trans_matrix.empty(), "!trans_matrix.empty()", "warpAffine");
    check(2 == trans_matrix.rows, "2 == trans_matrix.rows", "warpAffine");
    check(3 == trans_matrix.cols, "3 == trans_matrix.cols", "warpAffine");
    trans_matrix.need(6);
    const float m00 = trans_matrix.data[0], m01 = trans_matrix.data[1], m02 = trans_matrix.data[2];
    const float m10 = trans_matrix.data[3], m11 = trans_matrix.data[4], m12 = trans_matrix.data[5];
    const float diagonal = m00 * m11, other = m01 * m10;
    const float determinant = diagonal - other;
    const double k = determinant != 0.0f ? 1.0 / determinant : 0.0;
    const float a00 = static_cast<float>(m11 * k);
    const float a01 = static_cast<float>(m01 * (-k));
    const float a10 = static_cast<float>(m10 * (-k));
    const float a11 = static_cast<float>(m00 * k);
    const float x_first = -(a00 * m02), x_second = a01 * m12;
    const float a02 = x_first - x_second;
    const float y_first = -(m02 * a10), y_second = a11 * m12;
    const float a12 = y_first - y_second;

    Image<Byte> out;
    out.create(out_size.height, out_size.width, src.channels, 0);
    const bool writes = interp == 0 && out.rows > 0 && out.cols > 0;
    if (writes) out.need(0);
    if (interp == 0) {
        print_line("linear");
        if (writes) {
            src.need(0);
            if (mask) mask->need(static_cast<int64_t>(out.rows) * out.cols);
        }
        const auto element = [&](int row, int col, int c) -> int {
            const int64_t at = (static_cast<int64_t>(row) * src.cols + col) * src.channels + c;
            return src.data.at(static_cast<size_t>(at));
        };
        const int64_t last_row = int64_t{src.rows} - 1, last_col = int64_t{src.cols} - 1;
        size_t next = 0, next_mask = 0;
        for (int i = 0; i < out.rows; ++i) {
            for (int j = 0; j < out.cols; ++j) {
                const float fi = static_cast<float>(i), fj = static_cast<float>(j);
                const float x_row = a01 * fi, x_col = a00 * fj, x_sum = x_row + x_col;
                const float sx = x_sum + a02;
                const float y_row = a11 * fi, y_col = a10 * fj, y_sum = y_row + y_col;
                const float sy = y_sum + a12;
                const int row = to_int(floorf(sy)), col = to_int(floorf(sx));
                if (0 <= row && row < last_row && 0 <= col && col < last_col) {
                    const float fx = sx - static_cast<float>(col), fy = sy - static_cast<float>(row);
                    const float weight_x = (1.0f - fx) * 2048.0f, weight_y = (1.0f - fy) * 2048.0f;
                    const short wx0 = static_cast<short>(to_int(weight_x)),
                                wy0 = static_cast<short>(to_int(weight_y));
                    const short wx1 = static_cast<short>(2048 - wx0), wy1 = static_cast<short>(2048 - wy0);
                    for (int c = 0; c < src.channels; ++c) {
                        const int sum =
                            element(row, col, c) * wx0 * wy0 + element(row, col + 1, c) * wx1 * wy0 +
                            element(row + 1, col, c) * wx0 * wy1 + element(row + 1, col + 1, c) * wx1 * wy1;
                        out.data.at(next++) = static_cast<Byte>(sum >> 22);
                    }
                    if (mask) mask->data.at(next_mask++) = 1;
                } else {
                    const int nearest_row = static_cast<int>(std::min<int64_t>(std::max(row, 0), last_row));
                    const int nearest_col = static_cast<int>(std::min<int64_t>(std::max(col, 0), last_col));
                    for (int c = 0; c < src.channels; ++c)
                        out.data.at(next++) = static_cast<Byte>(element(nearest_row, nearest_col, c));
                    if (mask) mask->data.at(next_mask++) = 0;
                }
            }
        }
    }
    std::swap(dst, out);
    print_line("warpaffine cost time: #ms");
}

Point pointAffine(Point pt, const Image<float>& m, float scale, Point origin) {
    check(m.rows == 2 && m.cols == 3, "trans_mat.rows == 2 && trans_mat.cols == 3", "pointAffine");
    int mapped[2];
    for (int row = 0; row < 2; ++row) {
        const float by_row = static_cast<float>(pt.y) * m.at(row, 1);
        const float by_col = static_cast<float>(pt.x) * m.at(row, 0);
        const float sum = by_row + by_col;
        const float moved = sum + m.at(row, 2);
        const float scaled = moved * scale;
        mapped[row] = to_int(static_cast<float>(row == 0 ? origin.x : origin.y) + scaled);
    }
    return {mapped[0], mapped[1]};
}

Rect rectAffine(Rect src, const Image<float>& m) {
    const auto sum = [](int64_t a, int64_t b, int64_t c) { return wrapping(a + b + c); };
    const int right = sum(src.x, src.width, -1), bottom = sum(src.y, src.height, -1);
    const Point tl = pointAffine({src.x, src.y}, m, 1.0f, {0, 0});
    const Point bl = pointAffine({src.x, bottom}, m, 1.0f, {0, 0});
    const Point tr = pointAffine({right, src.y}, m, 1.0f, {0, 0});
    const Point br = pointAffine({right, bottom}, m, 1.0f, {0, 0});
    const int x = std::min(tl.x, bl.x), y = std::min(tl.y, tr.y);
    return {x, y, sum(std::max(tr.x, br.x), -static_cast<int64_t>(x), 1),
            sum(std::max(bl.y, br.y), -static_cast<int64_t>(y), 1)};
}

Rect checkRectInMat(Size size, Rect rect) {
    const auto sum = [](int64_t a, int64_t b, int64_t c) { return wrapping(a + b + c); };
    const int right = sum(size.width, -1, 0), bottom = sum(size.height, -1, 0);
    const int last_x = sum(rect.x, rect.width, -1), last_y = sum(rect.y, rect.height, -1);
    const int x0 = std::min(std::max(rect.x, 0), right), y0 = std::min(std::max(rect.y, 0), bottom);
    const int x1 = std::max(std::min(last_x, right), 0), y1 = std::max(std::min(last_y, bottom), 0);
    return {x0, y0, sum(x1, -static_cast<int64_t>(x0), 1), sum(y1, -static_cast<int64_t>(y0), 1)};
}

}  // namespace reference
