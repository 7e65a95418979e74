// Parts of the driver of shapes.
#ifndef ORVEX_FUZZ_SHAPE_ANGLES_H
#define ORVEX_FUZZ_SHAPE_ANGLES_H

#include "reader.h"

namespace fuzzing {

/// Angles of a rectangle and of a line.
void angles(Reader& reader);

/// The side and the order of points.
void three_points(Reader& reader);

}  // namespace fuzzing

#endif  // ORVEX_FUZZ_SHAPE_ANGLES_H
