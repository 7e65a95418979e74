#include "color.h"

#include <algorithm>

namespace reference {

void bgr2gray(Image<Byte> src, Image<Byte>& dst) {
    Image<Byte> local;
    local.create(src.rows, src.cols, 1, 0);
    if (src.rows == 0 || src.cols == 0) {
        print_line("bgr2gray - source image is empty");
    } else if (src.channels == 3) {
        src.need(0);  // what is sound has 3 bytes a pixel
        for (int p = 0; p < src.rows * src.cols; ++p) {
            const size_t at = static_cast<size_t>(p) * 3;
            const uint32_t b = src.data.at(at), g = src.data.at(at + 1), r = src.data.at(at + 2);
            local.data.at(static_cast<size_t>(p)) =
                static_cast<Byte>((107 * b + 601 * g + 306 * r + 512) >> 10);
        }
    } else if (src.channels == 1) {
        src.need(0);
        local = src;
        local.dims_rows = src.rows;  // a copy is created anew, so its layout fields follow its shape
        local.dims_cols = src.cols;
        local.step = src.cols;
        local.elem_size = 1;
        print_line("bgr2gray - source image is 1-channel");
    }
    std::swap(dst, local);
    print_line("bgr2gray cost time: #ms");
}

void yuv2bgr(const std::vector<Byte>& yuv, int rows, int cols, Image<Byte>& dst) {
    dst.create(rows, cols, 3, 0);
    if (rows > 0) dst.need(0);
    int u = 0, v = 0;
    for (int i = 0; cols > 0 && i < rows; ++i) {
        int k = ((i >> 1) + rows) * cols;
        for (int j = 0; j < cols; ++j) {
            const int luma = std::max(yuv.at(static_cast<size_t>(i * cols + j)) - 16, 0) * 1192;
            if (j % 2 == 0) {
                v = yuv.at(static_cast<size_t>(k)) - 128;
                u = yuv.at(static_cast<size_t>(k) + 1) - 128;
                k += 2;
            }
            const int r = luma + 1634 * v;
            const int g = luma - 833 * v - 400 * u;
            const int b = luma + 2066 * u;
            const size_t at =
                (static_cast<size_t>(i) * static_cast<size_t>(cols) + static_cast<size_t>(j)) * 3;
            dst.data.at(at) = static_cast<Byte>(std::clamp(b, 0, 262143) >> 10);
            dst.data.at(at + 1) = static_cast<Byte>(std::clamp(g, 0, 262143) >> 10);
            dst.data.at(at + 2) = static_cast<Byte>(std::clamp(r, 0, 262143) >> 10);
        }
    }
    print_line("yuv to bgr done (#ms)");
}

namespace {

// round(1044480 / i) in integers
int division_entry(int i) {
    return i == 0 ? 0 : (2 * 1044480 + i) / (2 * i);
}

}  // namespace

void bgr2hsv(Image<Byte> src, Image<Byte>& dst) {
    dst.create(src.rows, src.cols, 3, 0);
    if (src.rows < 1) return;
    src.need(0);
    dst.need(0);
    for (int p = 0; p < src.rows * src.cols; ++p) {
        const auto byte = [&](int c) -> int {
            const int64_t at = static_cast<int64_t>(p) * std::max(src.channels, 3) + c;
            return at < static_cast<int64_t>(src.data.size()) ? src.data.at(static_cast<size_t>(at)) : 0;
        };
        const int b = byte(0), g = byte(1), r = byte(2);
        const int value = std::max({b, g, r});
        const int diff = value - std::min({b, g, r});
        int h;
        if (value == r)
            h = g - b;
        else if (value == g)
            h = b - r + 2 * diff;
        else
            h = r - g + 4 * diff;
        const unsigned s = static_cast<unsigned>(division_entry(value) * diff) >> 12;
        int hue = (division_entry(diff) * h * 15 + 262144) >> 19;
        if (h < 0) hue += 180;
        const size_t at = static_cast<size_t>(p) * 3;
        dst.data.at(at) = static_cast<Byte>(hue);
        dst.data.at(at + 1) = static_cast<Byte>(s);
        dst.data.at(at + 2) = static_cast<Byte>(value);
    }
}

}  // namespace reference
