#include "turns.h"

#include <algorithm>
#include <utility>

namespace reference {

void rot90ClockWise_FlipLR(Image<Byte> src, Image<Byte>& dst, int n, int f, bool in_place) {
    if (src.rows == 0 || src.cols == 0) {
        dst = Image<Byte>();
        if (in_place) src = dst;
    }
    const int r = n % 4;
    Image<Byte> out;
    if (r % 2 == 1)
        out.create(src.cols, src.rows, src.channels, 0);
    else
        out.create(src.rows, src.cols, src.channels, 0);
    if (r >= 0 && out.rows > 0 && out.cols > 0) {
        src.need(0);
        const bool odd = f % 2 != 0;
        const int R = src.rows, C = src.cols;
        for (int i = 0; i < out.rows && src.channels > 0; ++i) {
            for (int j = 0; j < out.cols; ++j) {
                int row = 0, col = 0;
                if (r == 0) row = i, col = odd ? C - 1 - j : j;
                if (r == 1) row = R - 1 - j, col = odd ? C - 1 - i : i;
                if (r == 2) row = R - 1 - i, col = odd ? j : C - 1 - j;
                if (r == 3) row = j, col = odd ? i : C - 1 - i;
                for (int c = 0; c < src.channels; ++c)
                    out.data.at(
                        (static_cast<size_t>(i) * static_cast<size_t>(out.cols) + static_cast<size_t>(j)) *
                            static_cast<size_t>(src.channels) +
                        static_cast<size_t>(c)) =
                        src.data.at(
                            (static_cast<size_t>(row) * static_cast<size_t>(C) + static_cast<size_t>(col)) *
                                static_cast<size_t>(src.channels) +
                            static_cast<size_t>(c));
            }
        }
    }
    print_line("image rotation (including flip) cost time: #ms");
    std::swap(dst, out);
}

void rot90AntiClockWise(const Image<Byte>& src, Image<Byte>& dst, int n, bool in_place) {
    rot90ClockWise_FlipLR(src, dst, 4 - n % 4, 0, in_place);
}

namespace {
int sum(int64_t a, int64_t b, int64_t c = 0, int64_t d = 0) {
    return wrapping(a + b + c + d);
}
}  // namespace

Point rot90ClockWise(Point pt, Size size, int n) {
    const int w = sum(size.width, -1), h = sum(size.height, -1);
    const int x = std::min(std::max(pt.x, 0), w), y = std::min(std::max(pt.y, 0), h);
    const int64_t left = x, top = y;
    const int r = n % 4;
    if (r == 0) return {x, y};
    if (r == 1) return {y, sum(w, -left)};
    if (r == 2) return {sum(w, -left), sum(h, -top)};
    return {sum(h, -top), x};
}

Rect rot90ClockWise(Rect src, Size img_size, int n) {
    check(img_size.width >= sum(src.x, src.width), "img_size.width >= src.x + src.width", "rot90ClockWise");
    check(img_size.height >= sum(src.y, src.height), "img_size.height >= src.y + src.height",
          "rot90ClockWise");
    const int64_t x = src.x, y = src.y, w = src.width, h = src.height;
    const int r = n % 4;
    if (r == 0) return src;
    if (r == 1) return {src.y, sum(img_size.width, -1, -x, -w), src.height, src.width};
    if (r == 2)
        return {sum(img_size.width, -1, -x, -w), sum(img_size.height, -1, -y, -h), src.width, src.height};
    return {sum(img_size.height, -1, -y, -h), src.x, src.height, src.width};
}

}  // namespace reference
