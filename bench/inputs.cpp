#include "inputs.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

#include "formats/photo.h"

namespace bench {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

U8 noise_of(int rows, int cols, unsigned percent) {
    std::mt19937 random(percent);
    U8 m;
    m.mat_create(rows, cols, 1, 0);
    for (int i = 0; i < rows * cols; ++i) m.data[i] = random() % 100 < percent ? 255 : 0;
    return m;
}

void fill(U8& m, int top, int left, int height, int width) {
    for (int row = top; row < std::min(top + height, m.rows); ++row)
        std::fill_n(m.data + static_cast<ptrdiff_t>(row) * m.cols + left,
                    std::max(0, std::min(width, m.cols - left)), static_cast<unsigned char>(255));
}

/// Letters of some 12 x 18 pixels with strokes of 2, in lines 28 apart, a few of them with a dot.
U8 text_of(int rows, int cols) {
    std::mt19937 random(7);
    U8 m;
    m.mat_create(rows, cols, 1, 0);
    for (int top = 20; top + 30 < rows; top += 28) {
        for (int left = 30; left + 40 < cols; left += random() % 6 == 0 ? 22 : 14) {
            const unsigned shape = random();
            const int low = shape & 1 ? 6 : 0;  // small letters
            fill(m, top + low, left, 18 - low, 2);
            if (shape & 2) fill(m, top + low, left + 9, 18 - low, 2);
            if (shape & 4) fill(m, top + low, left, 2, 11);
            if (shape & 8) fill(m, top + 11, left, 2, 11);
            if (shape & 16) fill(m, top + 16, left, 2, 11);
            if ((shape & 224) == 0 && low) fill(m, top, left, 3, 3);
        }
    }
    return m;
}

}  // namespace

bool parse_size(const std::string& text, int& cols, int& rows) {
    return std::sscanf(text.c_str(), "%dx%d", &cols, &rows) == 2 && cols >= 64 && rows >= 64;
}

Inputs make_inputs(int rows, int cols, const std::string& photo_file) {
    Inputs in;
    in.rows = rows;
    in.cols = cols;
    const docprep::Photo photo = docprep::read_photo(photo_file);
    CImgproc::resize(photo.pixels, in.photo, Size(cols, rows), orvex_cv_991::INTERP_LINEAR);
    CImgproc::bgr2gray(in.photo, in.gray);
    in.text = text_of(rows, cols);
    in.half_noise = noise_of(rows, cols, 50);
    in.noise = noise_of(rows, cols, 10);
    in.blob.mat_create(rows, cols, 1, 0);
    for (int row = 0; row < rows; ++row)
        for (int col = 0; col < cols; ++col) {
            const double x = (col - cols / 2) * 0.96 + (row - rows / 2) * 0.28;
            const double y = (row - rows / 2) * 0.96 - (col - cols / 2) * 0.28;
            if (std::abs(x) < cols * 0.3 && std::abs(y) < rows * 0.3) in.blob.data[row * cols + col] = 255;
        }
    std::mt19937 random(3);
    in.nv21.resize(static_cast<size_t>(rows) * static_cast<size_t>(cols) * 3 / 2);
    std::copy_n(in.gray.data, rows * cols, in.nv21.begin());
    for (size_t i = static_cast<size_t>(rows) * static_cast<size_t>(cols); i < in.nv21.size(); ++i)
        in.nv21[i] = static_cast<unsigned char>(108 + random() % 40);
    return in;
}

orvex_991::vector<Point> disc_of_points(int n) {
    std::mt19937 random(11);
    orvex_991::vector<Point> points;
    points.reserve(n);
    while (points.size < n) {
        const int x = static_cast<int>(random() % 20001) - 10000,
                  y = static_cast<int>(random() % 20001) - 10000;
        if (x * x + y * y <= 100000000) points.push_back(Point(x, y));
    }
    return points;
}

orvex_991::vector<Rect> letters(int n, int rows) {
    std::mt19937 random(13);
    orvex_991::vector<Rect> rects;
    for (int k = 0; k < n; ++k)
        rects.push_back(Rect(
            static_cast<int>(random() % 3000),
            static_cast<int>(random() % static_cast<unsigned>(rows)) * 40 + static_cast<int>(random() % 8),
            12, 20));
    return rects;
}

}  // namespace bench
