#include "morphology.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "thresholds.h"

namespace reference {

namespace {

// One pass over windows of `length` along one axis: an output is `hit` where some position of its window that
// lies inside the image has a value for which `decides` holds, otherwise `none`.
Image<Byte> pass(const Image<Byte>& from, bool along_rows, int length,
                 const std::function<bool(Byte)>& decides, Byte hit, Byte none) {
    Image<Byte> to;
    to.create(from.rows, from.cols, 1, none);
    const int before = length / 2, after = length - 1 - length / 2;
    for (int r = 0; r < from.rows; ++r) {
        for (int c = 0; c < from.cols; ++c) {
            for (int k = -before; k <= after; ++k) {
                const int row = along_rows ? r : r + k, col = along_rows ? c + k : c;
                if (row < 0 || row >= from.rows || col < 0 || col >= from.cols) continue;
                if (!decides(from.data.at(static_cast<size_t>(row * from.cols + col)))) continue;
                to.data.at(static_cast<size_t>(r * from.cols + c)) = hit;
                break;
            }
        }
    }
    return to;
}

void check_window(const Image<Byte>& src, Size size, const std::string& function) {
    check(size.width > 0, "size.width > 0", function);
    check(size.height > 0, "size.height > 0", function);
    check(src.rows >= size.height, "src.rows >= size.height", function);
    check(src.cols >= size.width, "src.cols >= size.width", function);
}

}  // namespace

void dilateBinary(Image<Byte> src, Image<Byte>& dst, Size size) {
    check(!src.empty(), "!src.empty()", "dilateBinary");
    check_window(src, size, "dilateBinary");
    Image<Byte> out;
    out.create(src.rows, src.cols, 1, 0);
    src.flat();
    const auto set = [](Byte value) { return value != 0; };
    const Image<Byte> between = pass(src, true, size.width, set, 255, 0);
    out = pass(between, false, size.height, set, 255, 0);
    std::swap(dst, out);
    print_line("binary image dilate cost time: #ms");
}

void erodeBinary(Image<Byte> src, Image<Byte>& dst, Size size) {
    check(!src.empty(), "!src.empty()", "erodeBinary");
    check(1 == src.channels, "1 == src.channels", "erodeBinary");
    check_window(src, size, "erodeBinary");
    Image<Byte> out;
    out.create(src.rows, src.cols, 1, 0);
    src.flat();
    const auto clear = [](Byte value) { return value <= 127; };
    const Image<Byte> between = pass(src, true, size.width, clear, 0, 255);
    out = pass(between, false, size.height, clear, 0, 255);
    std::swap(dst, out);
}

void openBinary(Image<Byte> src, Image<Byte>& dst, Size size) {
    Image<Byte> between;
    erodeBinary(std::move(src), between, size);
    dilateBinary(between, dst, size);
}

void closeBinary(Image<Byte> src, Image<Byte>& dst, Size size) {
    Image<Byte> between;
    dilateBinary(std::move(src), between, size);
    erodeBinary(between, dst, size);
}

void morphologyBinary(Image<Byte> src, Image<Byte>& dst, Size size, int type) {
    check(!src.empty(), "!src.empty()", "morphologyBinary");
    check(1 == src.channels, "1 == src.channels", "morphologyBinary");
    if (type == 0)
        dilateBinary(std::move(src), dst, size);
    else if (type == 1)
        erodeBinary(std::move(src), dst, size);
    else if (type == 2)
        openBinary(std::move(src), dst, size);
    else if (type == 3)
        closeBinary(std::move(src), dst, size);
    else
        throw Failure{1, ""};
}

Rect dilateRect(Rect src, Size size) {
    const auto sum = [](int64_t a, int64_t b) { return wrapping(a + b); };
    return {std::max(sum(src.x, -static_cast<int64_t>(size.width)), 0),
            std::max(sum(src.y, -static_cast<int64_t>(size.height)), 0),
            sum(src.width, 2 * static_cast<int64_t>(size.width)),
            sum(src.height, 2 * static_cast<int64_t>(size.height))};
}

namespace {

Image<Byte> extreme_pass(const Image<Byte>& from, bool along_rows, int length, bool largest) {
    Image<Byte> to;
    to.create(from.rows, from.cols, 1, 0);
    const int before = length / 2, after = length - 1 - length / 2;
    for (int r = 0; r < from.rows; ++r) {
        for (int c = 0; c < from.cols; ++c) {
            Byte running = largest ? 0 : 255;
            for (int k = -before; k <= after; ++k) {
                const int row = along_rows ? r : r + k, col = along_rows ? c + k : c;
                if (row < 0 || row >= from.rows || col < 0 || col >= from.cols) continue;
                const Byte value = from.data.at(static_cast<size_t>(row * from.cols + col));
                running = largest ? std::max(running, value) : std::min(running, value);
            }
            to.data.at(static_cast<size_t>(r * from.cols + c)) = running;
        }
    }
    return to;
}

void extreme(const Image<Byte>& src, Image<Byte>& dst, Size size, bool largest) {
    const std::string function = largest ? "dilateGray" : "erodeGray";
    check(!src.empty(), "!src.empty()", function);
    check(1 == src.channels, "1 == src.channels", function);
    check_window(src, size, function);
    src.flat();
    Image<Byte> out = extreme_pass(extreme_pass(src, true, size.width, largest), false, size.height, largest);
    std::swap(dst, out);
}

}  // namespace

void dilateGray(Image<Byte> src, Image<Byte>& dst, Size size) {
    extreme(src, dst, size, true);
}

void erodeGray(Image<Byte> src, Image<Byte>& dst, Size size) {
    extreme(src, dst, size, false);
}

void morphGradient(Image<Byte> src, Image<Byte>& dst, Size size) {
    check(!src.empty(), "!src.empty()", "morphGradient");
    check(1 == src.channels, "1 == src.channels", "morphGradient");
    try {
        dst.create(src.rows, src.cols, 1, 0);
        Image<Byte> d, e, g;
        dilateGray(src, d, size);
        erodeGray(src, e, size);
        g.create(src.rows, src.cols, 1, 0);
        for (size_t i = 0; i < g.data.size(); ++i)
            g.data.at(i) = static_cast<Byte>(d.data.at(i) - e.data.at(i));
        const int t = otsu(g);
        thresholdSeg(g, dst, t);
    } catch (const Failure&) {
        throw Failure{2, ""};
    }
    print_line("morph gradient cost time: #ms");
}

}  // namespace reference
