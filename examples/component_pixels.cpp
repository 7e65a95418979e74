// Components of a binary picture with their pixels: rectangle, area and centre of each.
// prints: 6 x 4 at (2, 1): 24 pixels around (4.5, 2.5)
// prints: 4 x 4 at (12, 3): 7 pixels around (12.9, 5.1)
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

int main() {
    Mat<unsigned char> binary;
    binary.mat_create(10, 20, 1, 0);
    for (int y = 1; y < 5; ++y)
        for (int x = 2; x < 8; ++x) binary.at(y, x) = 255;
    for (int i = 0; i < 4; ++i) binary.at(3 + i, 12) = binary.at(6, 12 + i) = 255;  // an L

    orvex_991::vector<Rect> rects;
    orvex_991::vector<orvex_991::vector<Point>> pixels;
    CImgproc::connectdComponent(binary, rects, &pixels);  // null in place of &pixels is faster
    for (int i = 0; i < rects.size(); ++i) {
        double x = 0, y = 0;
        const int n = pixels[i].size();
        for (int k = 0; k < n; ++k) x += pixels[i][k].x, y += pixels[i][k].y;
        std::printf("%d x %d at (%d, %d): %d pixels around (%.1f, %.1f)\n", rects[i].width, rects[i].height,
                    rects[i].x, rects[i].y, n, x / n, y / n);
    }
}
