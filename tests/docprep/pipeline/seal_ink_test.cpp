#include "pipeline/seal_ink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "cv_imgproc.h"
#include "drawn.h"

using docprep::Image;
using docprep::Points;
using docprep::Seal;
using docprep::Seals;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;

namespace {

constexpr int kRows = 200;
constexpr int kCols = 240;
const Rect kSeal(60, 50, 100, 90);

using Bgr = std::array<unsigned char, 3>;

struct Stamped {
    Image photo;
    Image gray;
    Seals seals;
    Image mask;

    Image clean() const { return docprep::without_seals(photo, gray, seals, mask); }
};

bool in_ink(int x, int y) {
    return x >= 60 && x < 160 && y >= 50 && y < 140 && x % 20 < 4;
}

bool in_print(int y) {
    return y % 25 >= 10 && y % 25 < 14;
}

/// Black lines of print, and red strokes of a seal across them, through which print is black.
Stamped stamped(const Bgr& paper, const Bgr& ink) {
    Stamped scene;
    scene.photo.mat_create(kRows, kCols, 3, 0);
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kCols; ++x) {
            const Bgr black = {30, 30, 32};
            const Bgr& colour = in_print(y) ? black : in_ink(x, y) ? ink : paper;
            std::copy(colour.begin(), colour.end(), scene.photo.data + 3 * (y * kCols + x));
        }
    CImgproc::bgr2gray(scene.photo, scene.gray);
    Seal seal;
    seal.rect = kSeal;
    for (const Point& corner : {Point(60, 50), Point(159, 50), Point(159, 139), Point(60, 139)})
        seal.outline.push_back(corner);
    scene.seals.seals.push_back(seal);
    scene.mask = docprep::mask_of(scene.seals.seals, kRows, kCols);
    return scene;
}

void expect_clean(const Stamped& scene) {
    const Image clean = scene.clean();
    const int paper = pixel(scene.gray, 5, 5);
    for (int y = 0; y < kRows; ++y)
        for (int x = 0; x < kCols; ++x) {
            const int expected = in_print(y) ? pixel(scene.gray, x, y) : paper;
            ASSERT_NEAR(expected, pixel(clean, x, y), 5) << x << ", " << y;
        }
}

}  // namespace

TEST(seal_ink, red_becomes_paper_and_black_print_stays) {
    expect_clean(stamped({240, 240, 240}, {60, 60, 200}));
}

TEST(seal_ink, warm_and_dim_light_change_nothing_of_that) {
    expect_clean(stamped({190, 205, 225}, {60, 60, 190}));
    expect_clean(stamped({110, 112, 115}, {40, 40, 100}));
}

TEST(seal_ink, pale_ink_is_lifted_by_less) {
    Stamped scene = stamped({240, 240, 240}, {60, 60, 200});
    // A stroke's edge: half ink, half paper.
    for (int k = 0; k < 3; ++k) {
        const auto half = static_cast<unsigned char>((scene.photo.data[k] + (k == 2 ? 200 : 60)) / 2);
        scene.photo.data[3 * (75 * kCols + 90) + k] = half;
    }
    CImgproc::bgr2gray(scene.photo, scene.gray);
    EXPECT_LT(pixel(scene.gray, 90, 75), 200);
    EXPECT_NEAR(pixel(scene.gray, 5, 5), pixel(scene.clean(), 90, 75), 4);
}

TEST(seal_ink, red_elsewhere_stays) {
    Stamped scene = stamped({240, 240, 240}, {60, 60, 200});
    for (int x = 10; x < 40; ++x)
        for (int k = 0; k < 3; ++k) scene.photo.data[3 * (80 * kCols + x) + k] = k == 2 ? 200 : 60;
    CImgproc::bgr2gray(scene.photo, scene.gray);
    const Image clean = scene.clean();
    for (int x = 10; x < 40; ++x) EXPECT_EQ(pixel(scene.gray, x, 80), pixel(clean, x, 80));
}

TEST(seal_ink, without_seals_nothing_changes) {
    Stamped scene = stamped({240, 240, 240}, {60, 60, 200});
    scene.seals.seals.clear();
    scene.mask = gray_picture(kRows, kCols, 0);
    const Image clean = scene.clean();
    EXPECT_TRUE(std::equal(clean.data, clean.data + kRows * kCols, scene.gray.data));
}

TEST(seal_ink, a_seal_without_red_changes_nothing) {
    const Stamped scene = stamped({240, 240, 240}, {60, 60, 64});
    const Image clean = scene.clean();
    EXPECT_TRUE(std::equal(clean.data, clean.data + kRows * kCols, scene.gray.data));
}

TEST(seal_ink, paper_of_pure_colours_is_measured) {
    // As little red as pixels can have, of which the measured range goes no further down.
    for (const Bgr& paper : {Bgr{255, 0, 0}, Bgr{255, 255, 0}, Bgr{0, 254, 0}}) {
        const Stamped scene = stamped(paper, {60, 60, 200});
        const Image clean = scene.clean();
        for (int y = 0; y < kRows; ++y)
            for (int x = 0; x < kCols; ++x)
                ASSERT_TRUE(in_ink(x, y) || in_print(y) || pixel(scene.gray, x, y) == pixel(clean, x, y));
    }
}

TEST(seal_ink, seals_that_fill_a_small_picture_are_taken_off) {
    for (const auto& [rows, cols] :
         {std::pair{1, 1}, std::pair{2, 2}, std::pair{4, 4}, std::pair{1, 50}, std::pair{50, 1}}) {
        Stamped scene;
        scene.photo.mat_create(rows, cols, 3, 240);
        scene.photo.data[0] = scene.photo.data[1] = 40;
        CImgproc::bgr2gray(scene.photo, scene.gray);
        Seal seal;
        seal.rect = Rect(0, 0, cols, rows);
        seal.outline.push_back(Point(0, 0));
        seal.outline.push_back(Point(cols - 1, rows - 1));
        scene.seals.seals.push_back(seal);
        scene.mask = docprep::mask_of(scene.seals.seals, rows, cols);
        const Image clean = scene.clean();
        ASSERT_EQ(rows, clean.rows);
        ASSERT_EQ(cols, clean.cols);
        for (int i = 0; i < rows * cols; ++i) EXPECT_GE(clean.data[i], scene.gray.data[i]);
    }
}
