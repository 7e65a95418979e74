#include "seals.h"

#include <algorithm>

namespace testing_support {

namespace {

void paint(U8& bgr, int x, int y, int b, int g, int r) {
    if (x < 0 || y < 0 || x >= bgr.cols || y >= bgr.rows) return;
    unsigned char* const pixel = bgr.data + (static_cast<ptrdiff_t>(y) * bgr.cols + x) * 3;
    pixel[0] = static_cast<unsigned char>(b);
    pixel[1] = static_cast<unsigned char>(g);
    pixel[2] = static_cast<unsigned char>(r);
}

}  // namespace

U8 colour_image(int rows, int cols, int b, int g, int r) {
    U8 m = filled(rows, cols, 3, 0);
    draw_box(m, 0, 0, cols, rows, b, g, r);
    return m;
}

void draw_ring(U8& bgr, int x, int y, int inner, int outer, int b, int g, int r) {
    for (int dy = -outer; dy <= outer; ++dy)
        for (int dx = -outer; dx <= outer; ++dx) {
            const int square = dx * dx + dy * dy;
            if (square <= outer * outer && square >= inner * inner) paint(bgr, x + dx, y + dy, b, g, r);
        }
}

void draw_box(U8& bgr, int x, int y, int width, int height, int b, int g, int r) {
    for (int dy = 0; dy < height; ++dy)
        for (int dx = 0; dx < width; ++dx) paint(bgr, x + dx, y + dy, b, g, r);
}

U8 any_seal_photo(Random& random) {
    const int rows = random.range(1, 180),
              cols = random.chance(20) ? random.range(321, 700) : random.range(1, 220);
    const int paper = random.range(180, 255);
    U8 photo = colour_image(rows, cols, paper, paper - random.range(0, 10), paper);
    for (int n = random.range(0, 5); n > 0; --n) {
        const int x = random.range(0, cols), y = random.range(0, rows);
        const int red = random.range(120, 255),
                  other = random.chance(80) ? random.range(0, 90) : random.range(90, 255);
        const int outer = random.range(1, 45);
        const int inner = random.chance(50) ? 0 : outer - random.range(1, outer);
        draw_ring(photo, x, y, inner, outer, other, other, red);
        for (int k = random.range(0, 6); k > 0; --k) {  // fragments around it
            // One after the other: arguments are evaluated in an order of the compiler's own.
            const int left = x + random.range(-2 * outer, 2 * outer);
            const int top = y + random.range(-2 * outer, 2 * outer);
            const int width = random.range(1, 14), height = random.range(1, 8);
            draw_box(photo, left, top, width, height, other, other, red);
        }
    }
    if (random.chance(30))
        for (int k = 0; k < rows * cols * 3; ++k)
            photo.data[k] =
                static_cast<unsigned char>(std::clamp(photo.data[k] + random.range(-12, 12), 0, 255));
    return photo;
}

}  // namespace testing_support
