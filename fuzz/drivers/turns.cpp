// Quarter turns and mirror images, of images, points and rectangles.
#include "turns.h"

#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

void turn_image(Reader& reader, int operation) {
    const bool in_place = reader.flag();
    const int n = operation == 1 ? 0 : reader.seldom() ? reader.integer() : reader.range(-5, 5);
    const int f = operation == 0 ? reader.range(-2, 2) : operation == 1 ? 1 : 0;
    U8 src = reader.image(reader.pick({1, 3, 2, 4}), 3000);
    U8 previous = reader.previous(src);
    compare(
        call("quarter turn", operation, n, f), std::move(src), std::move(previous), in_place,
        [&](const U8& image, U8& dst) {
            if (operation == 0) CImgproc::rot90ClockWise_FlipLR(image, dst, n, f);
            if (operation == 1) CImgproc::flipLR(image, dst);
            if (operation == 2) CImgproc::rot90ClockWise(image, dst, n);
            if (operation == 3) CImgproc::rot90AntiClockWise(image, dst, n);
        },
        [&](const Image<Byte>& image, Image<Byte>& dst) {
            if (operation == 3) return reference::rot90AntiClockWise(image, dst, n, in_place);
            reference::rot90ClockWise_FlipLR(image, dst, n, f, in_place);
        });
}

void turn_point(Reader& reader) {
    const Point pt = reader.point();
    const Size size = reader.size();
    const int n = reader.integer();
    const bool anticlockwise = reader.flag();
    const Point got =
        (anticlockwise ? CImgproc::rot90AntiClockWise(pt, size, n) : CImgproc::rot90ClockWise(pt, size, n));
    const auto want = reference::rot90ClockWise(reference::Point{pt.x, pt.y}, {size.width, size.height}, n);
    if (got.x != want.x || got.y != want.y)
        fail(call("turn of point", pt.x, pt.y, size.width, size.height, n) +
             call(" differs", got.x, got.y, want.x, want.y));
}

void turn_rect(Reader& reader) {
    const Rect rect = reader.rect();
    const Size size = reader.size();
    const int n = reader.integer();
    const bool anticlockwise = reader.flag();
    Rect turned;
    reference::Rect expected{0, 0, 0, 0};
    auto got = of_library([&] {
        turned = anticlockwise ? CImgproc::rot90AntiClockWise(rect, size, n)
                               : CImgproc::rot90ClockWise(rect, size, n);
    });
    auto want = of_reference([&] {
        expected = reference::rot90ClockWise(reference::Rect{rect.x, rect.y, rect.width, rect.height},
                                             {size.width, size.height}, n);
    });
    require_same(
        got.with("rect", turned), want.with("rect", expected),
        call("turn of rectangle", rect.x, rect.y, rect.width, rect.height, size.width, size.height, n));
}

void run(Reader& reader) {
    const int operation = reader.range(0, 5);
    if (operation < 4) return turn_image(reader, operation);
    if (operation == 4) return turn_point(reader);
    turn_rect(reader);
}

const Registration registration("turns", run);

}  // namespace
}  // namespace fuzzing
