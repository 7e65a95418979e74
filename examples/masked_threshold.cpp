// Otsu's threshold over a part of a picture: grey print on paper, beside a desk that is darker than both.
// prints: of everything: 47, dark are 9800 pixels
// prints: of the paper: 157, dark are 1890 pixels
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

static void fill(Mat<unsigned char>& image, const Rect& rect, unsigned char value) {
    for (int y = rect.y; y < rect.y + rect.height; ++y)
        for (int x = rect.x; x < rect.x + rect.width; ++x)
            image.at(y, x) = static_cast<unsigned char>(value + (x + y) % 8);
}

int main() {
    Mat<unsigned char> gray, on_paper;
    gray.mat_create(100, 200, 1, 0);
    fill(gray, Rect(0, 0, 200, 100), 40);  // the desk
    on_paper.mat_create(100, 200, 1, 0);
    const Rect paper(80, 10, 110, 80);
    fill(gray, paper, 200);
    fill(on_paper, paper, 1);
    for (int y = 20; y < 80; y += 10) fill(gray, Rect(90, y, 90, 4), 150);  // six lines of print

    Mat<unsigned char> whole, print;
    const int level = CImgproc::threshold(gray, whole, 0, 255, 8 | 1, Mat<unsigned char>());
    print.mat_create(gray.rows, gray.cols, 1, 0);  // with a mask, the output must have its size already
    const int masked_level = CImgproc::threshold(gray, print, 0, 255, 8 | 1, on_paper);

    std::printf("of everything: %d, dark are %d pixels\n", level, CImgproc::countNonZero(whole));
    std::printf("of the paper: %d, dark are %d pixels\n", masked_level, CImgproc::countNonZero(print));
}
