#include "base/orientation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using docprep::Image;

namespace {

/// A picture whose pixels are the letters of `lines`, each channel 1 more than the one before.
Image picture(const std::vector<std::string>& lines, int channels) {
    Image image;
    image.mat_create(static_cast<int>(lines.size()), static_cast<int>(lines[0].size()), channels, 0);
    unsigned char* to = image.data;
    for (const std::string& line : lines)
        for (const char c : line)
            for (int k = 0; k < channels; ++k) *to++ = static_cast<unsigned char>(c + k);
    return image;
}

std::string content(const Image& image) {
    const std::string bytes(image.data, image.data + image.rows * image.cols * image.channels);
    return std::to_string(image.rows) + " x " + std::to_string(image.cols) + ": " + bytes;
}

}  // namespace

TEST(orientation, each_of_the_eight_is_brought_upright) {
    const std::vector<std::string> stored = {"abc", "def"};
    const std::vector<std::vector<std::string>> upright = {{"abc", "def"},       // 1
                                                           {"cba", "fed"},       // 2
                                                           {"fed", "cba"},       // 3
                                                           {"def", "abc"},       // 4
                                                           {"ad", "be", "cf"},   // 5
                                                           {"da", "eb", "fc"},   // 6
                                                           {"fc", "eb", "da"},   // 7
                                                           {"cf", "be", "ad"}};  // 8
    for (const int channels : {1, 3}) {
        for (int orientation = 1; orientation <= 8; ++orientation) {
            Image image = picture(stored, channels);
            docprep::apply_orientation(image, orientation);
            EXPECT_EQ(content(picture(upright[static_cast<size_t>(orientation) - 1], channels)),
                      content(image))
                << "orientation " << orientation;
        }
    }
}

TEST(orientation, numbers_outside_1_to_8_change_nothing) {
    for (const int orientation : {-1, 0, 9, 65535}) {
        Image image = picture({"abc", "def"}, 1);
        docprep::apply_orientation(image, orientation);
        EXPECT_EQ("2 x 3: abcdef", content(image));
    }
}
