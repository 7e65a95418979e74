#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::ForestJoin;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;

struct Labels {
    std::vector<int> pixels;
    int num = -1;
};

Labels labels_of(const U8& src) {
    Labels result;
    Mat<int> dst;
    printed_by([&] { CImgproc::bwlabel(src, dst, result.num); });
    result.pixels.assign(dst.data, dst.data + dst.rows * dst.cols);
    return result;
}

std::vector<std::vector<int>> rects_of(const U8& src, bool with_points = false,
                                       std::vector<std::vector<std::pair<int, int>>>* lists = nullptr) {
    vector<Rect> rects;
    vector<vector<Point>> points;
    printed_by([&] { CImgproc::connectdComponent(src, rects, with_points ? &points : nullptr); });
    std::vector<std::vector<int>> result;
    for (int k = 0; k < rects.size; ++k)
        result.push_back({rects[k].x, rects[k].y, rects[k].width, rects[k].height});
    if (lists) {
        for (int k = 0; k < points.size; ++k) {
            lists->emplace_back();
            for (int i = 0; i < points[k].size; ++i)
                lists->back().emplace_back(points[k][i].x, points[k][i].y);
        }
    }
    return result;
}

TEST(Labelling, an_all_zero_image_has_no_component) {
    const Labels labels = labels_of(filled(4, 5, 1, 0));
    EXPECT_EQ(labels.num, 0);
    EXPECT_EQ(labels.pixels, std::vector<int>(20, 0));
}

TEST(Labelling, the_first_pixel_counts_only_when_it_is_255) {
    EXPECT_EQ(labels_of(filled(1, 1, 1, 200)).num, 0);
    EXPECT_EQ(labels_of(filled(1, 1, 1, 255)).num, 1);
    const Labels labels = labels_of(image({{128, 0, 128}}));
    EXPECT_EQ(labels.pixels, (std::vector<int>{0, 0, 1}));
}

TEST(Labelling, diagonal_contact_does_not_join) {
    EXPECT_EQ(labels_of(image({{0, 0, 0}, {0, 255, 0}, {0, 0, 255}})).num, 2);
}

TEST(Labelling, a_u_is_one_component_numbered_by_its_first_pixel) {
    const Labels labels = labels_of(image({{0, 9, 0, 9, 0, 9}, {0, 9, 0, 9, 0, 0}, {0, 9, 9, 9, 0, 0}}));
    EXPECT_EQ(labels.num, 2);
    EXPECT_EQ(labels.pixels, (std::vector<int>{0, 1, 0, 1, 0, 2, 0, 1, 0, 1, 0, 0, 0, 1, 1, 1, 0, 0}));
}

TEST(Labelling, a_single_row_counts_its_runs_from_the_left) {
    EXPECT_EQ(labels_of(image({{255, 255, 0, 1, 0, 7, 7}})).pixels, (std::vector<int>{1, 1, 0, 2, 0, 3, 3}));
}

TEST(Labelling, a_single_column_counts_its_runs_from_the_top) {
    EXPECT_EQ(labels_of(image({{255}, {0}, {1}, {1}, {0}, {7}})).pixels,
              (std::vector<int>{1, 0, 2, 2, 0, 3}));
}

TEST(Labelling, a_checkerboard_has_one_component_a_pixel) {
    U8 board = filled(8, 9, 1, 0);
    for (int row = 0; row < 8; ++row)
        for (int col = 0; col < 9; ++col) board.data[row * 9 + col] = (row + col) % 2 ? 0 : 255;
    EXPECT_EQ(labels_of(board).num, 36);
    board.data[0] = 200;  // a first pixel other than 255 is background
    EXPECT_EQ(labels_of(board).num, 35);
}

TEST(Labelling, a_join_beyond_the_forest_throws_code_4_and_leaves_the_labels_so_far) {
    Mat<int> dst;
    int num = -7;
    EXPECT_EQ(code_of([&] { CImgproc::bwlabel(image({{0, 255}, {255, 255}}), dst, num); }), 4);
    const int so_far[] = {0, 1, 2, 0};
    EXPECT_TRUE(std::equal(so_far, so_far + 4, dst.data));
    EXPECT_EQ(num, -7);
}

TEST(Components, a_join_beyond_the_forest_is_code_2_and_leaves_the_points_alone) {
    vector<Rect> rects(2);
    vector<vector<Point>> points(3);
    const Result result = result_of([&] {
        CImgproc::connectdComponent(image({{0, 255}, {255, 255}}), rects, &points);
    });
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.message, "");
    EXPECT_EQ(rects.size, 0);
    EXPECT_EQ(points.size, 3);
}

TEST(Components, no_foreground_gives_empty_lists) {
    vector<Rect> rects(2);
    vector<vector<Point>> points(3);
    printed_by([&] { CImgproc::connectdComponent(filled(3, 3, 1, 0), rects, &points); });
    EXPECT_EQ(rects.size, 0);
    EXPECT_EQ(points.size, 0);
}

TEST(Components, a_single_pixel_gives_its_rectangle_and_its_list) {
    U8 m = filled(4, 6, 1, 0);
    m.at(2, 5) = 1;
    std::vector<std::vector<std::pair<int, int>>> lists;
    EXPECT_EQ(rects_of(m, true, &lists), (std::vector<std::vector<int>>{{5, 2, 1, 1}}));
    EXPECT_EQ(lists, (std::vector<std::vector<std::pair<int, int>>>{{{5, 2}}}));
}

TEST(Components, a_thin_l_comes_before_a_filled_block_of_more_pixels) {
    U8 m = filled(12, 12, 1, 0);
    for (int k = 0; k < 5; ++k) m.at(1 + k, 1) = m.at(5, 1 + k) = 255;  // 9 pixels in 5 x 5
    for (int row = 7; row < 10; ++row)
        for (int col = 7; col < 11; ++col) m.at(row, col) = 255;  // 12 pixels in 3 x 4
    std::vector<std::vector<std::pair<int, int>>> lists;
    EXPECT_EQ(rects_of(m, true, &lists), (std::vector<std::vector<int>>{{1, 1, 5, 5}, {7, 7, 4, 3}}));
    EXPECT_EQ(lists[0].size(), 9u);
    EXPECT_EQ(lists[0][1], (std::pair<int, int>{1, 2}));  // raster order
    EXPECT_EQ(lists[1].size(), 12u);
}

TEST(Components, only_the_form_with_points_prints_its_timing_line) {
    vector<Rect> rects;
    vector<vector<Point>> points;
    EXPECT_EQ(
        normalised(printed_by([&] { CImgproc::connectdComponent(filled(3, 3, 1, 9), rects, nullptr); })),
        "D cv_imgproc.cpp:#] bwlabel cost time: #ms\n");
    EXPECT_EQ(
        normalised(printed_by([&] { CImgproc::connectdComponent(filled(3, 3, 1, 9), rects, &points); })),
        "D cv_imgproc.cpp:#] bwlabel cost time: #ms\n"
        "D cv_imgproc.cpp:#] connect component got cost time: #ms\n");
}

TEST(Components, a_three_channel_image_is_code_2) {
    vector<Rect> rects(2);
    const Result result = result_of([&] { CImgproc::connectdComponent(filled(3, 3, 3, 9), rects, nullptr); });
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(normalised(result.printed),
              "D cv_imgproc.cpp:#] [warn] input error 1 == src.channels \n"
              "[warn]file: jni/orvex_991/cv_imgproc.cpp, line: #, function: bwlabel\n\n");
    EXPECT_EQ(rects.size, 0);
}

TEST(Components, a_figure_of_only_a_weak_first_pixel_is_none) {
    U8 m = filled(3, 3, 1, 0);
    m.data[0] = 254;
    EXPECT_TRUE(rects_of(m).empty());
}

TEST(Components, both_forms_may_order_equal_areas_differently) {
    const U8 m = image({{255, 0, 255, 0, 255, 0}});
    EXPECT_EQ(rects_of(m), (std::vector<std::vector<int>>{{4, 0, 1, 1}, {2, 0, 1, 1}, {0, 0, 1, 1}}));
    EXPECT_EQ(rects_of(m, true), (std::vector<std::vector<int>>{{0, 0, 1, 1}, {2, 0, 1, 1}, {4, 0, 1, 1}}));
}

// 300,000 components: step by step the two orders would take minutes.
TEST(Components, hundreds_of_thousands_come_out_in_both_orders) {
    U8 m = filled(1500, 1600, 1, 0);
    Random random(5);
    int expected = 0;
    for (int row = 1; row < 1500; row += 2)
        for (int col = 1; col + 3 < 1600; col += 4) {
            for (int k = random.range(0, 3); k > 0; --k) m.data[row * 1600 + col + k - 1] = 255;
            expected += m.data[row * 1600 + col] != 0;
        }
    for (const bool with_points : {false, true}) {
        const auto rects = rects_of(m, with_points);
        EXPECT_EQ(static_cast<int>(rects.size()), expected);
        EXPECT_TRUE(std::is_sorted(rects.begin(), rects.end(),
                                   [](const auto& a, const auto& b) { return a[2] > b[2]; }));
    }
    m = filled(1500, 1600, 1, 0);
    for (int row = 1; row < 1500; row += 2)
        for (int col = 1; col < 1600; col += 4) m.data[row * 1600 + col] = 255;
    const auto equal = rects_of(m);
    EXPECT_EQ(equal.size(), 300000u);
    EXPECT_EQ(equal[0], (std::vector<int>{1597, 1499, 1, 1}));  // the exchange sort reverses equals
    EXPECT_EQ(rects_of(m, true)[0], (std::vector<int>{1, 1, 1, 1}));
}

// ---- Forest ----

TEST(Forest, the_smaller_root_wins_and_sets_are_numbered_by_root) {
    ForestJoin forest(6);
    EXPECT_EQ(forest.Join(4, 2), 2);
    EXPECT_EQ(forest.Join(4, 5), 2);
    EXPECT_EQ(forest.Join(3, 3), 3);
    EXPECT_EQ(forest.GetRootId(5), 2);
    vector<int> out;
    EXPECT_EQ(forest.Remap(out), 3);
    EXPECT_EQ(out.size, 6);
    const int numbers[] = {1, 2, 3, 2, 2};
    EXPECT_TRUE(std::equal(numbers, numbers + 5, out.data + 1));
}

TEST(Forest, labels_outside_throw_code_4) {
    ForestJoin forest(2);
    for (const int bad : {-1, 2}) EXPECT_EQ(code_of([&] { forest.Join(1, bad); }), 4);
    EXPECT_EQ(forest.GetRootId(1), 1);
}

TEST(Forest, remap_of_fewer_than_two_labels_counts_none) {
    vector<int> out;
    EXPECT_EQ(ForestJoin(1).Remap(out), 0);
    EXPECT_EQ(ForestJoin(0).Remap(out), 0);
}

TEST(Forest, area_comparator_puts_larger_rectangles_first) {
    vector<Rect> rects;
    rects.push_back(Rect(0, 0, 2, 3));
    rects.push_back(Rect(0, 0, 7, 1));
    rects.push_back(Rect(0, 0, 1, 6));
    orvex_cv_991::RectAreaComp_ConnComp larger(&rects);
    EXPECT_TRUE(larger(1, 0));
    EXPECT_FALSE(larger(0, 1));
    EXPECT_FALSE(larger(0, 2));
}

// ---- Rows ----

std::vector<std::vector<int>> row_xs(std::initializer_list<Rect> rects) {
    vector<Rect> list;
    for (const Rect& rect : rects) list.push_back(rect);
    vector<vector<Rect>> rows(1);
    EXPECT_EQ(printed_by([&] { CImgproc::divideComponentsToRows(list, rows); }), "");
    std::vector<std::vector<int>> xs;
    for (int k = 0; k < rows.size; ++k) {
        xs.emplace_back();
        for (int i = 0; i < rows[k].size; ++i) xs.back().push_back(rows[k][i].x);
    }
    return xs;
}

using Rows = std::vector<std::vector<int>>;

TEST(Rows, none_from_no_rectangles) {
    EXPECT_EQ(row_xs({}), Rows{});
}

TEST(Rows, side_by_side_is_one_row_from_left_to_right) {
    EXPECT_EQ(row_xs({Rect(20, 5, 4, 8), Rect(3, 5, 4, 8)}), (Rows{{3, 20}}));
}

TEST(Rows, touching_bands_merge_and_a_gap_of_one_row_parts_them) {
    EXPECT_EQ(row_xs({Rect(1, 0, 4, 10), Rect(2, 10, 4, 10)}), (Rows{{1, 2}}));
    EXPECT_EQ(row_xs({Rect(1, 0, 4, 10), Rect(2, 11, 4, 10)}), (Rows{{1}, {2}}));
}

TEST(Rows, a_tall_rectangle_merges_the_lines_it_spans) {
    EXPECT_EQ(row_xs({Rect(1, 0, 4, 5), Rect(2, 20, 4, 5), Rect(9, 0, 2, 25)}), (Rows{{1, 2, 9}}));
}

TEST(Rows, height_0_marks_nothing_but_joins_the_band_above_it) {
    EXPECT_EQ(row_xs({Rect(1, 0, 4, 5), Rect(2, 20, 4, 5), Rect(0, 12, 4, 0)}), (Rows{{0, 1}, {2}}));
}

TEST(Rows, equal_x_keep_their_input_order) {
    vector<Rect> list;
    for (int k = 0; k < 40; ++k) list.push_back(Rect(k % 2, 0, k, 5));
    vector<vector<Rect>> rows;
    CImgproc::divideComponentsToRows(list, rows);
    for (int k = 0; k < 20; ++k) {
        EXPECT_EQ(rows[0][k].width, 2 * k);
        EXPECT_EQ(rows[0][20 + k].width, 2 * k + 1);
    }
}

int code_of_rows(std::initializer_list<Rect> rects, int& bands) {
    vector<Rect> list;
    for (const Rect& rect : rects) list.push_back(rect);
    vector<vector<Rect>> rows(1);
    const int code = code_of([&] { CImgproc::divideComponentsToRows(list, rows); });
    bands = rows.size;
    return code;
}

TEST(Rows, a_rectangle_above_row_0_throws_code_4_and_leaves_no_rows) {
    int bands = -1;
    EXPECT_EQ(code_of_rows({Rect(1, 3, 4, 5), Rect(1, -1, 4, 5)}, bands), 4);
    EXPECT_EQ(bands, 0);
}

TEST(Rows, a_rectangle_above_every_band_throws_code_4) {
    int bands = -1;
    EXPECT_EQ(code_of_rows({Rect(1, 3, 4, 5), Rect(1, 2, 4, 0)}, bands), 4);
    EXPECT_EQ(bands, 1);
    EXPECT_EQ(code_of_rows({Rect(1, 2, 4, 0)}, bands), 4);
    EXPECT_EQ(bands, 0);
}

TEST(Rows, far_down_rectangles_cost_no_memory) {
    EXPECT_EQ(row_xs({Rect(1, 2147483000, 4, 5), Rect(2, 3, 4, 2)}), (Rows{{2}, {1}}));
}

}  // namespace
}  // namespace testing_support
