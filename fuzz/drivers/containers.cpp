// Strings, forests, quick_partition; matrices and arrays have files of their own.
#include "containers.h"

#include <algorithm>

#include "components.h"
#include "driver.h"

namespace fuzzing {
namespace {

void strings(Reader& reader) {
    const auto any_text = [&] {
        std::string text;
        for (int n = reader.byte() % 12; n > 0; --n) text += static_cast<char>(1 + reader.byte() % 255);
        return text;
    };
    orvex_991::String held[3];
    std::string expected[3];
    while (reader.left() > 0) {
        const int action = reader.range(0, 5), to = reader.range(0, 2), from = reader.range(0, 2);
        orvex_991::String other(held[from]);
        if (action == 0) {
            expected[to] = any_text();
            const size_t n = expected[to].size() + 1;  // the block ends with the terminating zero
            const std::unique_ptr<char[]> text(new char[n]);
            std::copy_n(expected[to].c_str(), n, text.get());
            held[to] = orvex_991::String(text.get());
        }
        if (action == 1) held[to] = orvex_991::String::literal("literal"), expected[to] = "literal";
        if (action == 2) held[to] = held[from], expected[to] = expected[from];
        if (action == 3)
            held[to] = orvex_991::String(static_cast<const char*>(nullptr)), expected[to].clear();
        if (action == 4) held[to] = std::move(other), expected[to] = expected[from];
        if (action == 5) {
            orvex_991::String taken(std::move(held[to]));
            if (expected[to] != taken.c_str() || !held[to].empty()) fail("String is moved wrongly");
            held[to] = std::move(taken);
        }
        for (int k = 0; k < 3; ++k) {
            const bool same = expected[k] == held[k].c_str() && held[k].empty() == expected[k].empty() &&
                              held[k].length() == static_cast<int>(expected[k].size()) &&
                              (held[k] == held[to]) == (expected[k] == expected[to]) &&
                              (held[k] != held[to]) == (expected[k] != expected[to]);
            if (!same) fail(call("String differs after action", action));
        }
    }
}

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
