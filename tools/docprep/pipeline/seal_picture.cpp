#include "pipeline/seal_picture.h"

#include <cstring>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Size;

Image draw_seals(const Image& photo, const Image& mask) {
    Image outlined;
    const int window = 2 * line_thickness(photo) + 1;
    CImgproc::dilateBinary(mask, outlined, Size(window, window));
    Image picture;
    picture.mat_create(photo.rows, photo.cols, 3, 0);
    const ptrdiff_t n = static_cast<ptrdiff_t>(photo.rows) * photo.cols;
    for (ptrdiff_t i = 0; i < n; ++i) {
        const unsigned char* const from = photo.data + 3 * i;
        unsigned char* const to = picture.data + 3 * i;
        if (mask.data[i] != 0) {
            // With half of its blue, paper is yellow and red stays red.
            std::memcpy(to, from, 3);
            to[0] = static_cast<unsigned char>(from[0] / 2);
        } else if (outlined.data[i] != 0) {
            std::memcpy(to, kSealOutline.bgr, 3);
        } else {
            const int gray = (from[0] + 2 * from[1] + from[2]) / 4;
            std::memset(to, 128 + gray / 2, 3);
        }
    }
    return picture;
}

}  // namespace docprep
