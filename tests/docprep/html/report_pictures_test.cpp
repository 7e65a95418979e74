#include "html/report_pictures.h"

#include <gtest/gtest.h>

#include "drawn.h"
#include "run/library_log.h"

using docprep::Image;
using docprep::Picture;
using docprep::ReportPictures;

namespace {

docprep::Binarisation otsu(int threshold) {
    docprep::Binarisation how;
    how.threshold = threshold;
    return how;
}

docprep::Binarisation adaptive(int block) {
    docprep::Binarisation how;
    how.method = docprep::BinariseMethod::kAdaptive;
    how.block = block;
    return how;
}

}  // namespace

TEST(report_pictures, copies_are_small_and_know_what_they_are_copies_of) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    const docprep::Report report;
    ReportPictures pictures(report);
    pictures.take(Picture::kPage, gray_picture(1500, 3000, 7), 0);
    const ReportPictures::Copy* const copy = pictures.find(Picture::kPage);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(1000, copy->pixels.cols);
    EXPECT_EQ(500, copy->pixels.rows);
    EXPECT_EQ(3000, copy->cols);
    EXPECT_EQ(1500, copy->rows);
    EXPECT_EQ(7, pixel(copy->pixels, 999, 499));
    pictures.take(Picture::kRows, gray_picture(30, 40, 7), 0);
    EXPECT_EQ(40, pictures.find(Picture::kRows)->pixels.cols) << "never enlarged";
    EXPECT_EQ(nullptr, pictures.find(Picture::kSeal));
}

TEST(report_pictures, levels_are_counted_where_a_threshold_was_found) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    docprep::Report report;
    ReportPictures pictures(report);
    pictures.take(Picture::kGray, gray_picture(3, 4, 9), 0);
    EXPECT_FALSE(pictures.levels());
    report.binarisation = otsu(100);
    pictures.take(Picture::kGray, gray_picture(3, 4, 9), 0);
    ASSERT_TRUE(pictures.levels());
    EXPECT_EQ(12, pictures.levels()->count(9));
}

TEST(report_pictures, by_otsu_levels_decide_and_else_the_distance_from_the_surroundings) {
    Image gray = gray_picture(90, 90, 200);
    gray.data[45 * 90 + 45] = 20;
    const docprep::Histogram levels = docprep::decisive_levels(gray, otsu(100));
    EXPECT_EQ(1, levels.count(20));
    EXPECT_EQ(90 * 90 - 1, levels.count(200));
    const docprep::Histogram distances = docprep::decisive_levels(gray, adaptive(31));
    EXPECT_EQ(1, distances.count(-180)) << "200 is the mean of its surroundings, rounded";
    EXPECT_EQ(90 * 90 - 1, distances.count(0));
}
