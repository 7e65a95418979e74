#include "pipeline/turn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "drawn.h"

using docprep::Rects;
using docprep::TurnEvidence;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 900;
constexpr int kCols = 1000;

Rects page_of(int lines, int letters_a_line, double slope = 0) {
    Rects letters;
    for (int line = 0; line < lines; ++line)
        append(letters,
               letters_of_line(60, letters_a_line, [&](double x) { return 100 + 36.0 * line + slope * x; }));
    return letters;
}

/// What find_turn says of an upright page after so many clockwise quarter turns.
TurnEvidence evidence_after(int turns, Rects letters) {
    int rows = kRows, cols = kCols;
    for (int k = 0; k < turns; ++k) {
        letters = docprep::turned_clockwise(letters, rows);
        std::swap(rows, cols);
    }
    return docprep::find_turn(letters, rows, cols);
}

}  // namespace

TEST(turn, rectangles_turn_with_their_picture) {
    const Rect rect(3, 5, 10, 2);
    const Rects turned = docprep::turned_clockwise(rects_of({rect}), 20);
    ASSERT_EQ(1, turned.size());
    EXPECT_EQ(13, turned[0].x);  // below it lay 20 - 5 - 2 rows
    EXPECT_EQ(3, turned[0].y);
    EXPECT_EQ(2, turned[0].width);
    EXPECT_EQ(10, turned[0].height);
}

TEST(turn, four_quarter_turns_are_none) {
    Rects rects = rects_of({Rect(3, 5, 10, 2), Rect(0, 0, 30, 20), Rect(29, 19, 1, 1)});
    const Rects before = rects;
    for (const int rows : {20, 30, 20, 30}) rects = docprep::turned_clockwise(rects, rows);
    for (int k = 0; k < rects.size; ++k) {
        EXPECT_EQ(before[k].x, rects[k].x);
        EXPECT_EQ(before[k].y, rects[k].y);
        EXPECT_EQ(before[k].width, rects[k].width);
        EXPECT_EQ(before[k].height, rects[k].height);
    }
}

TEST(turn, a_page_is_brought_upright_however_it_lies) {
    for (const double slope : {0.0, 0.05, -0.12})
        for (const int turns : {0, 1, 2, 3}) {
            const TurnEvidence evidence = evidence_after(turns, page_of(15, 60, slope));
            EXPECT_TRUE(evidence.sure);
            EXPECT_EQ((4 - turns) % 4 * 90, evidence.degrees) << turns << " turns, slope " << slope;
            EXPECT_GT(evidence.confidence(), 0.55);
            EXPECT_LE(evidence.confidence(), 1);
        }
}

TEST(turn, letters_agree_at_their_feet_more_often_than_at_their_heads) {
    const TurnEvidence evidence = evidence_after(0, page_of(15, 60));
    EXPECT_GT(evidence.level.feet, evidence.level.heads);
    EXPECT_GT(evidence.level.all(), evidence.sideways.all());
    const TurnEvidence reversed = evidence_after(2, page_of(15, 60));
    EXPECT_EQ(evidence.level.feet, reversed.level.heads);
    EXPECT_EQ(evidence.level.heads, reversed.level.feet);
}

TEST(turn, too_little_text_is_unsure_and_stays) {
    for (const int turns : {0, 1, 2, 3}) {
        const TurnEvidence evidence = evidence_after(turns, page_of(1, 20));
        EXPECT_FALSE(evidence.sure) << turns;
        EXPECT_EQ(0, evidence.degrees) << turns;
    }
}

TEST(turn, letters_of_one_height_do_not_turn_a_page_upside_down) {
    Rects letters;
    for (int line = 0; line < 15; ++line)
        for (int k = 0; k < 60; ++k) letters.push_back(Rect(60 + 14 * k, 100 + 36 * line, 10, 14));
    const TurnEvidence evidence = docprep::find_turn(letters, kRows, kCols);
    EXPECT_EQ(0, evidence.degrees);
    EXPECT_NEAR(0.5, evidence.confidence(), 1e-9);
}

TEST(turn, nothing_says_nothing) {
    for (const Rects& none : {Rects(), rects_of({Rect(0, 0, kCols, kRows)}), rects_of({Rect(5, 5, 1, 1)})}) {
        const TurnEvidence evidence = docprep::find_turn(none, kRows, kCols);
        EXPECT_FALSE(evidence.sure);
        EXPECT_EQ(0, evidence.degrees);
        EXPECT_EQ(0, evidence.confidence());
    }
    EXPECT_FALSE(docprep::find_turn(rects_of({Rect(0, 0, 1, 1)}), 1, 1).sure);
}
