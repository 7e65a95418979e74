#include "pipeline/affine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point32f;

namespace {

/// Where a picture's centre lies: pixel (0, 0) is centred on (0, 0).
double centre(int extent) {
    return (extent - 1) / 2.0;
}

/// The extent on one axis of a mapped picture; `m` is that axis' row of the matrix.
double mapped_extent(const float* m, const Image& picture) {
    // What single precision adds to a quarter turn shall not cost another row of pixels.
    constexpr double kRounding = 0.01;
    const double extent = std::fabs(double{m[0]}) * picture.cols + std::fabs(double{m[1]}) * picture.rows;
    return std::max(1.0, std::ceil(extent - kRounding));
}

/// The shift on one axis that brings the picture's centre to that of a result of `extent`.
float centring_shift(const float* m, const Image& picture, int extent) {
    const double from_centre = double{m[0]} * centre(picture.cols) + double{m[1]} * centre(picture.rows);
    return static_cast<float>(centre(extent) - from_centre);
}

}  // namespace

Place mapped(const AffineMatrix& matrix, const Place& place) {
    return {double{matrix[0]} * place.x + double{matrix[1]} * place.y + double{matrix[2]},
            double{matrix[3]} * place.x + double{matrix[4]} * place.y + double{matrix[5]}};
}

std::string as_text(const AffineMatrix& matrix) {
    std::string text;
    for (const float value : matrix) {
        char number[24];
        std::snprintf(number, sizeof number, "%.9g", static_cast<double>(value));
        text += (text.empty() ? "" : ",") + std::string(number);
    }
    return text;
}

Mat<float> as_mat(const AffineMatrix& matrix) {
    Mat<float> mat;
    mat.mat_create(2, 3, 1, 0);
    std::copy(matrix.begin(), matrix.end(), mat.data);
    return mat;
}

AffineMatrix turn_about_centre(float degrees, float scale, const Image& picture) {
    const Point32f about(static_cast<float>(centre(picture.cols)), static_cast<float>(centre(picture.rows)));
    const Mat<float> turned = CImgproc::getRotationMatrix2D(about, degrees, scale);
    AffineMatrix matrix;
    std::copy_n(turned.data, matrix.size(), matrix.begin());
    return matrix;
}

WideExtents mapped_extents(const AffineMatrix& matrix, const Image& picture) {
    return {mapped_extent(&matrix[0], picture), mapped_extent(&matrix[3], picture)};
}

void centre_in(AffineMatrix& matrix, const Image& picture, int cols, int rows) {
    matrix[2] = centring_shift(&matrix[0], picture, cols);
    matrix[5] = centring_shift(&matrix[3], picture, rows);
}

AffineMatrix combined(const AffineMatrix& after, const AffineMatrix& before) {
    const Place origin = mapped(after, {before[2], before[5]});
    const auto product = [&](size_t row, size_t col) {
        return static_cast<float>(double{after[3 * row]} * double{before[col]} +
                                  double{after[3 * row + 1]} * double{before[col + 3]});
    };
    return {product(0, 0), product(0, 1), static_cast<float>(origin.x),
            product(1, 0), product(1, 1), static_cast<float>(origin.y)};
}

AffineMatrix inverse(const AffineMatrix& matrix) {
    const std::array<double, 6> m = {matrix[0], matrix[1], matrix[2], matrix[3], matrix[4], matrix[5]};
    const double determinant = m[0] * m[4] - m[1] * m[3];
    const double a = m[4] / determinant;
    const double b = -m[1] / determinant;
    const double d = -m[3] / determinant;
    const double e = m[0] / determinant;
    return {static_cast<float>(a), static_cast<float>(b), static_cast<float>(-(a * m[2] + b * m[5])),
            static_cast<float>(d), static_cast<float>(e), static_cast<float>(-(d * m[2] + e * m[5]))};
}

}  // namespace docprep
