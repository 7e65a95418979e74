// Affine maps of pictures.
#ifndef DOCPREP_AFFINE_H
#define DOCPREP_AFFINE_H

#include <array>
#include <string>

#include "base/image.h"

namespace docprep {

/// [0 1 2; 3 4 5], from a picture's (x, y) to the result's.
using AffineMatrix = std::array<float, 6>;

/// A point between pixels; pixel (0, 0) is centred on (0, 0).
struct Place {
    double x = 0;
    double y = 0;
};

Place mapped(const AffineMatrix& matrix, const Place& place);

/// Six numbers with commas between, as exact as the matrix.
std::string as_text(const AffineMatrix& matrix);

/// As the library takes it: 2 x 3.
orvex_cv_991::Mat<float> as_mat(const AffineMatrix& matrix);

/// Turns a picture about its centre, anticlockwise on screen when `degrees` is positive, and scales it.
AffineMatrix turn_about_centre(float degrees, float scale, const Image& picture);

/// Extents that can be beyond those of pictures.
struct WideExtents {
    double cols = 0;
    double rows = 0;
};

/// The least extents of a result that holds all of a mapped picture; at least 1 x 1.
WideExtents mapped_extents(const AffineMatrix& matrix, const Image& picture);

/// Shifts what is mapped to the middle of a result of cols x rows.
void centre_in(AffineMatrix& matrix, const Image& picture, int cols, int rows);

/// The map that does `before` and then `after`.
AffineMatrix combined(const AffineMatrix& after, const AffineMatrix& before);

/// The map back. The matrix must not be singular.
AffineMatrix inverse(const AffineMatrix& matrix);

}  // namespace docprep

#endif  // DOCPREP_AFFINE_H
