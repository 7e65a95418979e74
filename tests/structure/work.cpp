// Does the work of one operation on N of what it counts, for its instructions to be counted: work KIND N.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "images.h"

using namespace orvex_cv_991;
using testing_support::filled;
using testing_support::Random;
using testing_support::U8;

namespace {

// Isolated bars of a few sizes, so that many areas are equal.
U8 bars(int n) {
    constexpr int kPerRow = 100;
    U8 image = filled(2 * (n / kPerRow) + 2, 6 * kPerRow, 1, 0);
    for (int k = 0; k < n; ++k)
        for (int col = 0; col <= k * 7 % 4; ++col)
            image.data[(2 * (k / kPerRow) + 1) * image.cols + 6 * (k % kPerRow) + col] = 255;
    return image;
}

orvex_991::vector<Point> circle(int n) {
    orvex_991::vector<Point> points;
    Random random(5);
    for (int k = 0; k < n; ++k) {
        const int x = random.range(-15000, 15000);
        points.push_back(Point(x, x / 8 * (x / 8) / 4000 + random.range(0, 1)));
    }
    return points;
}

orvex_991::vector<Rect> rectangles(int n, bool on_one_row) {
    orvex_991::vector<Rect> rects;
    for (int k = 0; k < n; ++k)
        rects.push_back(Rect(k * 7919 % 10007, on_one_row ? k % 5 : 12 * (k / 40), 5, 9));
    return rects;
}

bool work(const std::string& kind, int n) {
    orvex_991::vector<Rect> rects;
    orvex_991::vector<orvex_991::vector<Point>> lists;
    orvex_991::vector<orvex_991::vector<Rect>> rows;
    orvex_991::vector<Point> hull;
    if (kind == "components") {
        CImgproc::connectdComponent(bars(n), rects, nullptr);
    } else if (kind == "components-with-points") {
        CImgproc::connectdComponent(bars(n), rects, &lists);
    } else if (kind == "rows") {
        CImgproc::divideComponentsToRows(rectangles(n, false), rows);
    } else if (kind == "one-row") {
        CImgproc::divideComponentsToRows(rectangles(n, true), rows);
    } else if (kind == "hull") {
        CImgproc::convexHull(circle(n), hull);
    } else if (kind == "rectangle") {
        CImgproc::minAreaRect(circle(n));
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && work(argv[1], std::atoi(argv[2]))) return 0;
    std::fputs("usage: work KIND N\n", stderr);
    return 64;
}
