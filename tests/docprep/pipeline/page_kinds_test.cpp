#include <gtest/gtest.h>

#include <algorithm>

#include "drawn.h"
#include "pipeline/page.h"

using docprep::Binarisation;
using docprep::Deskew;
using docprep::Image;
using docprep::Page;
using docprep::PageKind;
using docprep::Paper;
using docprep::Rects;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 260;
constexpr int kCols = 340;
constexpr int kTextHeight = 14;
constexpr int kPaperLevel = 210;
constexpr int kInkLevel = 50;

/// A photograph with lines of letters, and what was found on it.
struct Scene {
    Image gray = gray_picture(kRows, kCols, kPaperLevel);
    Image clean;
    Image binary = gray_picture(kRows, kCols, 0);
    Binarisation how;
    Deskew deskew;
    Paper paper;
    Rects letters;

    Scene() {
        for (int line = 0; line < 5; ++line)
            append(letters, letters_of_line(50, 17, [&](double) { return 70 + 36 * line; }));
        for (int k = 0; k < letters.size; ++k) {
            fill(gray, Rect(letters[k].x, letters[k].y, 3, letters[k].height), kInkLevel);
            fill(gray, Rect(letters[k].x, letters[k].y, letters[k].width, 3), kInkLevel);
        }
        how.threshold = 128;
        docprep::binarise(gray, how, binary);
        deskew = docprep::plan_deskew(gray, 0);
    }

    Page page(PageKind kind, int text_height = kTextHeight) const {
        return docprep::make_page({gray, clean, binary, how, deskew, paper, letters, text_height}, kind);
    }
};

constexpr PageKind kKinds[] = {PageKind::kSoft, PageKind::kBinary, PageKind::kGray};

/// What make_page takes for print, by the photograph's own levels.
void expect_print_of(const Image& gray, const Image& print) {
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kCols; ++x)
            ASSERT_EQ(pixel(gray, x, y) == kInkLevel ? 255 : 0, pixel(print, x, y)) << x << ", " << y;
}

}  // namespace

TEST(page_kinds, names_go_by_their_values) {
    const std::vector<std::string> names = docprep::page_kind_names();
    EXPECT_EQ("soft", names[static_cast<size_t>(PageKind::kSoft)]);
    EXPECT_EQ("binary", names[static_cast<size_t>(PageKind::kBinary)]);
    EXPECT_EQ("gray", names[static_cast<size_t>(PageKind::kGray)]);
}

TEST(page_kinds, every_kind_has_the_same_print) {
    const Scene scene;
    for (const PageKind kind : kKinds) expect_print_of(scene.gray, scene.page(kind).print);
}

TEST(page_kinds, a_soft_page_is_black_on_white) {
    const Scene scene;
    const Page page = scene.page(PageKind::kSoft);
    for (int i = 0; i < kRows * kCols; ++i)
        ASSERT_EQ(scene.gray.data[i] == kInkLevel ? 0 : 255, page.picture.data[i]);
    EXPECT_NEAR(kInkLevel * 255 / kPaperLevel, page.ink.level, 3);
}

TEST(page_kinds, a_binary_page_has_two_levels) {
    const Scene scene;
    const Page page = scene.page(PageKind::kBinary);
    for (int i = 0; i < kRows * kCols; ++i) ASSERT_EQ(255 - scene.binary.data[i], page.picture.data[i]);
}

TEST(page_kinds, a_gray_page_is_as_photographed) {
    const Scene scene;
    const Page page = scene.page(PageKind::kGray);
    EXPECT_TRUE(std::equal(page.picture.data, page.picture.data + kRows * kCols, scene.gray.data));
}

TEST(page_kinds, beyond_the_photograph_a_page_is_white_and_touched_by_print) {
    Scene scene;
    scene.deskew = docprep::plan_deskew(scene.gray, 8);
    Image inside;
    docprep::deskewed(scene.gray, scene.deskew, inside);
    for (const PageKind kind : kKinds) {
        const Page page = scene.page(kind);
        ASSERT_EQ(scene.deskew.rows, page.picture.rows);
        ASSERT_EQ(scene.deskew.cols, page.picture.cols);
        for (int i = 0; i < page.picture.rows * page.picture.cols; ++i) {
            if (inside.data[i] != 0) continue;
            ASSERT_EQ(255, page.picture.data[i]);
            ASSERT_EQ(255, page.print.data[i]);
        }
    }
}

TEST(page_kinds, what_is_not_paper_is_white_and_no_print) {
    Scene scene;
    fill(scene.gray, Rect(0, 0, 30, kRows), 20);
    docprep::binarise(scene.gray, scene.how, scene.binary);
    scene.paper.mask = gray_picture(kRows, kCols, 255);
    fill(scene.paper.mask, Rect(0, 0, 32, kRows), 0);
    for (const PageKind kind : kKinds) {
        const Page page = scene.page(kind);
        for (int y = 0; y < kRows; ++y)
            for (int x = 0; x < 30; ++x) {
                ASSERT_EQ(255, pixel(page.picture, x, y));
                ASSERT_EQ(0, pixel(page.print, x, y));
            }
    }
}

TEST(page_kinds, marks_that_lead_from_the_edge_are_white_and_no_print) {
    Scene scene;
    fill(scene.gray, Rect(0, 100, 20, 3), 20);
    docprep::binarise(scene.gray, scene.how, scene.binary);
    for (const PageKind kind : kKinds) {
        const Page page = scene.page(kind);
        EXPECT_EQ(255, pixel(page.picture, 10, 101));
        EXPECT_EQ(0, pixel(page.print, 10, 101));
    }
}

TEST(page_kinds, a_page_shows_what_is_below_its_seals_unless_it_is_as_photographed) {
    Scene scene;
    const Image without = scene.gray;
    fill(scene.gray, Rect(130, 96, 30, 6), 100);
    docprep::binarise(scene.gray, scene.how, scene.binary);
    scene.clean = without;
    for (const PageKind kind : kKinds) {
        const Page page = scene.page(kind);
        expect_print_of(without, page.print);
        EXPECT_EQ(kind == PageKind::kGray ? 100 : 255, pixel(page.picture, 140, 99));
    }
}

TEST(page_kinds, a_page_without_text_and_the_smallest_ones_are_made) {
    for (const auto& [rows, cols] : {std::pair{1, 1}, std::pair{1, 70}, std::pair{70, 1}, std::pair{50, 60}})
        for (const PageKind kind : kKinds)
            for (const int text_height : {0, 14, 5000}) {
                Scene blank;
                blank.gray = gray_picture(rows, cols, kPaperLevel);
                blank.binary = gray_picture(rows, cols, 0);
                blank.deskew = docprep::plan_deskew(blank.gray, 0);
                blank.letters = Rects();
                const Page page = blank.page(kind, text_height);
                ASSERT_EQ(rows, page.picture.rows);
                ASSERT_EQ(cols, page.picture.cols);
                for (int i = 0; i < rows * cols; ++i) {
                    ASSERT_EQ(kind == PageKind::kGray ? kPaperLevel : 255, page.picture.data[i]);
                    ASSERT_EQ(0, page.print.data[i]);
                }
            }
}

TEST(page_kinds, the_resolution_follows_the_text_within_bounds) {
    EXPECT_EQ(70, docprep::dots_per_inch(0));
    EXPECT_EQ(70, docprep::dots_per_inch(11));
    EXPECT_EQ(120, docprep::dots_per_inch(20));
    EXPECT_EQ(200, docprep::dots_per_inch(34));
    EXPECT_EQ(200, docprep::dots_per_inch(1 << 24));
}
