#include "pipeline/paper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "drawn.h"

using docprep::Deskew;
using docprep::Image;
using docprep::Paper;
using docprep::Points;
using docprep::Rects;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 600;
constexpr int kCols = 800;
constexpr int kTextHeight = 14;
const Rect kSheet(120, 60, 520, 470);

/// Lines of letters, 40 pixels inside a rectangle.
Rects letters_in(const Rect& rect) {
    Rects letters;
    for (int y = rect.y + 60; y <= rect.y + rect.height - 40; y += 40)
        append(letters, letters_of_line(rect.x + 40, (rect.width - 80) / 14, [&](double) { return y; }));
    return letters;
}

void print(Image& gray, const Rects& letters) {
    for (int k = 0; k < letters.size; ++k) {
        const Rect& letter = letters[k];
        fill(gray, Rect(letter.x, letter.y, 3, letter.height), 40);
        fill(gray, Rect(letter.x, letter.y, letter.width, 3), 40);
    }
}

/// A sheet with letters on a desk, under a light that falls off to the right.
Image sheet_on(int desk, int sheet) {
    Image gray = gray_picture(kRows, kCols, desk);
    fill(gray, kSheet, sheet);
    print(gray, letters_in(kSheet));
    shade(gray, [before = gray](int x, int y) { return pixel(before, x, y) * (1 - 0.1 * x / kCols); });
    return gray;
}

Rect bounds_of(const Points& points) {
    int left = points[0].x, top = points[0].y, right = left, bottom = top;
    for (int k = 1; k < points.size; ++k) {
        left = std::min(left, points[k].x);
        right = std::max(right, points[k].x);
        top = std::min(top, points[k].y);
        bottom = std::max(bottom, points[k].y);
    }
    return Rect(left, top, right - left + 1, bottom - top + 1);
}

void expect_near(const Rect& expected, const Rect& actual, int by) {
    EXPECT_NEAR(expected.x, actual.x, by);
    EXPECT_NEAR(expected.y, actual.y, by);
    EXPECT_NEAR(expected.x + expected.width, actual.x + actual.width, by);
    EXPECT_NEAR(expected.y + expected.height, actual.y + actual.height, by);
}

void expect_everywhere(const Paper& paper, const Image& gray) {
    EXPECT_TRUE(paper.everywhere());
    expect_near(Rect(0, 0, gray.cols, gray.rows), bounds_of(paper.outline), 0);
    EXPECT_TRUE(paper.holds(Rect(0, 0, 1, 1), gray));
}

}  // namespace

TEST(paper, a_sheet_is_found_on_a_dark_desk_and_on_a_light_one) {
    for (const auto& [desk, sheet] : {std::pair{60, 220}, std::pair{235, 190}}) {
        const Image gray = sheet_on(desk, sheet);
        const Paper paper = docprep::find_paper(gray, letters_in(kSheet), kTextHeight);
        ASSERT_FALSE(paper.everywhere()) << desk;
        expect_near(kSheet, bounds_of(paper.outline), 14);
        EXPECT_TRUE(paper.holds(Rect(300, 300, 5, 5), gray));
        EXPECT_FALSE(paper.holds(Rect(20, 300, 5, 5), gray));
        EXPECT_FALSE(paper.holds(Rect(300, 570, 5, 5), gray));
    }
}

TEST(paper, the_sheet_holds_no_desk) {
    const Image gray = sheet_on(60, 220);
    const Paper paper = docprep::find_paper(gray, letters_in(kSheet), kTextHeight);
    ASSERT_FALSE(paper.everywhere());
    for (int y = 0; y < kRows; y += 3)
        for (int x = 0; x < kCols; x += 3) {
            const bool on_sheet =
                x >= kSheet.x && y >= kSheet.y && x < kSheet.x + kSheet.width && y < kSheet.y + kSheet.height;
            ASSERT_TRUE(on_sheet || !paper.holds(Rect(x, y, 1, 1), gray)) << x << ", " << y;
        }
}

TEST(paper, a_neighbouring_page_without_letters_is_none_of_it) {
    Image gray = sheet_on(60, 220);
    fill(gray, Rect(660, 60, 140, 470), 225);
    const Paper paper = docprep::find_paper(gray, letters_in(kSheet), kTextHeight);
    ASSERT_FALSE(paper.everywhere());
    EXPECT_FALSE(paper.holds(Rect(720, 300, 5, 5), gray));
}

TEST(paper, a_page_that_fills_the_picture_is_everywhere_or_nearly) {
    const Rect all(0, 0, kCols, kRows);
    Image gray = gray_picture(kRows, kCols, 220);
    print(gray, letters_in(all));
    const Paper paper = docprep::find_paper(gray, letters_in(all), kTextHeight);
    expect_near(all, bounds_of(paper.outline), 0);
}

TEST(paper, it_is_everywhere_where_letters_would_be_lost_otherwise) {
    // Half of the letters stand in boxes beside it, too few in each for its share.
    Image gray = sheet_on(60, 220);
    Rects letters = letters_in(kSheet);
    const int n = letters.size;
    for (int k = 0; k < n; ++k) {
        const Rect box(k % 2 == 0 ? 15 : 725, 10 + k / 2 % 6 * 100, 55, 55);
        fill(gray, box, 220);
        letters.push_back(Rect(box.x + 22, box.y + 20, 10, 14));
    }
    expect_everywhere(docprep::find_paper(gray, letters, kTextHeight), gray);
}

TEST(paper, it_is_everywhere_where_no_region_has_its_share_of_the_letters) {
    Image gray = gray_picture(kRows, kCols, 60);
    Rects letters;
    for (int k = 0; k < 40; ++k) {
        const Rect box(10 + k % 8 * 95, 20 + k / 8 * 110, 60, 60);
        fill(gray, box, 220);
        letters.push_back(Rect(box.x + 25, box.y + 23, 10, 14));
    }
    expect_everywhere(docprep::find_paper(gray, letters, kTextHeight), gray);
}

TEST(paper, a_notch_at_its_edge_is_filled) {
    Image gray = sheet_on(60, 220);
    const Rect seal(560, 250, 80, 80);
    fill(gray, seal, 120);
    Rects letters;
    const Rects all = letters_in(kSheet);
    for (int k = 0; k < all.size; ++k)
        if (all[k].x < 540) letters.push_back(all[k]);
    const Paper paper = docprep::find_paper(gray, letters, kTextHeight);
    ASSERT_FALSE(paper.everywhere());
    EXPECT_TRUE(paper.holds(Rect(595, 285, 10, 10), gray));
}

TEST(paper, a_picture_on_the_sheet_is_paper) {
    Image gray = sheet_on(60, 220);
    const Rect picture(300, 250, 150, 100);
    fill(gray, picture, 90);
    Rects letters;
    const Rects all = letters_in(kSheet);
    for (int k = 0; k < all.size; ++k)
        if (all[k].y + all[k].height < 250 || all[k].y > 350) letters.push_back(all[k]);
    const Paper paper = docprep::find_paper(gray, letters, kTextHeight);
    ASSERT_FALSE(paper.everywhere());
    EXPECT_TRUE(paper.holds(Rect(370, 300, 10, 10), gray));
}

TEST(paper, corners_of_the_outline_are_those_of_a_turned_sheet) {
    Image gray = gray_picture(kRows, kCols, 60);
    const double c = std::cos(0.1), s = std::sin(0.1);
    const auto turned = [&](double x, double y) {
        return docprep::Place{400 + c * (x - 400) - s * (y - 300), 300 + s * (x - 400) + c * (y - 300)};
    };
    shade(gray, [&](int x, int y) {
        const double along = c * (x - 400) + s * (y - 300), across = -s * (x - 400) + c * (y - 300);
        return std::fabs(along) < 260 && std::fabs(across) < 200 ? 220 : 60;
    });
    Rects letters;
    for (int line = 0; line < 8; ++line)
        for (int k = 0; k < 30; ++k) {
            const docprep::Place place = turned(190 + 14 * k, 140 + 40 * line);
            letters.push_back(Rect(static_cast<int>(place.x), static_cast<int>(place.y), 10, 14));
        }
    print(gray, letters);
    const Paper paper = docprep::find_paper(gray, letters, kTextHeight);
    ASSERT_FALSE(paper.everywhere());
    for (const auto& [x, y] :
         {std::pair{140, 100}, std::pair{660, 100}, std::pair{660, 500}, std::pair{140, 500}}) {
        const docprep::Place corner = turned(x, y);
        double nearest = HUGE_VAL;
        for (int k = 0; k < paper.outline.size; ++k)
            nearest =
                std::min(nearest, std::hypot(paper.outline[k].x - corner.x, paper.outline[k].y - corner.y));
        EXPECT_LT(nearest, 22) << x << ", " << y;
    }
}

TEST(paper, without_letters_it_is_everywhere) {
    const Image gray = sheet_on(60, 220);
    expect_everywhere(docprep::find_paper(gray, Rects(), kTextHeight), gray);
    expect_everywhere(docprep::find_paper(gray, letters_in(kSheet), 0), gray);
}

TEST(paper, small_pictures_and_huge_letters_are_searched_without_harm) {
    for (const auto& [rows, cols] : {std::pair{1, 1}, std::pair{1, 60}, std::pair{60, 1}, std::pair{20, 30}})
        for (const int text_height : {1, 14, 5000, 1 << 24}) {
            const Image gray = gray_picture(rows, cols, 200);
            const Paper paper =
                docprep::find_paper(gray, rects_of({Rect(0, 0, 1, 1), Rect(0, 0, cols, rows)}), text_height);
            ASSERT_GT(paper.outline.size, 0);
            const Rect bounds = bounds_of(paper.outline);
            EXPECT_GE(bounds.x, 0);
            EXPECT_GE(bounds.y, 0);
            EXPECT_LE(bounds.x + bounds.width, cols);
            EXPECT_LE(bounds.y + bounds.height, rows);
        }
}

TEST(paper, on_the_page_it_is_clipped) {
    Paper paper;
    for (const auto& [x, y] :
         {std::pair{50, 40}, std::pair{700, 60}, std::pair{690, 560}, std::pair{40, 550}})
        paper.outline.push_back({x, y});
    Deskew level;
    level.cols = kCols;
    level.rows = kRows;
    expect_near(Rect(40, 40, 661, 521), docprep::paper_on_page(paper, level), 0);
    const Deskew part = docprep::cropped(level, Rect(100, 100, 300, 200));
    expect_near(Rect(0, 0, 300, 200), docprep::paper_on_page(paper, part), 0);
    // Paper beside the page leaves a pixel of it.
    const Rect beside = docprep::paper_on_page(paper, docprep::cropped(level, Rect(750, 580, 50, 20)));
    expect_near(Rect(0, 0, 1, 1), beside, 0);
}

TEST(paper, on_a_turned_page_it_covers_all_of_its_corners) {
    const Image gray = gray_picture(kRows, kCols, 0);
    Paper paper;
    for (const auto& [x, y] :
         {std::pair{50, 40}, std::pair{700, 60}, std::pair{690, 560}, std::pair{40, 550}})
        paper.outline.push_back({x, y});
    const Deskew turned = docprep::plan_deskew(gray, 7);
    const Rect rect = docprep::paper_on_page(paper, turned);
    for (int k = 0; k < paper.outline.size; ++k) {
        const docprep::Place place = turned.to_page({double(paper.outline[k].x), double(paper.outline[k].y)});
        EXPECT_GE(place.x, rect.x);
        EXPECT_GE(place.y, rect.y);
        EXPECT_LE(place.x, rect.x + rect.width - 1);
        EXPECT_LE(place.y, rect.y + rect.height - 1);
    }
}
