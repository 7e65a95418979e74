#include "pipeline/binarise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using docprep::Binarisation;
using docprep::BinariseMethod;
using docprep::Image;

namespace {

Image row_of(const std::vector<int>& levels) {
    Image gray;
    gray.mat_create(1, static_cast<int>(levels.size()), 1, 0);
    std::copy(levels.begin(), levels.end(), gray.data);
    return gray;
}

/// What becomes of one row of grey levels by Otsu's threshold.
std::vector<int> binary_of(const std::vector<int>& levels, int& threshold) {
    const Image gray = row_of(levels);
    const Binarisation how = docprep::measure_for(BinariseMethod::kOtsu, gray);
    threshold = how.threshold;
    Image binary;
    docprep::binarise(gray, how, binary);
    return {binary.data, binary.data + levels.size()};
}

Image adaptive(const Image& gray) {
    Image binary;
    docprep::binarise(gray, docprep::measure_for(BinariseMethod::kAdaptive, gray), binary);
    return binary;
}

/// Paper that gets darker from 250 on the left to 100 on the right, with strokes half as bright.
constexpr int kRows = 90;
constexpr int kCols = 360;

bool on_stroke(int row, int col) {
    return row % 18 >= 9 && row % 18 < 12 && col % 30 >= 10 && col % 30 < 25;
}

Image shaded_page() {
    Image gray;
    gray.mat_create(kRows, kCols, 1, 0);
    for (int row = 0; row < kRows; ++row)
        for (int col = 0; col < kCols; ++col) {
            const int paper = 250 - col * 150 / kCols;
            gray.data[row * kCols + col] =
                static_cast<unsigned char>(on_stroke(row, col) ? paper / 2 : paper);
        }
    return gray;
}

int wrong_pixels(const Image& binary) {
    int wrong = 0;
    for (int row = 0; row < kRows; ++row)
        for (int col = 0; col < kCols; ++col)
            wrong += (binary.data[row * kCols + col] == 255) != on_stroke(row, col);
    return wrong;
}

}  // namespace

TEST(binarise, dark_becomes_white_and_bright_black) {
    int threshold = 0;
    EXPECT_EQ((std::vector<int>{255, 0, 255, 0, 0}), binary_of({20, 200, 25, 210, 200}, threshold));
    EXPECT_EQ(25, threshold);
}

TEST(binarise, the_threshold_itself_is_dark) {
    int threshold = 0;
    EXPECT_EQ((std::vector<int>{255, 0, 0, 0}), binary_of({0, 255, 255, 255}, threshold));
    EXPECT_EQ(0, threshold);
}

TEST(binarise, white_alone_stays_background) {
    int threshold = 0;
    EXPECT_EQ((std::vector<int>{0, 0, 0}), binary_of({255, 255, 255}, threshold));
}

TEST(binarise, what_was_measured_on_one_picture_applies_to_another) {
    const Binarisation how = docprep::measure_for(BinariseMethod::kOtsu, row_of({20, 200, 25, 210, 200}));
    Image binary;
    docprep::binarise(row_of({25, 26, 0, 255}), how, binary);
    EXPECT_EQ((std::vector<int>{255, 0, 255, 0}), std::vector<int>(binary.data, binary.data + 4));
}

TEST(binarise, print_in_a_deep_shadow_is_found_by_its_surroundings_and_lost_by_one_threshold) {
    const Image gray = shaded_page();
    EXPECT_EQ(0, wrong_pixels(adaptive(gray)));
    Image binary;
    docprep::binarise(gray, docprep::measure_for(BinariseMethod::kOtsu, gray), binary);
    EXPECT_GT(wrong_pixels(binary), kRows * kCols / 20);
}

TEST(binarise, surroundings_are_odd_grow_with_the_page_and_hold_a_small_letter) {
    const auto block_of = [](int rows, int cols) {
        Image gray;
        gray.mat_create(rows, cols, 1, 200);
        return docprep::measure_for(BinariseMethod::kAdaptive, gray).block;
    };
    EXPECT_EQ(31, block_of(5, 7));
    EXPECT_EQ(81, block_of(1200, 1600));
    EXPECT_EQ(81, block_of(1600, 1215));
}

TEST(binarise, blank_paper_and_its_noise_stay_background_by_surroundings) {
    for (const int noise : {0, 1, 9}) {
        Image gray;
        gray.mat_create(40, 50, 1, 200);
        for (int i = 0; i < 40 * 50; ++i)
            gray.data[i] = static_cast<unsigned char>(gray.data[i] - i * 7 % (noise + 1));
        const Image binary = adaptive(gray);
        EXPECT_EQ(0, std::count(binary.data, binary.data + 40 * 50, 255)) << noise;
    }
}
