// Sets that are joined, beside the reference's.
#include <memory>

#include "components.h"
#include "containers.h"
#include "driver.h"

namespace fuzzing {

void forest(Reader& reader) {
    const int n = reader.range(-2, 60);
    // The number of label 0's set is what stood in out[0]: in an array that has to grow, anything.
    const bool has_room = reader.flag();
    std::unique_ptr<orvex_cv_991::ForestJoin> sets;
    std::unique_ptr<reference::Forest> expected;
    auto got = of_library([&] { sets = std::make_unique<orvex_cv_991::ForestJoin>(n); });
    auto want = of_reference([&] { expected = std::make_unique<reference::Forest>(n); });
    require_same(got, want, call("ForestJoin", n));
    while (sets && expected && reader.left() > 0) {
        int a = reader.range(-1, n), b = reader.range(-1, n);
        if (!has_room && (a == 0 || b == 0)) a = b = 1;
        int root = -2, expected_root = -2;
        got = of_library([&] { root = reader.left() % 4 == 0 ? sets->GetRootId(a) : sets->Join(a, b); });
        want = of_reference(
            [&] { expected_root = reader.left() % 4 == 0 ? expected->root(a) : expected->join(a, b); });
        require_same(got.with("root", root), want.with("root", expected_root), call("Join", a, b));
    }
    if (!sets || !expected) return;
    orvex_991::vector<int> out(has_room ? n + reader.range(0, 3) : reader.range(0, 3), 9);
    List<int> expected_out;
    expected_out.resize(out.size);
    for (int& number : expected_out.items) number = 9;
    int sum = 0, expected_sum = 0;
    got = of_library([&] { sum = sets->Remap(out); });
    want = of_reference([&] { expected_sum = expected->remap(expected_out); });
    if (n > 0 && !has_room) out[0] = expected_out[0] = 0;  // not written
    require_same(got.with("out", out).with("sets", sum),
                 want.with("out", expected_out).with("sets", expected_sum), call("Remap of forest", n));
}

}  // namespace fuzzing
