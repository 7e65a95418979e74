// Thresholds: otsu with and without mask, thresholdSeg, threshold, adaptiveThreshold.
#include "thresholds.h"

#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;

void otsu(Reader& reader, const U8& src) {
    const bool whole = reader.flag();
    const U8 mask = whole ? U8() : reader.mask(src);
    const Image<Byte> plain_mask = to_reference(mask);
    compare_number(
        "otsu" + (whole ? "" : " with mask " + testing_support::shape_of(mask)), src,
        [&](const U8& image) { return whole ? CImgproc::otsu(image) : CImgproc::otsu(image, mask); },
        [&](const Image<Byte>& image) {
            return whole ? reference::otsu(image) : reference::otsu(image, plain_mask);
        });
}

void threshold(Reader& reader, U8 src, U8 previous, bool in_place) {
    const int type = reader.flag() ? 8 + reader.range(0, 1) : reader.integer();
    const int low = reader.seldom() ? reader.integer() : 0, high = reader.seldom() ? reader.integer() : 255;
    const U8 mask = reader.flag() ? U8() : reader.mask(src);
    const Image<Byte> plain_mask = to_reference(mask);
    int level = -1, expected_level = -1;
    compare(
        call("threshold", low, high, type) + " with mask " + testing_support::shape_of(mask), std::move(src),
        std::move(previous), in_place,
        [&](const U8& image, U8& dst) { level = CImgproc::threshold(image, dst, low, high, type, mask); },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            expected_level = reference::threshold(image, dst, low, high, type, plain_mask);
        });
    if (level != expected_level) fail(call("threshold gives other levels", level, expected_level));
}

void adaptive(Reader& reader, U8 src, U8 previous, bool in_place) {
    const int block = reader.integer();
    const double ratio = static_cast<double>(reader.number());
    const bool inverse = reader.flag();
    compare(
        call("adaptiveThreshold", block, ratio, inverse), std::move(src), std::move(previous), in_place,
        [&](const U8& image, U8& dst) { CImgproc::adaptiveThreshold(image, dst, block, ratio, inverse); },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            reference::adaptiveThreshold(image, dst, block, ratio, inverse);
        });
}

void run(Reader& reader) {
    const int operation = reader.range(0, 3);
    const bool in_place = reader.flag();
    // The reference looks at every pixel of every window.
    U8 src = reader.image(1, operation == 3 ? 700 : 3000);
    if (operation == 0) return otsu(reader, src);
    U8 previous = reader.previous(src);
    if (operation == 1) return threshold(reader, std::move(src), std::move(previous), in_place);
    if (operation == 3) return adaptive(reader, std::move(src), std::move(previous), in_place);
    const int level = reader.seldom() ? reader.integer() : reader.byte();
    compare(
        call("thresholdSeg", level), std::move(src), std::move(previous), in_place,
        [&](const U8& image, U8& dst) { CImgproc::thresholdSeg(image, dst, level); },
        [&](const Image<Byte>& image, Image<Byte>& dst) { reference::thresholdSeg(image, dst, level); });
}

const Registration registration("thresholds", run);

}  // namespace
}  // namespace fuzzing
