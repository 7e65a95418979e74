#include "drawn.h"

#include <algorithm>
#include <cmath>

using docprep::Image;
using docprep::Rects;
using orvex_cv_991::Rect;

Rects rects_of(const std::vector<Rect>& list) {
    Rects rects;
    for (const Rect& rect : list) rects.push_back(rect);
    return rects;
}

Image gray_picture(int rows, int cols, int level) {
    Image picture;
    picture.mat_create(rows, cols, 1, level);
    return picture;
}

void fill(Image& picture, const Rect& rect, int level) {
    for (int row = rect.y; row < rect.y + rect.height; ++row)
        std::fill_n(picture.data + static_cast<ptrdiff_t>(row) * picture.cols + rect.x, rect.width,
                    static_cast<unsigned char>(level));
}

void shade(Image& picture, const std::function<double(int, int)>& level) {
    for (int row = 0; row < picture.rows; ++row)
        for (int col = 0; col < picture.cols; ++col)
            picture.data[static_cast<ptrdiff_t>(row) * picture.cols + col] =
                static_cast<unsigned char>(std::clamp(std::lround(level(col, row)), 0L, 255L));
}

int pixel(const Image& picture, int x, int y) {
    return picture.at(y, x);
}

Rects letters_of_line(int left, int n, const std::function<double(double)>& foot) {
    Rects letters;
    for (int k = 0; k < n; ++k) {
        const int x = left + 14 * k;
        const int above = k % 3 == 0 ? 20 : 14, below = k % 7 == 3 ? 5 : 0;
        const auto y = static_cast<int>(std::lround(foot(x + 4.5)));
        letters.push_back(Rect(x, y - above, 10, above + below));
    }
    return letters;
}

void append(Rects& rects, const Rects& others) {
    for (int k = 0; k < others.size; ++k) rects.push_back(others[k]);
}
