#include "binarise.h"

#include <algorithm>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;

int binarise(const Image& gray, Image& binary) {
    const int level = CImgproc::otsu(gray);
    // thresholdSeg turns the level itself bright; one more makes it dark, as Otsu counted it. Otherwise a
    // picture of two levels, such as a black and white scan, would lose all its text.
    CImgproc::thresholdSeg(gray, binary, std::min(level + 1, 255));
    ~binary;
    return level;
}

}  // namespace docprep
