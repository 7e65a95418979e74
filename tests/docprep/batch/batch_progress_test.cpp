#include "batch/batch_progress.h"

#include <gtest/gtest.h>

using docprep::BatchCounts;
using docprep::ProgressLines;

namespace {

BatchCounts counts(int64_t total, int64_t done, int64_t refused = 0, int64_t failed = 0,
                   int64_t skipped = 0) {
    return {total, done, refused, failed, skipped};
}

}  // namespace

TEST(batch_progress, a_line_says_how_far_how_fast_and_how_long) {
    EXPECT_EQ("120 of 500, 8.0/s, 0:48 left", progress_line(counts(500, 120), 15));
    EXPECT_EQ("118 of 500, 7.9/s, 0:49 left, 1 refused, 3 failed", progress_line(counts(500, 114, 1, 3), 15));
    EXPECT_EQ("1 of 50001, 0.1/s, 99:59:59 left", progress_line(counts(50001, 1), 10));
    EXPECT_EQ("2 of 20002, 0.5/s, 11:06:40 left", progress_line(counts(20002, 2), 4));
}

TEST(batch_progress, skipped_photographs_count_as_progress_but_not_as_speed) {
    EXPECT_EQ("400 of 500", progress_line(counts(500, 0, 0, 0, 400), 3));
    EXPECT_EQ("450 of 500, 5.0/s, 0:10 left", progress_line(counts(500, 50, 0, 0, 400), 10));
}

TEST(batch_progress, nothing_is_left_at_the_end_nor_known_at_the_start) {
    EXPECT_EQ("4 of 4, 2.0/s", progress_line(counts(4, 4), 2));
    EXPECT_EQ("0 of 4", progress_line(counts(4, 0), 2));
    EXPECT_EQ("0 of 0", progress_line(counts(0, 0), 0));
}

TEST(batch_progress, a_bar_fills_and_fits_the_terminal) {
    EXPECT_EQ("[                    ] 0 of 4", progress_bar(counts(4, 0), 1, 79));
    EXPECT_EQ("[##########          ] 2 of 4, 2.0/s, 0:01 left", progress_bar(counts(4, 2), 1, 79));
    EXPECT_EQ("[####################] 0 of 0", progress_bar(counts(0, 0), 1, 79));
    EXPECT_EQ("[######", progress_bar(counts(4, 4), 1, 7));
}

TEST(batch_progress, lines_are_due_at_tenths_but_not_in_a_row) {
    ProgressLines lines;
    EXPECT_FALSE(lines.due(counts(100, 50), 4.9));
    EXPECT_TRUE(lines.due(counts(100, 50), 5));
    EXPECT_FALSE(lines.due(counts(100, 59), 20)) << "the same tenth";
    EXPECT_TRUE(lines.due(counts(100, 60), 21));
    EXPECT_FALSE(lines.due(counts(100, 90), 25));
    EXPECT_TRUE(lines.due(counts(100, 90), 26));
}

TEST(batch_progress, lines_are_due_after_a_while_however_slow_it_is) {
    ProgressLines lines;
    EXPECT_FALSE(lines.due(counts(1000, 3), 29));
    EXPECT_TRUE(lines.due(counts(1000, 3), 30));
    EXPECT_FALSE(lines.due(counts(1000, 4), 59));
    EXPECT_TRUE(lines.due(counts(1000, 4), 60));
}
