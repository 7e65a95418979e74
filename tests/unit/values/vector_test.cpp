#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>
#include <utility>

#include "capture.h"
#include "cv_geometry.h"
#include "util_vector.h"

namespace testing_support {
namespace {

using orvex_991::vector;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;

TEST(Vector, first_growth_gives_100_and_each_later_one_doubles) {
    vector<int> v;
    EXPECT_EQ(v.capacity, 0);
    v.push_back(0);
    EXPECT_EQ(v.capacity, 100);
    for (int i = 1; i < 101; ++i) v.push_back(i);
    EXPECT_EQ(v.size, 101);
    EXPECT_EQ(v.capacity, 200);
    for (int i = 0; i < 101; ++i) EXPECT_EQ(v[i], i);
}

TEST(Vector, reserve_of_nothing_does_nothing_and_never_shrinks) {
    vector<int> v;
    v.reserve(0);
    v.reserve(-5);
    EXPECT_EQ(v.data, nullptr);
    v.reserve(7);
    v.reserve(3);
    EXPECT_EQ(v.capacity, 7);
    EXPECT_EQ(v.size, 0);
}

TEST(Vector, get_index_finds_the_first_equal_element_or_gives_minus_1) {
    vector<Point> v;
    EXPECT_EQ(v.get_index(Point(1, 2)), -1);
    for (const int x : {5, 1, 1}) v.push_back(Point(x, 2));
    EXPECT_EQ(v.get_index(Point(1, 2)), 1);
    EXPECT_EQ(v.get_index(Point(1, 3)), -1);
}

TEST(Vector, clear_then_push_back_starts_anew_with_100) {
    vector<int> v(300, 1);
    v.clear();
    EXPECT_EQ(v.data, nullptr);
    EXPECT_EQ(v.capacity, 0);
    v.push_back(4);
    EXPECT_EQ(v.capacity, 100);
    EXPECT_EQ(v[0], 4);
}

TEST(Vector, sized_construction_takes_exactly_that_capacity) {
    const vector<Rect> v(3);
    EXPECT_EQ(v.capacity, 3);
    EXPECT_EQ(v[2].width, 0);
    const vector<int> none(0);
    EXPECT_EQ(none.data, nullptr);
    const vector<int> sevens(4, 7);
    EXPECT_EQ(sevens[3], 7);
    EXPECT_EQ(sevens.capacity, 4);
}

TEST(Vector, a_negative_size_prints_and_throws_code_1) {
    EXPECT_EQ(code_of([] { vector<int> v(-1); }), 1);
    EXPECT_EQ(code_of([] { vector<int> v(-1, 3); }), 1);
    EXPECT_EQ(normalised(result_of([] { vector<float> v(-2); }).printed),
              "D util_vector.h:#] [warn] input error size >= 0 \n"
              "[warn]file: jni/orvex_991/util_vector.h, line: #, function: vector\n\n");
}

TEST(Vector, an_index_out_of_range_throws_code_4_and_prints_nothing) {
    vector<int> v(2, 1);
    const vector<int>& constant = v;
    EXPECT_EQ(code_of([&] { v[2] = 0; }), 4);
    EXPECT_EQ(code_of([&] { v[-1] = 0; }), 4);
    EXPECT_EQ(code_of([&] { constant[2]; }), 4);
    EXPECT_EQ(result_of([&] { v[2] = 0; }).printed, "");
}

TEST(Vector, pop_back_returns_the_last_element_and_throws_code_4_when_empty) {
    vector<int> v;
    v.push_back(5);
    EXPECT_EQ(v.pop_back(), 5);
    EXPECT_EQ(v.size, 0);
    EXPECT_EQ(v.capacity, 100);
    EXPECT_EQ(code_of([&] { v.pop_back(); }), 4);
}

// Out of line: seeing the block of no elements, the compiler would warn of the growth that the test wants.
[[gnu::noinline]] vector<int> copy_of(const vector<int>& v) {
    return vector<int>(v);
}

TEST(Vector, copies_take_size_and_capacity_even_a_capacity_of_0) {
    vector<int> v;
    v.push_back(3);
    const vector<int> copy(v);
    EXPECT_EQ(copy.capacity, 100);
    EXPECT_EQ(copy[0], 3);
    vector<int> assigned(500, 1);
    assigned = v;
    EXPECT_EQ(assigned.size, 1);
    EXPECT_EQ(assigned.capacity, 100);
    vector<int> copy_of_none = copy_of(vector<int>());
    EXPECT_EQ(copy_of_none.capacity, 0);
    copy_of_none.push_back(1);
    EXPECT_EQ(copy_of_none.capacity, 100);
}

TEST(Vector, assigning_a_vector_to_itself_leaves_it_unchanged) {
    vector<int> v(3, 4);
    const int* const block = v.data;
    vector<int>& same = v;
    v = same;
    EXPECT_EQ(v.data, block);
    v = std::move(same);
    EXPECT_EQ(v[2], 4);
}

TEST(Vector, moving_leaves_the_source_empty_and_valid) {
    vector<int> v(3, 4);
    vector<int> taken(std::move(v));
    EXPECT_EQ(v.size, 0);
    EXPECT_EQ(v.capacity, 0);
    EXPECT_EQ(v.data, nullptr);
    v.push_back(1);
    taken = std::move(v);
    EXPECT_EQ(taken.size, 1);
    EXPECT_EQ(v.data, nullptr);
}

TEST(Vector, push_back_of_an_own_element_survives_the_regrowth) {
    vector<vector<int>> v;
    for (int i = 0; i < 100; ++i) v.push_back(vector<int>(2, i));
    v.push_back(v[7]);
    EXPECT_EQ(v.capacity, 200);
    EXPECT_EQ(v[100][1], 7);
    EXPECT_EQ(v[7][1], 7);
}

TEST(Vector, appending_a_vector_to_itself_doubles_its_content) {
    vector<int> v;
    for (int i = 0; i < 3; ++i) v.push_back(i);
    v += v;
    EXPECT_EQ(v.size, 6);
    EXPECT_EQ(v[5], 2);
    vector<int> tight(3, 9);
    tight += tight;
    EXPECT_EQ(tight.capacity, 6);
    EXPECT_EQ(tight[5], 9);
}

TEST(Vector, init_to_size_with_an_own_element_survives_the_regrowth) {
    vector<vector<int>> v(1, vector<int>(1, 5));
    v.init_to_size(50, v[0]);
    EXPECT_EQ(v.size, 50);
    EXPECT_EQ(v[49][0], 5);
    v.init_to_size(2, v[0]);
    EXPECT_EQ(v.size, 2);
    EXPECT_EQ(v.capacity, 50);
}

// Out of line: the compiler would warn of the elements that the made-up size promises.
[[gnu::noinline]] void append(vector<int>& v, const vector<int>& other) {
    v += other;
}

TEST(Vector, growth_past_the_largest_count_is_refused_without_touching_the_vector) {
    vector<int> v(2, 3);
    v.capacity = INT_MAX;  // as if so large; nothing is allocated for the test
    EXPECT_THROW(v.double_the_size(), std::bad_array_new_length);
    v.capacity = 2;
    vector<int> other(1, 1);
    other.size = INT_MAX;
    EXPECT_THROW(append(v, other), std::bad_array_new_length);
    other.size = 1;
    EXPECT_EQ(v.size, 2);
}

bool greater_than(const int& a, const int& b) {
    return a > b;
}
bool tens_less(const int& a, const int& b) {
    return a / 10 < b / 10;
}
bool tens_not_greater(const int& a, const int& b) {
    return a / 10 <= b / 10;
}

TEST(Vector, bubble_sort_with_a_strict_order_is_stable) {
    vector<int> v;
    for (const int i : {31, 12, 30, 11, 22}) v.push_back(i);
    v.bubbleSort(tens_less);
    const int sorted[] = {12, 11, 22, 31, 30};
    EXPECT_TRUE(std::equal(sorted, sorted + 5, v.data));
    v.bubbleSort(greater_than);
    EXPECT_EQ(v[0], 31);
    EXPECT_EQ(v[4], 11);
}

TEST(Vector, bubble_sort_that_holds_for_equals_exchanges_them_on_every_pass) {
    vector<int> v;
    for (const int i : {10, 11, 12}) v.push_back(i);
    v.bubbleSort(tens_not_greater);  // passes of 2 and 1 exchanges: 11 12 10, then 12 11 10
    const int exchanged[] = {12, 11, 10};
    EXPECT_TRUE(std::equal(exchanged, exchanged + 3, v.data));
}

TEST(Vector, quick_partition_sorts_sorted_input) {
    vector<int> v;
    for (int i = 0; i < 1000; ++i) v.push_back(i);
    const auto less = [](int a, int b) { return a < b; };
    orvex_991::quick_partition(v, 0, v.size - 1, less);
    EXPECT_TRUE(std::is_sorted(v.data, v.data + 1000));
}

TEST(Vector, quick_partition_out_of_range_throws_code_4_before_it_writes) {
    vector<int> v;
    for (const int i : {3, 1, 2}) v.push_back(i);
    const auto less = [](int a, int b) { return a < b; };
    EXPECT_EQ(code_of([&] { orvex_991::quick_partition(v, 0, 3, less); }), 4);
    EXPECT_EQ(code_of([&] { orvex_991::quick_partition(v, -1, 2, less); }), 4);
    EXPECT_EQ(code_of([&] { orvex_991::quick_partition(v, 7, 7, less); }), 0);
    const int untouched[] = {3, 1, 2};
    EXPECT_TRUE(std::equal(untouched, untouched + 3, v.data));
}

// Ascending input in descending order leaves one element fewer on the left each time:
// the scheme's worst case.
TEST(Vector, quick_partition_needs_little_stack_on_its_worst_input) {
    struct Probe {
        uintptr_t lowest = UINTPTR_MAX;
        bool operator()(int a, int b) {
            const char here = 0;
            lowest = std::min(lowest, reinterpret_cast<uintptr_t>(&here));
            return a > b;
        }
    };
    const auto sort_on_a_small_stack = [](void* result) -> void* {
        vector<int> v;
        for (int i = 0; i < 20000; ++i) v.push_back(i);
        Probe probe;
        const char here = 0;
        orvex_991::quick_partition(v, 0, v.size - 1, probe);
        *static_cast<uintptr_t*>(result) = reinterpret_cast<uintptr_t>(&here) - probe.lowest;
        if (v[0] != 19999 || v[19999] != 0) *static_cast<uintptr_t*>(result) = UINTPTR_MAX;
        return nullptr;
    };
    uintptr_t used = 0;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, sort_on_a_small_stack, &used), 0);
    pthread_join(thread, nullptr);
    EXPECT_LT(used, 16 * 1024u);  // log2(20000) < 15 frames
}

}  // namespace
}  // namespace testing_support
