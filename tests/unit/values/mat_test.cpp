#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "capture.h"
#include "cv_mat.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_cv_991::Mat;

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
    U8 longer = filled(1, 19, 1, 3);
    ~longer;
    EXPECT_EQ(std::count(longer.data, longer.data + 19, 252), 19);
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
    U8 n;
    EXPECT_EQ(result_of([&] { n.init(3, -1, 1, 0); }).printed, "");
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

}  // namespace
}  // namespace testing_support
