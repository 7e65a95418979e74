// Synthetic photographs of red seals.
#ifndef ORVEX_TESTS_SUPPORT_SEALS_H
#define ORVEX_TESTS_SUPPORT_SEALS_H

#include "images.h"

namespace testing_support {

/// B, G, R image of one colour.
U8 colour_image(int rows, int cols, int b, int g, int r);
/// Paints the pixels between the two radii.
void draw_ring(U8& bgr, int x, int y, int inner, int outer, int b, int g, int r);
void draw_box(U8& bgr, int x, int y, int width, int height, int b, int g, int r);
/// Paper with rings, discs, boxes and specks in reds and other colours, sometimes with noise.
U8 any_seal_photo(Random& random);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_SEALS_H
