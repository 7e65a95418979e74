#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "cases.h"
#include "components.h"
#include "images.h"
#include "thresholds.h"

namespace golden {

namespace {

using namespace testing_support;
using orvex_991::vector;
using orvex_cv_991::Mat;
using orvex_cv_991::Rect;
using reference::Image;
using reference::List;

// By all digits of a number but the last two, or by none.
constexpr bool (*kOrders[])(int, int) = {
    [](int a, int b) { return a / 100 > b / 100; },
    [](int a, int b) { return a / 100 < b / 100; },
    [](int a, int b) {  // who goes first is drawn by lot for every pair
        const unsigned lot = static_cast<unsigned>(std::min(a, b)) * 2654435761u ^
                             static_cast<unsigned>(std::max(a, b)) * 40503u;
        return a != b && ((lot >> 13 & 1) != 0) == (a < b);
    },
};

vector<int> to_library_list(const List<int>& from) {
    vector<int> list;
    for (const int item : from.items) list.push_back(item);
    return list;
}

void record_sorting(const Recorder& recorder) {
    Random random(4001);
    for (int round = 0; round < 200; ++round) {
        List<int> items;
        const int n = random.range(0, 60), levels = random.pick({1, 2, 5, 1000});
        for (int k = 0; k < n; ++k)  // the last two digits tell equal elements apart
            items.push_back(random.range(1, levels) * 100 + k);
        const int low = random.chance(80) ? 0 : random.range(-2, n);
        const int high = random.chance(80) ? n - 1 : random.range(-2, n + 1);
        bool (*before)(int, int) = kOrders[random.range(0, 2)];
        const std::string number = " #" + std::to_string(round);
        recorder.record(
            "quick_partition" + number,
            [&] {
                vector<int> list = to_library_list(items);
                return of_library([&] { orvex_991::quick_partition(list, low, high, before); })
                    .with("list", list);
            },
            [&] {
                List<int> list = items;
                return of_reference([&] { reference::quick_partition(list, low, high, before); })
                    .with("list", list);
            });
        recorder.record(
            "bubbleSort" + number,
            [&] {
                vector<int> list = to_library_list(items);
                return of_library([&] {
                           list.bubbleSort([](const int& a, const int& b) { return a / 100 < b / 100; });
                       })
                    .with("list", list);
            },
            [&] {
                List<int> list = items;
                return of_reference([&] {
                           std::stable_sort(list.items.begin(), list.items.end(),
                                            [](int a, int b) { return a / 100 < b / 100; });
                       })
                    .with("list", list);
            });
    }
}

void record_vectors(const Recorder& recorder) {
    Random random(4002);
    for (int round = 0; round < 100; ++round) {
        const int pushed = random.range(0, 450), reserved = random.range(-3, 300);
        const int made = random.range(-2, 120), index = random.range(-2, 450);
        const int value = random.range(-9, 9), sought = random.range(0, 30);
        recorder.record(
            "vector #" + std::to_string(round),
            [&] {
                vector<int> list, sum;
                int taken = -1, found = -2, at = -3;
                Outcome outcome = of_library([&] {
                    list.reserve(reserved);
                    for (int k = 0; k < pushed; ++k) list.push_back(k % 23);
                    sum = vector<int>(made, value);
                    sum += list;
                    found = list.get_index(sought);
                    taken = list.pop_back();
                    at = list[index];
                    list.init_to_size(reserved, value);
                });
                outcome.with("list", list).with("sum", sum).with("taken", taken);
                return outcome.with("found", found).with("at", at);
            },
            [&] {
                List<int> list, sum;
                int taken = -1, found = -2, at = -3;
                Outcome outcome = of_reference([&] {
                    list.reserve(reserved);
                    for (int k = 0; k < pushed; ++k) list.push_back(k % 23);
                    reference::check(made >= 0, "size >= 0", "vector", "util_vector.h");
                    sum.resize(made);
                    std::fill(sum.items.begin(), sum.items.end(), value);
                    sum.reserve(made + pushed);
                    sum.items.insert(sum.items.end(), list.items.begin(), list.items.end());
                    found = sought < std::min(pushed, 23) ? sought : -1;
                    if (pushed == 0) throw reference::Failure{4, ""};
                    taken = list[pushed - 1];
                    list.items.pop_back();
                    at = list[index];
                    list.resize(std::max(reserved, 0));
                    std::fill(list.items.begin(), list.items.end(), value);
                });
                outcome.with("list", list).with("sum", sum).with("taken", taken);
                return outcome.with("found", found).with("at", at);
            });
    }
}

template <class T>
void record_matrix(const Recorder& recorder, const std::string& type) {
    Random random(4003);
    for (int round = 0; round < 100; ++round) {
        const bool odd = random.chance(15);
        const int rows = odd ? random.pick({-2, 0, 3}) : random.range(0, 9);
        const int cols = odd ? random.pick({-3, 0, 5}) : random.range(0, 9);
        const int channels = random.chance(70) ? 1 : random.range(0, 4);
        const int fill = random.range(-300, 300), value = random.range(0, 255);
        const int row = random.range(0, 9), col = random.range(0, 9);
        recorder.record(
            "Mat of " + type + " #" + std::to_string(round),
            [&] {
                Mat<T> m, copy;
                T element{1};
                Outcome outcome = of_library([&] {
                    m.mat_create(rows, cols, channels, fill);
                    copy = m.clone();
                    m = static_cast<T>(value);
                    if (sizeof(T) == 1) ~m;
                    element = m.at(row, col);
                });
                return outcome.with("m", m).with("copy", copy).with("element", element);
            },
            [&] {
                Image<T> m, copy;
                T element{1};
                Outcome outcome = of_reference([&] {
                    m.create(rows, cols, channels, fill);
                    copy = m;
                    m.fill(static_cast<T>(value));
                    if constexpr (sizeof(T) == 1) m.complement();
                    element = m.at(row, col);
                });
                return outcome.with("m", m).with("copy", copy).with("element", element);
            });
    }
}

void record_forests(const Recorder& recorder) {
    Random random(4004);
    for (int round = 0; round < 100; ++round) {
        const int n = random.range(-1, 40);
        std::vector<int> ids;
        for (int k = 2 * random.range(0, 30); k > 0; --k) {
            const int low = random.chance(2) ? -1 : 0;
            const int high = random.chance(2) ? n : std::max(n - 1, 0);
            ids.push_back(random.range(low, high));
        }
        const auto run = [&](auto& forest, auto join, auto root, Outcome& outcome) {
            for (size_t k = 0; k + 1 < ids.size(); k += 2) {
                outcome.with("joined", join(forest, ids[k], ids[k + 1]));
                outcome.with("root", root(forest, ids[k]));
            }
        };
        recorder.record(
            "ForestJoin #" + std::to_string(round),
            [&] {
                Outcome steps;
                vector<int> sets(std::max(n, 0), 0);
                Outcome outcome = of_library([&] {
                    orvex_cv_991::ForestJoin forest(n);
                    run(
                        forest, [](auto& f, int a, int b) { return f.Join(a, b); },
                        [](auto& f, int a) { return f.GetRootId(a); }, steps);
                    steps.with("count", forest.Remap(sets));
                });
                steps.thrown = outcome.thrown, steps.printed = outcome.printed;
                return steps.with("sets", sets);
            },
            [&] {
                Outcome steps;
                List<int> sets;
                sets.resize(std::max(n, 0));
                Outcome outcome = of_reference([&] {
                    reference::Forest forest(n);
                    run(
                        forest, [](auto& f, int a, int b) { return f.join(a, b); },
                        [](auto& f, int a) { return f.root(a); }, steps);
                    steps.with("count", forest.remap(sets));
                });
                steps.thrown = outcome.thrown, steps.printed = outcome.printed;
                return steps.with("sets", sets);
            });
    }
}

void record_numbers(const Recorder& recorder) {
    Random random(4005);
    for (int round = 0; round < 100; ++round) {
        const float base = static_cast<float>(random.range(-8192, 8192)) / 4096.0f;
        const int exponent = random.range(-40, 40);
        recorder.record(
            "pow #" + std::to_string(round),
            [&] { return Outcome().with("value", orvex_991::pow(base, exponent)); },
            [&] { return Outcome().with("value", reference::pow(base, exponent)); });

        int sides[4];
        for (int& side : sides)
            side = random.chance(20) ? random.pick({65536, 46341, -3, INT32_MAX}) : random.range(0, 9);
        recorder.record(
            "orders of rectangles #" + std::to_string(round),
            [&] {
                vector<Rect> rects;
                rects.push_back(Rect(3, 4, sides[0], sides[1]));
                rects.push_back(Rect(2, 5, sides[2], sides[3]));
                orvex_cv_991::RectAreaComp_ConnComp larger(&rects);
                Outcome outcome;
                outcome.with("larger", larger(0, 1)).with("cmpArea", Rect::cmpArea(rects[0], rects[1]));
                return outcome.with("right_bottom", rects[0].right_bottom());
            },
            [&] {
                const int first = reference::wrapping_product(sides[0], sides[1]);
                const int second = reference::wrapping_product(sides[2], sides[3]);
                const reference::Point last{reference::wrapping(int64_t{3} + sides[0] - 1),
                                            reference::wrapping(int64_t{4} + sides[1] - 1)};
                Outcome outcome;
                outcome.with("larger", first > second).with("cmpArea", first < second);
                return outcome.with("right_bottom", last);
            });
    }
}

}  // namespace

void record_values(const Recorder& recorder) {
    record_sorting(recorder);
    record_vectors(recorder);
    record_matrix<unsigned char>(recorder, "bytes");
    record_matrix<int>(recorder, "ints");
    record_matrix<float>(recorder, "floats");
    record_forests(recorder);
    record_numbers(recorder);
}

}  // namespace golden
