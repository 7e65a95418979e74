// The four codes of the one exception that the library throws.
// prints: a threshold of 256: code 1
// prints: three channels to label: code 2
// prints: minus one pixel: code 3
// prints: the first of no rectangles: code 4
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

template <class Call>
static void report(const char* what, Call call) {
    try {
        call();
    } catch (const orvex_991::CException& error) {
        const char* const message = error.message.c_str();
        std::printf("%s: code %d%s%s\n", what, error.code, *message ? ", " : "", message);
    }
}

int main() {
    Mat<unsigned char> image, out;
    image.mat_create(60, 80, 1, 255);
    // The failed check is printed first: "D cv_imgproc.cpp:LINE] [warn] input error threshold >= 0 && ..."
    report("a threshold of 256", [&] { CImgproc::thresholdSeg(image, out, 256); });
    report("three channels to label", [&] {
        Mat<unsigned char> colour;
        colour.mat_create(60, 80, 3, 255);
        orvex_991::vector<Rect> rects;
        CImgproc::connectdComponent(colour, rects, nullptr);
    });
    report("minus one pixel", [&] { image.mat_create(-1, 1, 1, 0); });
    report("the first of no rectangles", [&] {
        const orvex_991::vector<Rect> none;
        std::printf("%d\n", none[0].x);
    });
}
