// One threshold for the whole page, and one of each pixel's own, on a page that lies half in the shadow.
// prints: wrong by Otsu: 30000, by adaptiveThreshold: 1959
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

int main() {
    Mat<unsigned char> gray, truth;
    gray.mat_create(200, 300, 1, 0);
    truth = gray;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x) {
            const bool is_print = y % 20 < 8 && x % 10 < 5;
            gray.at(y, x) = static_cast<unsigned char>((is_print ? 90 : 210) * (x < 150 ? 10 : 4) / 10);
            truth.at(y, x) = is_print ? 255 : 0;
        }

    Mat<unsigned char> otsu, adaptive;
    CImgproc::threshold(gray, otsu, 0, 255, 8 | 1, Mat<unsigned char>());
    // Dark print becomes 255 where it is darker than the mean of 51 x 51 less 0.3 deviations of the whole page.
    CImgproc::adaptiveThreshold(gray, adaptive, 51, -0.3, true);

    int wrong_otsu = 0, wrong_adaptive = 0;
    for (int i = 0; i < 200 * 300; ++i) {
        wrong_otsu += otsu.data[i] != truth.data[i];
        wrong_adaptive += adaptive.data[i] != truth.data[i];
    }
    std::printf("wrong by Otsu: %d, by adaptiveThreshold: %d\n", wrong_otsu, wrong_adaptive);
}
