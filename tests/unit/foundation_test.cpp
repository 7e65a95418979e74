// Containers, values and utilities by hand-computed cases.
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include "capture.h"
#include "cv_imgproc.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using orvex_991::Clock;
using orvex_991::String;
using orvex_991::vector;
using namespace orvex_cv_991;

// ---- Mat ----

TEST(Mat, default_constructed_is_all_zero) {
    const U8 m;
    EXPECT_TRUE(m.empty());
    EXPECT_EQ(m.data, nullptr);
    for (const int field : {m.rows, m.cols, m.channels, m.dims_rows, m.dims_cols, m.step, m.elem_size})
        EXPECT_EQ(field, 0);
}

TEST(Mat, create_sets_every_field_and_fills) {
    U8 m;
    m.mat_create(2, 3, 4, 9);
    EXPECT_EQ(m.rows, 2);
    EXPECT_EQ(m.cols, 3);
    EXPECT_EQ(m.channels, 4);
    EXPECT_EQ(m.dims_rows, 2);
    EXPECT_EQ(m.dims_cols, 3);
    EXPECT_EQ(m.step, 12);
    EXPECT_EQ(m.elem_size, 4);
    EXPECT_EQ(std::count(m.data, m.data + 24, 9), 24);
    Mat<float> f;
    f.mat_create(2, 3, 4, -1);
    EXPECT_EQ(f.step, 48);
    EXPECT_EQ(f.elem_size, 16);
}

TEST(Mat, init_with_no_rows_gives_an_empty_matrix_with_a_block) {
    U8 m;
    m.init(0, 5, 1, 0);
    EXPECT_TRUE(m.empty());
    EXPECT_NE(m.data, nullptr);
}

TEST(Mat, fill_is_truncated_to_a_byte_and_converted_to_float) {
    U8 bytes;
    bytes.mat_create(1, 2, 1, 300);
    EXPECT_EQ(bytes.data[1], 44);
    Mat<float> floats;
    floats.mat_create(1, 2, 1, 300);
    EXPECT_EQ(floats.data[1], 300.0f);
}

TEST(Mat, at_beyond_the_last_row_or_column_throws_code_1) {
    U8 m = filled(2, 3, 1, 5);
    EXPECT_EQ(code_of([&] { m.at(2, 0); }), 1);
    EXPECT_EQ(code_of([&] { m.at(0, 3); }), 1);
    EXPECT_EQ(m.at(1, 2), 5);
    const U8& constant = m;
    EXPECT_EQ(code_of([&] { constant.at(2, 0); }), 1);
}

TEST(Mat, at_on_three_channels_throws_code_1_for_any_index) {
    U8 m = filled(2, 3, 3, 5);
    EXPECT_EQ(code_of([&] { m.at(0, 0); }), 1);
}

TEST(Mat, fill_assignment_sets_every_element_of_one_channel) {
    U8 m = filled(3, 4, 1, 1);
    m = static_cast<unsigned char>(77);
    EXPECT_EQ(std::count(m.data, m.data + 12, 77), 12);
}

TEST(Mat, fill_assignment_of_an_own_element_sets_its_old_value) {
    U8 m = image({{1, 2, 3}});
    m = m.data[2];
    EXPECT_EQ(std::count(m.data, m.data + 3, 3), 3);
}

TEST(Mat, fill_assignment_on_three_channels_throws_before_it_touches_an_element) {
    U8 m = filled(1, 2, 3, 1);
    EXPECT_EQ(code_of([&] { m = static_cast<unsigned char>(77); }), 1);
    EXPECT_EQ(std::count(m.data, m.data + 6, 1), 6);
}

TEST(Mat, complement_applied_twice_restores_the_matrix) {
    U8 m = image({{0, 1, 255}});
    ~m;
    EXPECT_EQ(m.data[0], 255);
    EXPECT_EQ(m.data[1], 254);
    ~m;
    EXPECT_EQ(m.data[1], 1);
    Mat<int> labels;
    labels.mat_create(1, 1, 1, 5);
    ~labels;
    EXPECT_EQ(labels.data[0], -6);
}

TEST(Mat, complement_on_three_channels_throws_code_1) {
    U8 m = filled(1, 2, 3, 1);
    EXPECT_EQ(code_of([&] { ~m; }), 1);
    EXPECT_EQ(m.data[0], 1);
}

TEST(Mat, assigning_a_matrix_to_itself_leaves_it_unchanged) {
    U8 m = filled(2, 2, 1, 8);
    const unsigned char* const block = m.data;
    U8& same = m;
    m = same;
    EXPECT_EQ(m.data, block);
    m = std::move(same);
    EXPECT_EQ(m.data, block);
    EXPECT_EQ(m.rows, 2);
}

TEST(Mat, copies_are_deep) {
    U8 m = filled(2, 2, 1, 8);
    const U8 copy(m), clone = m.clone();
    U8 assigned = filled(5, 5, 3, 1);
    assigned = m;
    m.data[0] = 1;
    EXPECT_EQ(copy.data[0], 8);
    EXPECT_EQ(clone.data[0], 8);
    EXPECT_EQ(assigned.data[0], 8);
    EXPECT_EQ(assigned.channels, 1);
    EXPECT_EQ(assigned.step, 2);
}

TEST(Mat, moving_leaves_the_source_empty_and_valid) {
    U8 m = filled(2, 3, 1, 8);
    U8 taken(std::move(m));
    EXPECT_TRUE(m.empty());
    EXPECT_EQ(m.data, nullptr);
    EXPECT_EQ(m.step, 0);
    EXPECT_EQ(taken.data[5], 8);
    m.mat_create(1, 1, 1, 3);
    taken = std::move(m);
    EXPECT_EQ(taken.rows, 1);
    EXPECT_EQ(m.data, nullptr);
}

TEST(Mat, a_negative_dimension_throws_code_3_and_keeps_the_new_shape) {
    U8 m = filled(2, 2, 1, 8);
    EXPECT_EQ(code_of([&] { m.mat_create(-1, 4, 1, 0); }), 3);
    EXPECT_EQ(m.rows, -1);
    EXPECT_EQ(m.cols, 4);
    EXPECT_EQ(m.data, nullptr);
    EXPECT_EQ(printed_by([] {
                  try {
                      U8 n;
                      n.init(3, -1, 1, 0);
                  } catch (const CException&) {
                  }
              }),
              "");
}

TEST(Mat, two_negative_dimensions_make_a_block) {
    U8 m;
    m.mat_create(-2, -3, 1, 4);
    EXPECT_EQ(std::count(m.data, m.data + 6, 4), 6);
}

TEST(Mat, an_element_count_that_wraps_below_zero_throws_code_3) {
    U8 m;
    EXPECT_EQ(code_of([&] { m.mat_create(32768, 65536, 1, 0); }), 3);
    EXPECT_EQ(m.data, nullptr);
}

TEST(Mat, copying_a_matrix_whose_creation_failed_throws_code_3) {
    U8 broken;
    code_of([&] { broken.mat_create(-1, 4, 1, 0); });
    EXPECT_EQ(code_of([&] { U8 copy(broken); }), 3);
    U8 shape_only;
    shape_only.rows = shape_only.cols = shape_only.channels = 1;
    U8 other = filled(2, 2, 1, 1);
    EXPECT_EQ(code_of([&] { other = shape_only; }), 3);
    EXPECT_EQ(other.data, nullptr);
}

// ---- vector ----

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
    const std::string printed = normalised(printed_by([] {
        try {
            vector<float> v(-2);
        } catch (const CException&) {
        }
    }));
    EXPECT_EQ(printed,
              "D util_vector.h:#] [warn] input error size >= 0 \n"
              "[warn]file: jni/orvex_991/util_vector.h, line: #, function: vector\n\n");
}

TEST(Vector, an_index_out_of_range_throws_code_4_and_prints_nothing) {
    vector<int> v(2, 1);
    const vector<int>& constant = v;
    EXPECT_EQ(code_of([&] { v[2] = 0; }), 4);
    EXPECT_EQ(code_of([&] { v[-1] = 0; }), 4);
    EXPECT_EQ(code_of([&] { constant[2]; }), 4);
    EXPECT_EQ(printed_by([&] {
                  try {
                      v[2] = 0;
                  } catch (const CException&) {
                  }
              }),
              "");
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

// Ascending input in descending order leaves one element fewer on the left each time: the scheme's worst
// case.
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

// ---- Geometry values ----

TEST(Geometry, right_bottom_is_the_last_covered_pixel) {
    EXPECT_TRUE(Rect(2, 3, 4, 5).right_bottom() == Point(5, 7));
    EXPECT_TRUE(Rect(2, 3, 4, 5).left_top() == Point(2, 3));
    EXPECT_TRUE(Rect(INT_MAX, 0, 2, 1).right_bottom() == Point(INT_MIN, 0));
}

TEST(Geometry, comparators_are_strict) {
    EXPECT_TRUE(Rect::cmpX(Rect(1, 9, 9, 9), Rect(2, 0, 0, 0)));
    EXPECT_FALSE(Rect::cmpX(Rect(2, 0, 0, 0), Rect(2, 1, 1, 1)));
    EXPECT_TRUE(Rect::cmpArea(Rect(0, 0, 2, 3), Rect(0, 0, 7, 1)));
    EXPECT_FALSE(Rect::cmpArea(Rect(0, 0, 2, 3), Rect(0, 0, 6, 1)));
    EXPECT_FALSE(Rect::cmpArea(Rect(0, 0, 65536, 65536), Rect(5, 5, 0, 9)));  // the product wraps to 0
}

TEST(Geometry, defaults_are_zero) {
    EXPECT_TRUE(Point() == Point(0, 0));
    EXPECT_EQ(Point32f().x, 0.0f);
    EXPECT_FALSE(Size(0, 0) != Size());
    EXPECT_TRUE(Size(1, 2) != Size(2, 2));
    EXPECT_TRUE(Size(1, 2) != Size(1, 3));
    EXPECT_EQ(Rect().width, 0);
    EXPECT_EQ(RotatedRect().pts.size, 0);
}

// ---- String, exception, clock, pow ----

TEST(String, copies_and_moves_its_text) {
    String text("seal");
    const String copy(text);
    String moved(std::move(text));
    EXPECT_STREQ(copy.c_str(), "seal");
    EXPECT_STREQ(moved.c_str(), "seal");
    EXPECT_STREQ(text.c_str(), "");
    text = copy;
    EXPECT_EQ(text.length(), 4);
    String& same = text;
    text = same;
    EXPECT_STREQ(text.c_str(), "seal");
    text = String();
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(String("a") == String("a"));
    EXPECT_TRUE(String("a") != String());
    EXPECT_STREQ(String(nullptr).c_str(), "");
}

TEST(Exception, carries_code_and_message) {
    const CException plain(3);
    EXPECT_EQ(plain.code, 3);
    EXPECT_STREQ(plain.message.c_str(), "");
    const CException copy = CException(CException(2, "none found"));
    EXPECT_EQ(copy.code, 2);
    EXPECT_STREQ(copy.message.c_str(), "none found");
}

TEST(Clock, measures_between_start_and_stop) {
    Clock clock;
    EXPECT_EQ(clock.getTimeMS(), 0.0f);
    clock.start();
    volatile int work = 0;
    for (int i = 0; i < 100000; ++i) work = work + 1;
    clock.stop();
    const float once = clock.getTimeMS();
    EXPECT_GT(once, 0.0f);
    EXPECT_EQ(clock.getTimeMS(), once);
}

TEST(Pow, exponent_zero_returns_the_base) {
    EXPECT_EQ(orvex_991::pow(3.0f, 0), 3.0f);
}

TEST(Pow, multiplies_and_guards_the_reciprocal) {
    EXPECT_EQ(orvex_991::pow(2.0f, -2), 1.0f / (4.0f + 1.1920929e-7f));
    EXPECT_EQ(orvex_991::pow(0.0f, 3), 0.0f);
    EXPECT_EQ(orvex_991::pow(0.0f, -1), 1.0f / 1.1920929e-7f);
    EXPECT_EQ(orvex_991::pow(-3.0f, 3), -27.0f);
    EXPECT_EQ(orvex_991::pow(1.5f, 1), 1.5f);
}

}  // namespace
}  // namespace testing_support
