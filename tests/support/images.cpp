#include "images.h"

#include <algorithm>
#include <utility>

namespace testing_support {

U8 image(std::initializer_list<std::initializer_list<int>> rows) {
    U8 m;
    m.mat_create(static_cast<int>(rows.size()), static_cast<int>(rows.begin()->size()), 1, 0);
    unsigned char* next = m.data;
    for (const auto& row : rows)
        for (const int value : row) *next++ = static_cast<unsigned char>(value);
    return m;
}

U8 filled(int rows, int cols, int channels, int value) {
    U8 m;
    m.mat_create(rows, cols, channels, value);
    return m;
}

namespace {

unsigned char any_nonzero(Random& random) {
    return static_cast<unsigned char>(random.chance(60) ? 255
                                                        : random.pick({1, 2, 100, 127, 128, 200, 254, 255}));
}

// A one-pixel path that winds inward, one pixel of background between its turns.
void draw_spiral(U8& m) {
    const auto set = [&](int row, int col) {
        return row >= 0 && row < m.rows && col >= 0 && col < m.cols && m.data[row * m.cols + col] != 0;
    };
    const auto inside = [&](int row, int col) {
        return row >= 0 && row < m.rows && col >= 0 && col < m.cols;
    };
    int row = 0, col = 0, down = 0, right = 1;
    for (int turns = 0; turns < 2;) {
        m.data[row * m.cols + col] = 255;
        if (inside(row + down, col + right) && !set(row + down, col + right) &&
            !set(row + 2 * down, col + 2 * right)) {
            row += down;
            col += right;
            turns = 0;
        } else {
            std::swap(down, right);
            right = -right;
            ++turns;
        }
    }
}

}  // namespace

U8 content(Random& random, int rows, int cols, int channels, Content kind) {
    U8 m;
    m.mat_create(rows, cols, channels, 0);
    const int width = cols * channels;
    const int base = random.range(0, 255);
    const int step = random.range(1, 9);
    if (kind == Content::kText && channels == 1) return text_page(rows, cols, random.bits());
    if (kind == Content::kSpiral && channels == 1) {
        draw_spiral(m);
        return m;
    }
    for (int row = 0; row < rows; ++row) {
        for (int x = 0; x < width; ++x) {
            const int col = x / channels;
            int value = 0;
            switch (kind) {
                case Content::kNoise:
                    value = random.range(0, 255);
                    break;
                case Content::kConstant:
                    value = base;
                    break;
                case Content::kSparse:
                    value = random.chance(4) ? any_nonzero(random) : 0;
                    break;
                case Content::kDense:
                    value = random.chance(96) ? any_nonzero(random) : 0;
                    break;
                case Content::kHalf:
                    value = random.chance(50) ? any_nonzero(random) : 0;
                    break;
                case Content::kCheckerboard:
                    value = (row + col) % 2 == base % 2 ? 255 : 0;
                    break;
                case Content::kStripes:
                    value = (base % 2 ? row : col) / step % 2 ? 255 : 0;
                    break;
                case Content::kSpiral:
                    value = std::min(row, col) % 2 ? 0 : 255;
                    break;
                case Content::kText:
                    value = col / 3 % 4 && row / 5 % 2 && random.chance(70) ? 20 : 230;
                    break;
                case Content::kGradient:
                    value = (base + row * step + col * 2) % 256;
                    break;
                case Content::kFewLevels:
                    value = (base + random.range(0, step % 4) * 40) % 256;
                    break;
                case Content::kCount:
                    break;
            }
            m.data[static_cast<ptrdiff_t>(row) * width + x] = static_cast<unsigned char>(value);
        }
    }
    return m;
}

int any_side(Random& random) {
    if (random.chance(12)) return random.range(1, 4);
    return random.chance(6) ? random.pick({101, 127}) : random.range(1, 67);
}

U8 any_image(Random& random, int channels, int rows, int cols) {
    const auto kind = static_cast<Content>(random.range(0, static_cast<int>(Content::kCount) - 1));
    return content(random, rows, cols, channels, kind);
}

U8 any_image(Random& random, int channels) {
    const int rows = any_side(random);
    return any_image(random, channels, rows, any_side(random));
}

U8 any_binary(Random& random) {
    U8 m = any_image(random, 1);
    const bool invert = random.chance(50);
    for (int i = 0; i < m.rows * m.cols; ++i) m.data[i] = (m.data[i] > 127) != invert ? 255 : 0;
    return m;
}

U8 any_previous(Random& random) {
    if (random.chance(30)) return U8();
    // One after the other: arguments are evaluated in an order of the compiler's own.
    const int rows = random.range(0, 9), cols = random.range(0, 9);
    const int channels = random.range(0, 4), value = random.range(0, 255);
    return filled(rows, cols, channels, value);
}

U8 text_page(int rows, int cols, uint64_t seed) {
    Random random(seed);
    U8 m = filled(rows, cols, 1, 225);
    for (int row = 0; row < rows; ++row)
        for (int col = 0; col < cols; ++col)
            m.data[static_cast<ptrdiff_t>(row) * cols + col] =
                static_cast<unsigned char>(225 - 30 * col / cols + random.range(-6, 6));
    for (int top = 3; top + 8 < rows; top += random.range(13, 17)) {
        int left = random.range(2, 8);
        while (left + 7 < cols) {
            // A letter: strokes inside a cell of 5 x 8.
            const uint64_t strokes = random.bits() | random.bits();
            for (int y = 0; y < 8; ++y)
                for (int x = 0; x < 5; ++x)
                    if (strokes >> (y * 5 + x) & 1)
                        m.data[static_cast<ptrdiff_t>(top + y) * cols + left + x] =
                            static_cast<unsigned char>(40 + random.range(0, 30));
            left += random.chance(15) ? 12 : 7;
        }
    }
    return m;
}

int count(const U8& m, int value) {
    return static_cast<int>(std::count(m.data, m.data + m.rows * m.cols, static_cast<unsigned char>(value)));
}

std::string shape_of(const U8& m) {
    return std::to_string(m.rows) + " x " + std::to_string(m.cols) + " x " + std::to_string(m.channels);
}

std::vector<U8> odd_matrices() {
    std::vector<U8> list;
    list.push_back(filled(-2, -3, 1, 7));
    list.push_back(filled(-2, -3, 1, 255));
    list.push_back(filled(-1, -1, 1, 255));
    list.push_back(filled(-2, -3, 3, 9));
    list.push_back(filled(2, -3, -1, 9));
    list.push_back(filled(65536, 65536, 1, 0));
    list.push_back(filled(65536, 65536, 3, 0));
    list.push_back(filled(65536, 65537, 1, 5));
    list.push_back(filled(65537, 65536, 3, 5));
    list.push_back(filled(3, 4, 0, 0));
    list.push_back(filled(0, 5, 1, 0));
    list.push_back(filled(5, 0, 3, 0));
    list.push_back(filled(0, -5, 1, 0));
    list.push_back(U8());
    return list;
}

}  // namespace testing_support
