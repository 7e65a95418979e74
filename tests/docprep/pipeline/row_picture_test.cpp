#include "pipeline/row_picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <set>

using docprep::Colour;
using docprep::Image;
using docprep::Rects;
using docprep::TextRow;
using docprep::TextRows;
using orvex_cv_991::Rect;

namespace {

Image white(int rows, int cols, int channels) {
    Image image;
    image.mat_create(rows, cols, channels, 255);
    return image;
}

TextRows one_row(const Rect& rect) {
    TextRow row;
    row.components.push_back(rect);
    return {row};
}

/// The picture as text: '#' where it is not white.
std::string marks(const Image& image) {
    std::string text;
    for (int row = 0; row < image.rows; ++row) {
        for (int col = 0; col < image.cols; ++col) {
            const unsigned char* pixel = image.data + (row * image.cols + col) * 3;
            text += pixel[0] == 255 && pixel[1] == 255 && pixel[2] == 255 ? '.' : '#';
        }
        text += '\n';
    }
    return text;
}

double distance(const Colour& a, const Colour& b) {
    double sum = 0;
    for (int k = 0; k < 3; ++k) sum += (a.bgr[k] - b.bgr[k]) * (a.bgr[k] - b.bgr[k]);
    return std::sqrt(sum);
}

}  // namespace

TEST(row_picture, outlines_lie_outside_the_rectangle) {
    EXPECT_EQ(
        "......\n"
        ".####.\n"
        ".#..#.\n"
        ".####.\n"
        "......\n",
        marks(docprep::draw_rows(white(5, 6, 3), one_row(Rect(2, 2, 2, 1)))));
}

TEST(row_picture, outlines_end_at_the_picture) {
    EXPECT_EQ(
        "..#\n"
        "..#\n"
        "###\n",
        marks(docprep::draw_rows(white(3, 3, 3), one_row(Rect(0, 0, 2, 2)))));
}

TEST(row_picture, lines_are_thicker_on_larger_pictures) {
    const TextRows rows = one_row(Rect(50, 50, 5, 5));
    const auto left_of_rectangle = [&](int extent) {
        const Image picture = docprep::draw_rows(white(extent, extent, 3), rows);
        int thickness = 0;
        while (picture.data[(52 * extent + 49 - thickness) * 3 + 1] != 255) ++thickness;
        return thickness;
    };
    EXPECT_EQ(1, left_of_rectangle(100));
    EXPECT_EQ(3, left_of_rectangle(1400));
}

TEST(row_picture, gray_photos_get_coloured_lines) {
    const Image picture = docprep::draw_rows(white(5, 6, 1), one_row(Rect(2, 2, 2, 1)));
    ASSERT_EQ(3, picture.channels);
    const Colour colour = docprep::row_colour(0);
    EXPECT_EQ(0, std::memcmp(colour.bgr, picture.data + (1 * 6 + 1) * 3, 3));
    EXPECT_EQ(255, picture.data[0]);
}

TEST(row_picture, each_row_has_its_own_colour) {
    TextRows rows = one_row(Rect(2, 2, 2, 1));
    rows.push_back(one_row(Rect(2, 7, 2, 1))[0]);
    const Image picture = docprep::draw_rows(white(12, 6, 3), rows);
    for (int row = 0; row < 2; ++row)
        EXPECT_EQ(0,
                  std::memcmp(docprep::row_colour(row).bgr, picture.data + ((1 + 5 * row) * 6 + 1) * 3, 3));
}

TEST(row_picture, colours_of_neighbouring_rows_differ_much_and_none_repeats) {
    std::set<std::string> seen;
    for (int row = 0; row < 150; ++row) {
        const Colour colour = docprep::row_colour(row);
        EXPECT_GT(distance(colour, docprep::row_colour(row + 1)), 120) << "row " << row;
        EXPECT_GT(distance(colour, docprep::row_colour(row + 2)), 80) << "row " << row;
        EXPECT_GT(distance(colour, Colour{{255, 255, 255}}), 150) << "row " << row;
        EXPECT_TRUE(seen.insert(std::string(colour.bgr, colour.bgr + 3)).second) << "row " << row;
    }
}
