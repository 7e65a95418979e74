#include "pipeline/text_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "drawn.h"

using docprep::Deskew;
using docprep::Place;
using docprep::Points;
using docprep::Rects;
using docprep::TextRow;
using docprep::TextRows;
using docprep::WayBack;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

constexpr int kTextHeight = 14;

std::vector<std::pair<int, int>> pairs(const Points& points) {
    std::vector<std::pair<int, int>> list;
    for (int k = 0; k < points.size; ++k) list.emplace_back(points[k].x, points[k].y);
    return list;
}

TextRows rows_of(const Rects& letters, int text_height = kTextHeight) {
    Deskew level;
    level.cols = 2000;
    level.rows = 1000;
    return docprep::find_rows(letters, text_height, WayBack(level, Size(2000, 1000), 0));
}

Rects line(int left, int n, double foot) {
    return letters_of_line(left, n, [&](double) { return foot; });
}

/// The sizes of rows from top to bottom.
std::vector<int> sizes(const TextRows& rows) {
    std::vector<int> list;
    for (const TextRow& row : rows) list.push_back(row.components.size);
    return list;
}

}  // namespace

TEST(text_rows, rows_come_from_top_to_bottom_and_their_components_from_left_to_right) {
    const TextRows rows =
        rows_of(rects_of({Rect(50, 60, 10, 12), Rect(30, 10, 10, 12), Rect(10, 62, 10, 12),
                          Rect(30, 61, 10, 12), Rect(50, 10, 10, 12), Rect(70, 10, 10, 12)}),
                12);
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ(10, rows[0].rect.y);
    ASSERT_EQ(3, rows[1].components.size());
    EXPECT_EQ(10, rows[1].components[0].x);
    EXPECT_EQ(30, rows[1].components[1].x);
    EXPECT_EQ(50, rows[1].components[2].x);
}

TEST(text_rows, hull_and_rectangle_of_least_area_are_those_of_the_corner_pixels) {
    const TextRows rows =
        rows_of(rects_of({Rect(10, 20, 11, 11), Rect(25, 23, 11, 8), Rect(40, 25, 11, 11)}), 11);
    ASSERT_EQ(1u, rows.size());
    using Corners = std::vector<std::pair<int, int>>;
    EXPECT_EQ((Corners{{10, 20}, {20, 20}, {50, 25}, {50, 35}, {40, 35}, {10, 30}}), pairs(rows[0].hull));
    EXPECT_EQ(4, rows[0].min_area.pts.size());
    // Along the edges that rise 5 in 30: less than the upright rectangle of 40 x 15.
    EXPECT_LT(rows[0].min_area.width * rows[0].min_area.height, 40 * 15);
    EXPECT_EQ(10, rows[0].rect.x);
    EXPECT_EQ(20, rows[0].rect.y);
    EXPECT_EQ(41, rows[0].rect.width);
    EXPECT_EQ(16, rows[0].rect.height);
}

TEST(text_rows, a_level_page_lies_on_the_photograph_where_it_is) {
    const TextRows rows =
        rows_of(rects_of({Rect(10, 20, 11, 12), Rect(25, 20, 11, 12), Rect(40, 20, 11, 12)}), 12);
    ASSERT_EQ(1u, rows.size());
    EXPECT_TRUE(Point(10, 20) == rows[0].on_photo.corners[0]);
    EXPECT_TRUE(Point(50, 31) == rows[0].on_photo.corners[2]);
}

TEST(text_rows, no_components_give_no_rows) {
    for (const int text_height : {0, 1, 14, 1 << 20}) EXPECT_TRUE(rows_of(Rects(), text_height).empty());
}

TEST(text_rows, a_bent_line_is_one_row) {
    // It rises by 4 text heights, and the next line begins below its middle.
    Rects letters;
    for (int k = 0; k < 6; ++k)
        append(letters, letters_of_line(50, 100, [&](double x) {
                   return 200 + 36 * k + 56 * std::pow((x - 750) / 700, 2);
               }));
    EXPECT_EQ((std::vector<int>(6, 100)), sizes(rows_of(letters)));
}

TEST(text_rows, words_of_a_line_are_one_row) {
    Rects letters = line(50, 8, 300);
    append(letters, line(190, 5, 301));
    append(letters, line(300, 20, 299));
    EXPECT_EQ((std::vector<int>{33}), sizes(rows_of(letters)));
}

TEST(text_rows, two_columns_do_not_share_rows) {
    Rects letters;
    for (int k = 0; k < 5; ++k) {
        append(letters, line(50, 30, 200 + 36 * k));
        append(letters, line(550, 30, 200 + 36 * k));
    }
    const TextRows rows = rows_of(letters);
    EXPECT_EQ((std::vector<int>(10, 30)), sizes(rows));
    for (size_t k = 0; k < rows.size(); ++k) EXPECT_EQ(k % 2 == 0 ? 50 : 550, rows[k].rect.x);
}

TEST(text_rows, two_lines_beside_each_other_are_no_columns) {
    Rects letters;
    for (int k = 0; k < 2; ++k) {
        append(letters, line(50, 30, 200 + 36 * k));
        append(letters, line(550, 30, 200 + 36 * k));
    }
    EXPECT_EQ((std::vector<int>{60, 60}), sizes(rows_of(letters)));
}

TEST(text_rows, the_wide_gaps_of_a_table_are_bridged) {
    Rects letters;
    for (int k = 0; k < 8; ++k) {
        append(letters, line(50, 20, 200 + 36 * k));
        append(letters, line(700, 4, 200 + 36 * k));
        append(letters, line(1200, 5, 200 + 36 * k));
    }
    EXPECT_EQ((std::vector<int>(8, 29)), sizes(rows_of(letters)));
}

TEST(text_rows, flat_rules_form_no_row) {
    Rects letters = line(50, 20, 300);
    for (int k = 0; k < 20; ++k) letters.push_back(Rect(50 + 30 * k, 500, 28, 3));
    EXPECT_EQ((std::vector<int>{20}), sizes(rows_of(letters)));
}

TEST(text_rows, letters_without_a_chain_join_the_row_beside_them) {
    const Rects row = line(100, 20, 300);
    const auto size_with = [&](const Rect& letter) {
        Rects letters = row;
        letters.push_back(letter);
        const TextRows rows = rows_of(letters);
        EXPECT_EQ(1u, rows.size());
        return rows[0].components.size();
    };
    EXPECT_EQ(21, size_with(Rect(400, 286, 10, 14))) << "to its right";
    EXPECT_EQ(21, size_with(Rect(70, 286, 10, 14))) << "to its left";
    EXPECT_EQ(21, size_with(Rect(382, 291, 10, 3))) << "a hyphen at its end";
    EXPECT_EQ(20, size_with(Rect(500, 286, 10, 14))) << "too far";
    EXPECT_EQ(20, size_with(Rect(400, 330, 10, 14))) << "below";
    EXPECT_EQ(20, size_with(Rect(400, 250, 10, 14))) << "above";
}

TEST(text_rows, letters_stand_on_the_baseline) {
    const auto foot = [](double x) { return 300 + 20 * std::pow((x - 750) / 700, 2); };
    const TextRows rows = rows_of(letters_of_line(50, 100, foot));
    ASSERT_EQ(1u, rows.size());
    const std::vector<Place>& points = rows[0].baseline;
    EXPECT_EQ(50, points.front().x);
    EXPECT_EQ(50 + 14 * 99 + 9, points.back().x);
    ASSERT_GE(points.size(), 3u);
    for (size_t k = 0; k < points.size(); ++k) {
        EXPECT_NEAR(foot(points[k].x) - 1, points[k].y,
                    1.5);  // the lowest pixel of letters, not the row below
        if (k == 0) continue;
        EXPECT_GT(points[k].x, points[k - 1].x);
        EXPECT_LE(points[k].x - points[k - 1].x, 8 * kTextHeight);
    }
}

TEST(text_rows, the_baseline_of_a_short_row_has_its_two_ends) {
    const TextRows rows = rows_of(line(50, 4, 300));
    ASSERT_EQ(1u, rows.size());
    ASSERT_EQ(2u, rows[0].baseline.size());
    EXPECT_EQ(50, rows[0].baseline[0].x);
    EXPECT_EQ(101, rows[0].baseline[1].x);
}

// Each letter is in one row at most, whatever the picture; 20,000 are those of a page full of noise.
TEST(text_rows, noise_gives_each_letter_one_row_at_most) {
    for (const auto& [n, extent, largest] :
         {std::tuple{0, 1, 1}, std::tuple{1, 1, 1}, std::tuple{300, 200, 40}, std::tuple{20000, 2000, 30}})
        for (const int text_height : {0, 1, 12, 100}) {
            std::mt19937 random(static_cast<unsigned>(n));
            const auto below = [&](int end) {
                return static_cast<int>(random() % static_cast<unsigned>(end));
            };
            Rects letters;
            for (int k = 0; k < n; ++k)
                letters.push_back(Rect(below(extent), below(extent), 1 + below(largest), 1 + below(largest)));
            int in_rows = 0;
            for (const TextRow& row : rows_of(letters, text_height)) {
                ASSERT_GE(row.components.size, 3);
                ASSERT_GE(row.baseline.size(), 2u);
                for (const Place& place : row.baseline) ASSERT_TRUE(std::isfinite(place.y));
                for (int k = 1; k < row.components.size; ++k)
                    ASSERT_LE(row.components[k - 1].x, row.components[k].x);
                in_rows += row.components.size;
            }
            EXPECT_LE(in_rows, n);
        }
}

TEST(text_rows, the_bounding_rectangle_covers_all) {
    Rects rects;
    EXPECT_EQ(0, docprep::bounding_rect(rects).width);
    rects.push_back(Rect(5, 9, 2, 2));
    rects.push_back(Rect(3, 10, 1, 8));
    const Rect all = docprep::bounding_rect(rects);
    EXPECT_EQ(3, all.x);
    EXPECT_EQ(9, all.y);
    EXPECT_EQ(4, all.width);
    EXPECT_EQ(9, all.height);
}
