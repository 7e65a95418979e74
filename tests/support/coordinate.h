// Coordinates of samples along an output row, as the kernels of warp.h and scale.h take them.
#ifndef ORVEX_TESTS_SUPPORT_COORDINATE_H
#define ORVEX_TESTS_SUPPORT_COORDINATE_H

#include <cstddef>

#include "images.h"
#include "kernels/kernels.h"

namespace testing_support {

/// One coordinate as a function of the output column, every step rounded to single precision.
struct Coordinate : orvex_cv_991::CoordinateLine {
    Coordinate(float row_share_, float step_, float offset_) : CoordinateLine{row_share_, step_, offset_} {}

    float at(size_t col) const {
        const float product = step * static_cast<float>(col);
        const float sum = row_share + product;
        return sum + offset;
    }
};

/// A straight run of n coordinates that all have both neighbours among `size` elements; often it starts or
/// ends at the outermost ones.
Coordinate any_coordinate_inside(Random& random, size_t size, size_t first, size_t n);

/// The first output column of a run.
size_t any_first(Random& random);

/// Weight of the neighbour before a coordinate, with 11 fraction bits.
int weight_q11(float x);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_COORDINATE_H
