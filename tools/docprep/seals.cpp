#include "seals.h"

#include "cv_imgproc.h"

namespace docprep {

using orvex_991::CException;
using orvex_cv_991::CImgproc;

namespace {

// The detector's copy has 320 columns, however many rows that makes, and lists the pixels of what is red in
// it. Up to this ratio of rows to columns it has 10 million pixels at most.
constexpr int64_t kTallest = 100;

Seals none(const std::string& reason) {
    Seals seals;
    seals.reason = reason;
    return seals;
}

}  // namespace

Seals find_seals(const Image& photo, Image& mask) {
    if (photo.channels == 1) return none("gray picture");
    if (photo.rows > kTallest * photo.cols) return none("too narrow");
    try {
        CImgproc::redColorDetect(photo, mask, false);
    } catch (const CException& exception) {
        constexpr int kCheck =
            1;  // nothing else is wrong with the photo: the copy has too few rows or columns
        constexpr int kNothing = 2;
        if (exception.code == kCheck) return none("too narrow");
        if (exception.code == kNothing && exception.message == "could not find any valid red circle")
            return none("");
        throw;
    }
    Seals seals;
    CImgproc::connectdComponent(mask, seals.rects, nullptr);
    const ptrdiff_t n = static_cast<ptrdiff_t>(photo.rows) * photo.cols;
    for (ptrdiff_t i = 0; i < n; ++i) seals.pixels += mask.data[i] & 1;
    return seals;
}

}  // namespace docprep
