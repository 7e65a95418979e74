// The driver of containers, and quick_partition; the others have files of their own.
#include "containers.h"

#include <algorithm>

#include "components.h"
#include "driver.h"

namespace fuzzing {
namespace {

// By all digits of a number but the last two, or by lot for every pair.
bool before(int a, int b, int order) {
    if (order == 0) return a / 100 > b / 100;
    if (order == 1) return a / 100 < b / 100;
    const unsigned lot =
        static_cast<unsigned>(std::min(a, b)) * 2654435761u ^ static_cast<unsigned>(std::max(a, b)) * 40503u;
    return a != b && ((lot >> 13 & 1) != 0) == (a < b);
}

void partition(Reader& reader) {
    const int order = reader.range(0, 2), low = reader.range(-1, 3), beyond = reader.range(-3, 1);
    const auto in_order = [&](int a, int b) { return before(a, b, order); };
    orvex_991::vector<int> v;
    List<int> expected;
    for (int k = 0; k < 99 && reader.left() > 0; ++k) {
        v.push_back(reader.byte() * 100 + k);  // the last two digits tell equal elements apart
        expected.push_back(v[k]);
    }
    v = without_room(v);
    expected.capacity = expected.size();
    const int high = v.size - 1 + beyond;
    auto got = of_library([&] { orvex_991::quick_partition(v, low, high, in_order); });
    auto want = of_reference([&] { reference::quick_partition(expected, low, high, in_order); });
    require_same(got.with("v", v), want.with("v", expected),
                 call("quick_partition", v.size(), low, high, order));
}

void run(Reader& reader) {
    const int kind = reader.range(0, 7);
    if (kind < 2) return vectors(reader, kind == 1);
    if (kind < 5) return matrices(reader, kind - 2);
    if (kind == 5) return strings(reader);
    if (kind == 6) return forest(reader);
    partition(reader);
}

const Registration registration("containers", run);

}  // namespace
}  // namespace fuzzing
