// A photograph of a page: its pixels, how sharp they are, and where text stands on it. Operations of the library alone.
#ifndef ORVEX_ANDROID_PAGE_READER_H
#define ORVEX_ANDROID_PAGE_READER_H

#include <cstdint>

#include "cv_imgproc.h"

namespace orvex_android {

using Image = orvex_cv_991::Mat<unsigned char>;
using Rects = orvex_991::vector<orvex_cv_991::Rect>;

enum class PixelFormat { kNv21, kBgr };

enum class PageKind {
    kGray,   ///< as photographed
    kBinary  ///< 255 on dark print, else 0
};

struct Page {
    Image pixels;                   ///< rows x cols x 1
    float sharpness = 0;            ///< getSharpness of the grey page
    Rects components;               ///< of dark print that may be letters, larger areas first
    orvex_991::vector<Rects> rows;  ///< the components, as divideComponentsToRows groups them
};

/// Heights of letters in rows of pixels, both ends inclusive.
struct Heights {
    int least;
    int most;
};

/// @param[in] data     rows x cols pixels without gaps; of NV21 an even number of columns
/// @param[in] letters  components of other heights, such as specks and frames, are left out, and
///                     so are those that touch the border of the photograph: one desk or
///                     shadow would join all rows of text
/// @throws CException as the operations do: code 1 for a page too narrow to measure its
///         sharpness, code 3 without memory; std::bad_alloc
/// @prints the lines of the operations
/// @cost   a few passes, and O(n log n) for n components
Page read_page(const uint8_t* data, PixelFormat format, int rows, int cols, PageKind kind, Heights letters);

}  // namespace orvex_android

#endif  // ORVEX_ANDROID_PAGE_READER_H
