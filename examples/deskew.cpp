// Levels a page: the angle of its longest line of text, then one warp.
// prints: lines rise by 4.0 degrees, then by 0.0
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

// By how many degrees the longest line of text rises to the right. Print is 255, paper 0.
static double rise_of_lines(const Mat<unsigned char>& binary) {
    Mat<unsigned char> lines;
    CImgproc::closeBinary(binary, lines, Size(25, 3));  // the letters of a line grow together
    orvex_991::vector<Rect> rects;
    orvex_991::vector<orvex_991::vector<Point>> pixels;
    CImgproc::connectdComponent(lines, rects, &pixels);  // larger rectangles come first
    const RotatedRect box = CImgproc::minAreaRect(pixels[0]);
    const int side = box.width > box.height ? 0 : 1;  // the longer one begins at this corner
    const double degrees = CImgproc::calcLineDegree(box.pts[side], box.pts[side + 1]);
    return degrees > 90 ? degrees - 180 : degrees;
}

static Mat<unsigned char> turned(const Mat<unsigned char>& image, double degrees) {
    const Point32f center((image.cols - 1) / 2.f, (image.rows - 1) / 2.f);
    const auto matrix = CImgproc::getRotationMatrix2D(center, static_cast<float>(degrees), 1);
    Mat<unsigned char> out;
    CImgproc::warpAffine(image, out, matrix, Size(image.cols, image.rows), INTERP_LINEAR, nullptr);
    return out;
}

int main() {
    Mat<unsigned char> page;
    page.mat_create(400, 600, 1, 0);
    for (int y = 80; y < 320; ++y)  // six lines of letters
        for (int x = 80; x < 520; ++x) page.at(y, x) = y % 40 < 14 && x % 16 < 10 ? 255 : 0;
    page = turned(page, 4);
    const double rise = rise_of_lines(page);
    std::printf("lines rise by %.1f degrees, then by %.1f\n", rise, rise_of_lines(turned(page, -rise)));
}
