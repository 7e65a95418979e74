// Which of two frames of a scene is in focus. usage: sharp_frame PHOTO.ppm
// prints: the first is sharper
#include <cstdio>

#include "pnm.h"

using namespace orvex_cv_991;

int main(int argc, char** argv) {
    if (argc != 2) return 64;
    const Image photo = read_pnm(argv[1]);
    Image gray, soft;
    CImgproc::bgr2gray(photo, gray);
    CImgproc::resize(gray, soft, 0.125f, INTERP_LINEAR);  // smaller and back again is out of focus
    CImgproc::resize(soft, soft, Size(gray.cols, gray.rows), INTERP_LINEAR);

    const float sharp = CImgproc::getSharpness(gray), blurred = CImgproc::getSharpness(soft);
    std::printf("%.1f and %.1f\n", static_cast<double>(sharp), static_cast<double>(blurred));
    if (sharp > blurred) std::puts("the first is sharper");
}
