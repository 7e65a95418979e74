// Actions on three strings, beside the standard library's.
#include <algorithm>
#include <memory>

#include "containers.h"
#include "driver.h"

namespace fuzzing {

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

}  // namespace fuzzing
