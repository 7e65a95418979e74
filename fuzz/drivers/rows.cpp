// Rows of text: divideComponentsToRows.
#include <algorithm>

#include "components.h"
#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;

// The reference lists every image row down to the lowest edge.
constexpr int kLowest = 20000;

void run(Reader& reader) {
    orvex_991::vector<Rect> rects;
    List<reference::Rect> expected_rects;
    const int step = reader.range(1, 64);
    const int n = reader.range(0, 200);
    for (int k = 0; k < n && reader.left() > 0; ++k) {
        Rect rect{reader.byte() % 16, k, reader.byte() % 16, 1};
        if (reader.seldom()) {
            rect.y = reader.integer();
            rect.height = reader.integer();
        } else {
            rect.y = reader.byte() * step / 8;
            rect.height = reader.byte() % 32 - 2;
        }
        if (reference::wrapping(int64_t{rect.y} + rect.height) > kLowest)
            rect = Rect(rect.x, std::min(rect.y, kLowest), rect.width, 0);
        rects.push_back(rect);
        expected_rects.push_back({rect.x, rect.y, rect.width, rect.height});
    }
    rects = without_room(rects);
    expected_rects.capacity = expected_rects.size();
    orvex_991::vector<orvex_991::vector<Rect>> groups(reader.range(0, 3));
    List<List<reference::Rect>> expected;
    expected.resize(groups.size);
    auto got = of_library([&] { CImgproc::divideComponentsToRows(rects, groups); });
    auto want = of_reference([&] { reference::divideComponentsToRows(expected_rects, expected); });
    got.with("rows", groups).with("rects", rects);
    want.with("rows", expected).with("rects", expected_rects);
    require_same(got, want, call("divideComponentsToRows", rects.size()));
}

const Registration registration("rows", run);

}  // namespace
}  // namespace fuzzing
