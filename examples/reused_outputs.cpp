// The same matrices for every frame: what an operation does with what its output holds.
// prints: gray: a new block; binary: the old block
// prints: after a failure binary is still 48 x 64
#include <cstdio>

#include "cv_imgproc.h"

using namespace orvex_cv_991;

int main() {
    Mat<unsigned char> photo, gray, binary;  // outside the loop: outputs need no clearing
    for (int frame = 0; frame < 2; ++frame) {
        photo.mat_create(48, 64, 3, 60 * frame);
        const unsigned char *const gray_was = gray.data, *const binary_was = binary.data;
        CImgproc::bgr2gray(photo, gray);
        CImgproc::thresholdSeg(gray, binary, 100);
        if (frame > 0)
            std::printf("gray: %s; binary: %s\n", gray.data == gray_was ? "the old block" : "a new block",
                        binary.data == binary_was ? "the old block" : "a new block");
    }
    try {
        CImgproc::thresholdSeg(gray, binary, 256);  // refused: binary keeps what it held
    } catch (const orvex_991::CException&) {
        std::printf("after a failure binary is still %d x %d\n", binary.rows, binary.cols);
    }
    CImgproc::flipLR(binary, binary);  // the output may be the input
}
