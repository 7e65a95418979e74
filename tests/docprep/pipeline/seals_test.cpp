#include "pipeline/seals.h"
#include "formats/photo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "cv_imgproc.h"
#include "pipeline/text_rows.h"
#include "util_exception.h"

using docprep::Image;
using docprep::Seals;
using orvex_cv_991::Rect;

namespace {

Image white(int rows, int cols) {
    Image image;
    image.mat_create(rows, cols, 3, 255);
    return image;
}

/// Paints red what lies up to `radius` from (x, y), and notes it in `truth`.
void stamp(Image& photo, Image& truth, int x, int y, int radius) {
    for (int row = 0; row < photo.rows; ++row) {
        for (int col = 0; col < photo.cols; ++col) {
            if ((row - y) * (row - y) + (col - x) * (col - x) > radius * radius) continue;
            const int i = row * photo.cols + col;
            photo.data[3 * i] = photo.data[3 * i + 1] = 40;
            truth.data[i] = 255;
        }
    }
}

struct Agreement {
    double both = 0, found = 0, there = 0;  // pixels

    double intersection_over_union() const { return both / (found + there - both); }
};

Agreement agreement(const Image& mask, const Image& truth) {
    EXPECT_EQ(truth.rows, mask.rows);
    EXPECT_EQ(truth.cols, mask.cols);
    Agreement pixels;
    const ptrdiff_t n = static_cast<ptrdiff_t>(truth.rows) * truth.cols;
    for (ptrdiff_t i = 0; i < n; ++i) {
        pixels.found += mask.data[i] != 0;
        pixels.there += truth.data[i] != 0;
        pixels.both += mask.data[i] != 0 && truth.data[i] != 0;
    }
    return pixels;
}

Rect bounds_of(const Image& mask) {
    int left = mask.cols, top = mask.rows, right = 0, bottom = 0;
    for (int row = 0; row < mask.rows; ++row) {
        for (int col = 0; col < mask.cols; ++col) {
            if (mask.data[row * mask.cols + col] == 0) continue;
            left = std::min(left, col);
            right = std::max(right, col + 1);
            top = std::min(top, row);
            bottom = std::max(bottom, row + 1);
        }
    }
    return Rect(left, top, right - left, bottom - top);
}

double intersection_over_union(const Rect& a, const Rect& b) {
    const int width = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    const int height = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    const double both = std::max(width, 0) * static_cast<double>(std::max(height, 0));
    return both / (a.width * static_cast<double>(a.height) + b.width * static_cast<double>(b.height) - both);
}

}  // namespace

TEST(seals, the_mask_covers_the_seals_that_are_there_and_little_else) {
    Image photo = white(900, 700);
    Image truth;
    truth.mat_create(900, 700, 1, 0);
    stamp(photo, truth, 200, 300, 70);
    stamp(photo, truth, 500, 650, 50);
    Image mask;
    const Seals seals = docprep::find_seals(photo, docprep::Paper(), mask);
    EXPECT_GT(agreement(mask, truth).intersection_over_union(), 0.95);
    ASSERT_EQ(2u, seals.seals.size());
    EXPECT_GT(intersection_over_union(Rect(130, 230, 141, 141), seals.seals[0].rect), 0.95);
    EXPECT_GT(intersection_over_union(Rect(450, 600, 101, 101), seals.seals[1].rect), 0.95);
    EXPECT_EQ(agreement(mask, mask).found, static_cast<double>(seals.pixels));
}

TEST(seals, the_seal_of_the_sample_is_found) {
    const std::string samples = DOCPREP_SAMPLES;
    const Image photo = docprep::read_photo(samples + "/page.jpg").pixels;
    const Image truth = docprep::read_photo(samples + "/page.seal.png").pixels;
    Image mask;
    const Seals seals = docprep::find_seals(photo, docprep::Paper(), mask);
    ASSERT_TRUE(seals.found());
    ASSERT_EQ(1u, seals.seals.size());
    EXPECT_GT(agreement(mask, truth).intersection_over_union(), 0.94);
    EXPECT_GT(intersection_over_union(bounds_of(truth), seals.seals[0].rect), 0.94);
    EXPECT_LT(seals.mark_pixels, seals.pixels);
}

TEST(seals, a_shade_that_is_only_redder_than_the_rest_is_no_seal) {
    Image photo, truth;
    photo.mat_create(300, 300, 3, 0);
    truth.mat_create(300, 300, 1, 0);
    for (int i = 0; i < 300 * 300; ++i) {
        const int row = i / 300 - 150, col = i % 300 - 150;
        const bool in_disc = row * row + col * col <= 40 * 40;
        const unsigned char paper[] = {200, 220, 230}, shade[] = {170, 205, 225};
        std::memcpy(photo.data + 3 * i, in_disc ? shade : paper, 3);
    }
    Image mask;
    orvex_cv_991::CImgproc::redColorDetect(photo, mask, false);
    ASSERT_GT(agreement(mask, mask).found, 4000) << "the detector marks it";
    const Seals seals = docprep::find_seals(photo, docprep::Paper(), mask);
    EXPECT_FALSE(seals.found());
    EXPECT_EQ(0, seals.pixels);
    EXPECT_TRUE(mask.empty());
}

TEST(seals, nothing_red_is_no_seal) {
    Image mask;
    const Seals seals = docprep::find_seals(white(300, 400), docprep::Paper(), mask);
    EXPECT_FALSE(seals.found());
    EXPECT_EQ(0, seals.pixels);
    EXPECT_EQ("", seals.reason);
}

TEST(seals, red_that_is_no_seal_is_no_seal) {
    Image photo = white(300, 400);
    for (int i = 0; i < 150 * 400; ++i) photo.data[3 * i] = photo.data[3 * i + 1] = 40;  // the upper half
    Image mask;
    const Seals seals = docprep::find_seals(photo, docprep::Paper(), mask);
    EXPECT_FALSE(seals.found());
    EXPECT_EQ("", seals.reason);
}

TEST(seals, gray_pictures_have_none) {
    Image gray, mask;
    gray.mat_create(300, 400, 1, 100);
    EXPECT_EQ("gray picture", docprep::find_seals(gray, docprep::Paper(), mask).reason);
}

TEST(seals, pictures_too_narrow_for_the_detector_have_none) {
    for (const auto& [rows, cols] :
         {std::pair{2, 2}, std::pair{4, 4000}, std::pair{4000, 4}, std::pair{401, 4}}) {
        Image photo = white(rows, cols);
        photo.data[0] = photo.data[1] = 40;
        Image mask;
        EXPECT_EQ("too narrow", docprep::find_seals(photo, docprep::Paper(), mask).reason)
            << rows << " x " << cols;
    }
}

TEST(seals, failures_of_the_search_stay_failures) {
    Image photo = white(300, 400);
    photo.rows = 1 << 20;  // more than it holds
    photo.cols = 1 << 14;
    Image mask;
    EXPECT_THROW(docprep::find_seals(photo, docprep::Paper(), mask), orvex_991::CException);
    photo.rows = 300;
    photo.cols = 400;
}
