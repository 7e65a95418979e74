#include "pipeline/seal_picture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using docprep::Image;

namespace {

Image photo_of(int rows, int cols, int b, int g, int r) {
    Image photo;
    photo.mat_create(rows, cols, 3, 0);
    for (int i = 0; i < rows * cols; ++i) {
        photo.data[3 * i] = static_cast<unsigned char>(b);
        photo.data[3 * i + 1] = static_cast<unsigned char>(g);
        photo.data[3 * i + 2] = static_cast<unsigned char>(r);
    }
    return photo;
}

/// A mask with one rectangle.
Image mask_with(int rows, int cols, int left, int top, int width, int height) {
    Image mask;
    mask.mat_create(rows, cols, 1, 0);
    for (int row = top; row < top + height; ++row) std::memset(mask.data + row * cols + left, 255, width);
    return mask;
}

/// The picture as text: '#' the outline, 'o' another colour, '.' grey.
std::string kinds(const Image& picture) {
    std::string text;
    for (int row = 0; row < picture.rows; ++row) {
        for (int col = 0; col < picture.cols; ++col) {
            const unsigned char* const pixel = picture.data + (row * picture.cols + col) * 3;
            const bool gray = pixel[0] == pixel[1] && pixel[1] == pixel[2];
            const bool outline = std::memcmp(pixel, docprep::kSealOutline.bgr, 3) == 0;
            text += outline ? '#' : gray ? '.' : 'o';
        }
        text += '\n';
    }
    return text;
}

}  // namespace

TEST(seal_picture, seals_are_outlined_and_the_rest_is_gray) {
    EXPECT_EQ(
        ".......\n"
        ".#####.\n"
        ".#ooo#.\n"
        ".#####.\n"
        ".......\n",
        kinds(docprep::draw_seals(photo_of(5, 7, 50, 60, 200), mask_with(5, 7, 2, 2, 3, 1))));
}

TEST(seal_picture, outlines_end_at_the_picture) {
    EXPECT_EQ(
        "oo#\n"
        "oo#\n"
        "###\n",
        kinds(docprep::draw_seals(photo_of(3, 3, 50, 60, 200), mask_with(3, 3, 0, 0, 2, 2))));
}

TEST(seal_picture, ink_keeps_its_red_and_paper_turns_yellow) {
    const Image picture = docprep::draw_seals(photo_of(5, 7, 240, 245, 250), mask_with(5, 7, 2, 2, 3, 1));
    const unsigned char* const inside = picture.data + (2 * 7 + 3) * 3;
    EXPECT_EQ(120, inside[0]);
    EXPECT_EQ(245, inside[1]);
    EXPECT_EQ(250, inside[2]);
}

TEST(seal_picture, what_lies_outside_is_pale) {
    for (const int level : {0, 100, 255}) {
        const Image picture =
            docprep::draw_seals(photo_of(5, 7, level, level, level), mask_with(5, 7, 2, 2, 3, 1));
        EXPECT_EQ(128 + level / 2, picture.data[0]);
    }
}

TEST(seal_picture, lines_are_thicker_on_larger_pictures) {
    const auto left_of_seal = [](int extent) {
        const std::string text = kinds(docprep::draw_seals(photo_of(extent, extent, 50, 60, 200),
                                                           mask_with(extent, extent, 50, 50, 5, 5)));
        const size_t seal = text.find('o');
        size_t thickness = 0;
        while (text[seal - 1 - thickness] == '#') ++thickness;
        return thickness;
    };
    EXPECT_EQ(1u, left_of_seal(100));
    EXPECT_EQ(3u, left_of_seal(1400));
}
