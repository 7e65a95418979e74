#include "pipeline/print.h"

#include "base/failure.h"
#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;

namespace {

/// Memory for components grows with the runs of foreground pixels in a row of the image, by about 150 bytes
/// each, and a file of a few hundred KB can decode to 100 million of them. A page has some thousands.
constexpr int kMostRuns = 1 << 24;

void require_few_runs(const std::string& file, const Image& binary) {
    int64_t runs = 0;
    for (int row = 0; row < binary.rows; ++row) {
        const unsigned char* const pixels = binary.data + static_cast<ptrdiff_t>(row) * binary.cols;
        runs += pixels[0] & 1;
        for (int col = 1; col < binary.cols; ++col) runs += pixels[col] & ~pixels[col - 1] & 1;
    }
    if (runs > kMostRuns)
        throw Failure(file, "is noise: " + std::to_string(runs) + " dark runs are too many");
}

}  // namespace

Print find_print(const std::string& file, const Image& binary) {
    require_few_runs(file, binary);
    Print print;
    CImgproc::connectdComponent(binary, print.components, nullptr);
    print.text = select_text(print.components, binary.rows, binary.cols);
    return print;
}

}  // namespace docprep
