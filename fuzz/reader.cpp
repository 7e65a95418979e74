#include "reader.h"

#include <climits>
#include <cmath>
#include <cstring>

#include "util_exception.h"

namespace fuzzing {

bool affordable(const Shape& shape, int most) {
    const int pixels = reference::wrapping_product(shape.rows, shape.cols);
    for (const int channels : {1, 3, shape.channels})
        if (reference::wrapping_product(pixels, channels) > most) return false;
    // Without channels nothing is allocated, and every pixel is walked over.
    return shape.channels != 0 || int64_t{shape.rows} * shape.cols <= most;
}

uint32_t Reader::word() {
    uint32_t value = 0;
    for (int k = 0; k < 4; ++k) value = value << 8 | static_cast<uint32_t>(byte());
    return value;
}

int Reader::range(int low, int high) {
    const uint64_t span = static_cast<uint64_t>(int64_t{high} - low + 1);
    uint64_t value = static_cast<uint64_t>(byte());
    if (span > 256) value = value << 8 | static_cast<uint64_t>(byte());
    if (span > 65536) value = value << 32 | word();
    return static_cast<int>(low + static_cast<int64_t>(value % span));
}

int Reader::integer() {
    const int kind = byte();
    if (kind < 160) return kind - 16;
    if (kind < 224) return range(INT16_MIN, INT16_MAX);
    if (kind < 240)
        return pick({INT_MAX, INT_MIN, INT_MAX - 1, INT_MIN + 1, -1, 46341, 65535, 65536, -65536, 1 << 24});
    return static_cast<int>(word());
}

float Reader::number() {
    const int kind = byte();
    if (kind < 96) return static_cast<float>(kind - 32);
    if (kind < 160) return static_cast<float>(range(INT16_MIN, INT16_MAX)) / 16384.0f;
    if (kind < 224) return static_cast<float>(range(INT16_MIN, INT16_MAX)) / 128.0f;
    if (kind < 240)
        return pick(
            {0.5f, -0.0f, HUGE_VALF, -HUGE_VALF, std::nanf(""), 1e38f, -1e38f, 1e-40f, 2147483648.0f});
    const uint32_t bits = word();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

orvex_cv_991::Point Reader::point() {
    const int x = integer();
    return orvex_cv_991::Point(x, integer());
}

orvex_cv_991::Size Reader::size() {
    const int width = integer();
    return orvex_cv_991::Size(width, integer());
}

orvex_cv_991::Rect Reader::rect() {
    const orvex_cv_991::Point at = point();
    const orvex_cv_991::Size extents = size();
    return orvex_cv_991::Rect(at.x, at.y, extents.width, extents.height);
}

std::vector<unsigned char> Reader::rest() {
    std::vector<unsigned char> bytes(next_, end_);
    next_ = end_;
    return bytes;
}

int Reader::side() {
    const int kind = byte();
    if (kind < 208) return 1 + kind % 26;
    // Around the widths of machine words and of vectors.
    return pick({31, 32, 33, 47, 48, 49, 63, 64, 65, 95, 96, 97, 127, 128, 129, 255, 256, 257});
}

Shape Reader::shape(int channels, int most) {
    if (seldom()) {
        const auto extent = [&] {
            return flag() ? range(-4, 11)
                          : pick({INT_MIN, -65537, -65536, -50000, -1, 0, 1, 3, 32768, 50000, 65535, 65536,
                                  65537, INT_MAX});
        };
        Shape odd{};
        odd.rows = extent();
        odd.cols = extent();
        odd.channels = flag() ? channels : extent();
        if (affordable(odd, most)) return odd;
    }
    Shape shape{side(), side(), channels};
    shape.rows = std::min(shape.rows, most);
    shape.cols = std::min(shape.cols, most / shape.rows);
    if (seldom()) shape.channels = range(0, 5);
    return shape;
}

U8 Reader::image(const Shape& shape) {
    U8 m;
    try {
        m.mat_create(shape.rows, shape.cols, shape.channels, 0);
    } catch (const orvex_991::CException&) {
        return m;  // has the shape and no pixels
    }
    const int pixels = reference::wrapping_product(shape.rows, shape.cols);
    fill(m, static_cast<size_t>(reference::wrapping_product(pixels, shape.channels)));
    return m;
}

void Reader::fill(U8& m, size_t n) {
    const int kind = byte() % 8;
    const int first = byte();
    uint32_t noise = static_cast<uint32_t>(first) * 2654435761u + 1;
    const auto draw = [&] {
        noise = noise * 1664525u + 1013904223u;
        return noise >> 24;
    };
    const size_t width = static_cast<size_t>(m.cols > 0 ? m.cols : 1);
    size_t i = 0;
    switch (kind) {
        case 0:  // runs
            while (i < n && left() > 0) {
                const int value = byte();
                for (int k = byte(); k >= 0 && i < n; --k) m.data[i++] = static_cast<unsigned char>(value);
            }
            break;
        case 1:  // bits
            while (i < n && left() > 0)
                for (int bits = byte(), k = 0; k < 8 && i < n; ++k)
                    m.data[i++] = static_cast<unsigned char>(bits >> k & 1 ? 255 : 0);
            break;
        case 2:  // noise
            while (i < n) m.data[i++] = static_cast<unsigned char>(draw());
            break;
        case 3:  // noise of two levels
            for (const int low = byte(), high = byte(); i < n;)
                m.data[i++] = static_cast<unsigned char>(draw() < 128 ? low : high);
            break;
        case 4:  // a ramp
            for (const size_t down = static_cast<size_t>(byte()), right = static_cast<size_t>(byte()); i < n;
                 ++i)
                m.data[i] = static_cast<unsigned char>(i / width * down + i % width * right);
            break;
        case 5:  // a constant, and pixels that differ from it
            while (i < n) m.data[i++] = static_cast<unsigned char>(first);
            for (int k = byte() % 16; k > 0 && n > 0; --k) {
                const size_t at = word() % n;
                m.data[at] = static_cast<unsigned char>(byte());
            }
            return;
        default:  // bytes as they come
            while (i < n && left() > 0) m.data[i++] = static_cast<unsigned char>(byte());
    }
    while (i < n) m.data[i++] = static_cast<unsigned char>(first);
}

U8 Reader::previous(const U8& src) {
    const int kind = byte() % 4;
    if (kind == 0) return U8();
    const Shape same{src.rows, src.cols, kind == 1 ? 1 : range(0, 4)};
    if (kind < 3 && affordable(same, 4096)) return image(same);
    const Shape other{range(0, 9), range(0, 9), range(0, 4)};
    return testing_support::filled(other.rows, other.cols, other.channels, 7);
}

U8 Reader::mask(const U8& src) {
    const int kind = byte();
    if (kind >= 240) return U8();
    if (kind >= 224) return image(1, 64);
    const Shape same{src.rows, src.cols, kind >= 208 ? range(0, 3) : 1};
    return affordable(same, 4096) ? image(same) : U8();
}

}  // namespace fuzzing
