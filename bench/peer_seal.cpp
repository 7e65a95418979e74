// The way to red seals with other libraries: libyuv scales down and up again, Leptonica finds red pixels,
// closes gaps and extracts components.
#include <leptonica/allheaders.h>
#include <libyuv.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "cases.h"

namespace bench {

namespace {

struct Destroy {
    void operator()(PIX* pix) const { pixDestroy(&pix); }
};
using Image = std::unique_ptr<PIX, Destroy>;

}  // namespace

void add_seal(std::vector<Case>& cases, const Inputs& in) {
    setMsgSeverity(L_SEVERITY_NONE);
    const int rows = in.rows, cols = in.cols;
    const int width = std::min(cols, 320),
              height = static_cast<int>(static_cast<int64_t>(rows) * width / cols);
    const size_t pixels = static_cast<size_t>(rows) * static_cast<size_t>(cols);
    const auto argb = std::make_shared<std::vector<unsigned char>>(4 * pixels);
    libyuv::RGB24ToARGB(in.photo.data, 3 * cols, argb->data(), 4 * cols, cols, rows);
    add_peer(cases, "redColorDetect", "libyuv + Leptonica", [argb, rows, cols, width, height, pixels] {
        std::vector<unsigned char> small(4 * static_cast<size_t>(width) * static_cast<size_t>(height));
        libyuv::ARGBScale(argb->data(), 4 * cols, cols, rows, small.data(), 4 * width, width, height,
                          libyuv::kFilterBilinear);
        Image colour(pixCreate(width, height, 32));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const unsigned char* const p = small.data() + 4 * (static_cast<size_t>(y) * width + x);
                composeRGBPixel(p[2], p[1], p[0], pixGetData(colour.get()) + y * pixGetWpl(colour.get()) + x);
            }
        Image hsv(pixConvertRGBToHSV(nullptr, colour.get()));
        Image red(pixMakeRangeMaskHS(hsv.get(), 0, 12, 168, 87, L_INCLUDE_REGION));
        Image closed(pixCloseBrick(nullptr, red.get(), 3, 3));
        PIXA* parts;
        BOXA* boxes = pixConnComp(closed.get(), &parts, 4);
        pixaDestroy(&parts);
        boxaDestroy(&boxes);
        Image filled(pixCloseBrick(nullptr, closed.get(), 6, 6));
        Image bytes(pixConvert1To8(nullptr, filled.get(), 0, 255));
        std::vector<unsigned char> plane(static_cast<size_t>(width) * static_cast<size_t>(height));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                plane[static_cast<size_t>(y) * width + x] =
                    GET_DATA_BYTE(pixGetData(bytes.get()) + y * pixGetWpl(bytes.get()), x);
        unsigned char* const mask = static_cast<unsigned char*>(std::malloc(pixels));
        libyuv::ScalePlane(plane.data(), width, width, height, mask, cols, cols, rows,
                           libyuv::kFilterBilinear);
        for (size_t i = 0; i < pixels; ++i) mask[i] = mask[i] > 128 ? 255 : 0;
        std::free(mask);
    });
}

}  // namespace bench
