// Detectors: getSharpness, saliencyDetect, redColorDetect.
#include "detectors.h"

#include "driver.h"
#include "seals.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;

void sharpness(Reader& reader) {
    const bool whole = reader.flag();
    const U8 src = reader.image(whole && reader.flag() ? 3 : 1, 4000);
    const U8 mask = whole ? U8() : reader.mask(src);
    const Image<Byte> plain_mask = to_reference(mask);
    compare_number(
        "getSharpness" + (whole ? "" : " with mask " + testing_support::shape_of(mask)), src,
        [&](const U8& image) {
            return whole ? CImgproc::getSharpness(image) : CImgproc::getSharpness(image, mask);
        },
        [&](const Image<Byte>& image) {
            return whole ? reference::getSharpness(image) : reference::getSharpness(image, plain_mask);
        });
}

void saliency(Reader& reader) {
    const bool in_place = reader.flag(), mask_is_dst = reader.flag();
    U8 src = reader.image(1, 3000);
    U8 mask = reader.mask(src), previous = mask_is_dst ? reader.mask(src) : reader.previous(src);
    const Image<Byte> plain_mask = to_reference(mask);
    orvex_991::vector<unsigned char> levels(3, 1);
    List<Byte> expected_levels;
    expected_levels.resize(3);
    for (Byte& level : expected_levels.items) level = 1;
    compare(
        call("saliencyDetect", mask_is_dst) + " mask " + testing_support::shape_of(mask), std::move(src),
        std::move(previous), in_place,
        [&](const U8& image, U8& dst) {
            CImgproc::saliencyDetect(image, dst, mask_is_dst ? dst : mask, levels);
        },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            const Image<Byte> held = dst;
            reference::saliencyDetect(image, dst, mask_is_dst ? held : plain_mask, expected_levels);
        });
    require_same(Outcome().with("levels", levels), Outcome().with("levels", expected_levels),
                 "saliencyDetect");
}

// Paper, and on it rings, discs and boxes; noise alone has no seals.
U8 photograph(Reader& reader) {
    if (reader.seldom()) return reader.image(3, 4000);
    const int rows = reader.range(1, 64),
              cols = reader.seldom() ? reader.range(321, 500) : reader.range(1, 64);
    const int blue = reader.byte(), green = reader.byte();
    U8 bgr = testing_support::colour_image(cols > 64 ? rows % 8 + 1 : rows, cols, blue, green, 220);
    for (int k = reader.range(0, 7); k > 0; --k) {
        const bool ring = reader.flag(), red = !reader.seldom();
        const int x = reader.range(0, cols - 1), y = reader.range(0, bgr.rows - 1);
        const int width = reader.range(1, 40), height = reader.range(1, 40);
        const int b = red ? reader.range(0, 90) : reader.byte(),
                  g = red ? reader.range(0, 90) : reader.byte();
        const int r = red ? reader.range(90, 255) : reader.byte();
        if (ring)
            testing_support::draw_ring(bgr, x, y, width / 2, height / 2, b, g, r);
        else
            testing_support::draw_box(bgr, x, y, width, height, b, g, r);
    }
    return bgr;
}

void run(Reader& reader) {
    const int operation = reader.range(0, 3);
    if (operation == 0) return sharpness(reader);
    if (operation == 1) return saliency(reader);
    const bool in_place = reader.flag(), relaxed = reader.flag();
    U8 src = photograph(reader);
    U8 previous = reader.previous(src);
    compare(
        call("redColorDetect", relaxed), std::move(src), std::move(previous), in_place,
        [&](const U8& image, U8& dst) { CImgproc::redColorDetect(image, dst, relaxed); },
        [&](const Image<Byte>& image, Image<Byte>& dst) { reference::redColorDetect(image, dst, relaxed); });
}

const Registration registration("detectors", run);

}  // namespace
}  // namespace fuzzing
