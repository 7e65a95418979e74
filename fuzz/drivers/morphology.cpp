// Binary and grey morphology, dilateRect.
#include "driver.h"
#include "filters.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::MORPH_TYPE;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

void grow(Reader& reader) {
    const Rect rect = reader.rect();
    const Size size = reader.size();
    Rect grown = rect;
    CImgproc::dilateRect(reader.flag() ? grown : rect, grown, size);
    const auto want =
        reference::dilateRect({rect.x, rect.y, rect.width, rect.height}, {size.width, size.height});
    if (grown.x != want.x || grown.y != want.y || grown.width != want.width || grown.height != want.height)
        fail(call("dilateRect differs", rect.x, rect.y, rect.width, rect.height, size.width, size.height));
}

void run(Reader& reader) {
    const int operation = reader.range(0, 8);
    if (operation == 8) return grow(reader);
    const bool in_place = reader.flag();
    const int type = operation == 7 ? reader.range(-1, 4) : 0;
    // The reference looks at every pixel of every window.
    U8 src = reader.image(1, 900);
    U8 previous = reader.previous(src);
    Size size = reader.size();
    if (!reader.seldom() && src.rows > 0 && src.cols > 0) {  // mostly one that fits
        size.width = 1 + (size.width & INT16_MAX) % src.cols;
        size.height = 1 + (size.height & INT16_MAX) % src.rows;
    }
    const auto* const filter = operation < 7 ? &testing_support::kFilters[operation] : nullptr;
    compare(
        call(filter ? filter->name : "morphologyBinary", size.width, size.height, type), std::move(src),
        std::move(previous), in_place,
        [&](const U8& image, U8& dst) {
            if (filter) return filter->library(image, dst, size);
            CImgproc::morphologyBinary(image, dst, size, static_cast<MORPH_TYPE>(type));
        },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            if (filter) return filter->plain(image, dst, {size.width, size.height});
            reference::morphologyBinary(image, dst, {size.width, size.height}, type);
        });
}

const Registration registration("morphology", run);

}  // namespace
}  // namespace fuzzing
