#include "pipeline/reduced.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "drawn.h"

using docprep::Image;
using docprep::odd_window;
using docprep::reduced;
using docprep::smoothed;

namespace {

Image picture_of(int rows, int cols, const std::vector<int>& levels) {
    Image picture = gray_picture(rows, cols, 0);
    std::copy(levels.begin(), levels.end(), picture.data);
    return picture;
}

std::vector<int> levels_of(const Image& picture) {
    return std::vector<int>(picture.data, picture.data + static_cast<ptrdiff_t>(picture.rows) * picture.cols);
}

double mean_of(const Image& picture) {
    double sum = 0;
    for (const int level : levels_of(picture)) sum += level;
    return sum / picture.rows / picture.cols;
}

Image noise(int rows, int cols) {
    std::mt19937 random(11);
    Image picture = gray_picture(rows, cols, 0);
    shade(picture, [&](int, int) { return static_cast<double>(random() % 256); });
    return picture;
}

}  // namespace

TEST(reduced, halving_takes_the_mean_of_four) {
    const Image half =
        reduced(picture_of(4, 4, {10, 20, 0, 0, 30, 40, 0, 200, 7, 7, 100, 100, 7, 7, 200, 200}), 0.5);
    EXPECT_EQ((std::vector<int>{25, 50, 7, 150}), levels_of(half));
    EXPECT_EQ(2, half.rows);
}

TEST(reduced, quarters_take_the_mean_of_sixteen) {
    Image picture = gray_picture(8, 8, 0);
    for (int k = 0; k < 64; ++k) picture.data[k] = static_cast<unsigned char>(k % 8 == 3 ? 160 : 0);
    EXPECT_EQ((std::vector<int>{40, 0, 40, 0}), levels_of(reduced(picture, 0.25)));
}

TEST(reduced, extents_are_rounded_and_1_at_least) {
    const auto extents = [](int rows, int cols, double scale) {
        const Image copy = reduced(gray_picture(rows, cols, 9), scale);
        return std::pair(copy.rows, copy.cols);
    };
    EXPECT_EQ(std::pair(3, 4), extents(5, 7, 0.5));
    EXPECT_EQ(std::pair(33, 67), extents(100, 200, 0.333));
    EXPECT_EQ(std::pair(1, 1), extents(1, 1, 0.5));
    EXPECT_EQ(std::pair(1, 1), extents(9, 9, 0.001));
    EXPECT_EQ(std::pair(1, 100), extents(1, 1000, 0.1));
    EXPECT_EQ(std::pair(100, 1), extents(1000, 1, 0.1));
}

TEST(reduced, a_scale_of_1_or_more_leaves_the_picture_as_it_is) {
    const Image picture = noise(7, 5);
    for (const double scale : {1.0, 1.01, 2.0, 1000.0}) {
        const Image copy = reduced(picture, scale);
        EXPECT_EQ(7, copy.rows);
        EXPECT_EQ(levels_of(picture), levels_of(copy));
    }
}

TEST(reduced, every_pixel_counts) {
    for (const double scale : {0.5, 0.3, 0.125, 0.05}) {
        // One of 8 columns is white: no copy may lose it, or show nothing else.
        Image stripes = gray_picture(320, 320, 0);
        shade(stripes, [](int x, int) { return x % 8 == 0 ? 240 : 0; });
        EXPECT_NEAR(30, mean_of(reduced(stripes, scale)), 4) << scale;
        EXPECT_NEAR(127, mean_of(reduced(noise(320, 320), scale)), 4) << scale;
    }
}

TEST(smoothed, pixels_become_the_mean_of_what_is_round_them_in_the_picture) {
    EXPECT_EQ((std::vector<int>{45, 30, 45}), levels_of(smoothed(picture_of(1, 3, {0, 90, 0}), 3)));
    EXPECT_EQ((std::vector<int>{45, 30, 45}), levels_of(smoothed(picture_of(3, 1, {0, 90, 0}), 3)));
    EXPECT_EQ((std::vector<int>{50, 50, 50, 50}), levels_of(smoothed(picture_of(2, 2, {0, 100, 100, 0}), 3)));
    const Image centre = smoothed(picture_of(3, 3, {0, 0, 0, 0, 180, 0, 0, 0, 0}), 3);
    EXPECT_EQ((std::vector<int>{45, 30, 45, 30, 20, 30, 45, 30, 45}), levels_of(centre));
}

TEST(smoothed, even_pictures_stay_even_up_to_their_edges) {
    for (const int level : {0, 1, 127, 255})
        for (const int extent : {1, 3, 9, 101})
            EXPECT_EQ(std::vector<int>(7 * 4, level), levels_of(smoothed(gray_picture(7, 4, level), extent)));
}

TEST(smoothed, an_extent_of_1_changes_nothing) {
    EXPECT_EQ(levels_of(noise(6, 9)), levels_of(smoothed(noise(6, 9), 1)));
    EXPECT_EQ(6, smoothed(noise(6, 9), 5).rows);
    EXPECT_EQ(9, smoothed(noise(6, 9), 5).cols);
}

TEST(odd_window, it_is_odd_and_fits_into_the_picture) {
    EXPECT_EQ(5, odd_window(4, gray_picture(10, 10, 0)));
    EXPECT_EQ(5, odd_window(5.4, gray_picture(10, 10, 0)));
    EXPECT_EQ(1, odd_window(0, gray_picture(10, 10, 0)));
    EXPECT_EQ(7, odd_window(100, gray_picture(10, 8, 0)));
    EXPECT_EQ(9, odd_window(100, gray_picture(9, 30, 0)));
    EXPECT_EQ(1, odd_window(100, gray_picture(2, 2, 0)));
    EXPECT_EQ(1, odd_window(100, gray_picture(1, 500, 0)));
}
