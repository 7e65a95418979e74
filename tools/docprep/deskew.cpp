#include "deskew.h"

#include <cmath>
#include <cstring>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Size;

Deskew plan_deskew(const Image& photo, double skew) {
    Deskew level;
    level.cols = photo.cols;
    level.rows = photo.rows;
    if (std::fabs(skew) < kLeastSkew) return level;
    Deskew turned;
    turned.degrees = skew;
    turned.matrix = turn_about_centre(static_cast<float>(skew), 1, photo);
    const WideExtents extents = mapped_extents(turned.matrix, photo);
    if (extents.cols * extents.rows > static_cast<double>(kMostPixels)) return level;
    turned.cols = static_cast<int>(extents.cols);
    turned.rows = static_cast<int>(extents.rows);
    centre_in(turned.matrix, photo, turned.cols, turned.rows);
    return turned;
}

Image deskewed(const Image& photo, const Deskew& deskew, Image& inside) {
    inside.mat_create(deskew.rows, deskew.cols, 1, 0);
    Image page;
    CImgproc::warpAffine(photo, page, as_mat(deskew.matrix), Size(deskew.cols, deskew.rows), INTERP_LINEAR,
                         &inside);
    return page;
}

Image deskewed_on_white(const Image& photo, const Deskew& deskew) {
    Image inside;
    Image page = deskewed(photo, deskew, inside);
    const ptrdiff_t n = static_cast<ptrdiff_t>(page.rows) * page.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        if (inside.data[i] == 0)
            std::memset(page.data + i * page.channels, 255, static_cast<size_t>(page.channels));
    return page;
}

}  // namespace docprep
