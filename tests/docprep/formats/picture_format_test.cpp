#include "formats/picture_format.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "formats/photo.h"

using docprep::Bytes;
using docprep::Image;
using docprep::PictureFormat;

namespace {

constexpr PictureFormat kAll[] = {PictureFormat::kPng, PictureFormat::kJpeg, PictureFormat::kPnm,
                                  PictureFormat::kTiff, PictureFormat::kWebp};

Image slopes(int rows, int cols, int channels) {
    Image image;
    image.mat_create(rows, cols, channels, 0);
    for (int i = 0; i < rows * cols * channels; ++i)
        image.data[i] = static_cast<unsigned char>(40 + i / channels % cols * 2 + i / channels / cols +
                                                   i % channels * 30);
    return image;
}

std::string refusal(const Image& image, PictureFormat format) {
    try {
        docprep::encode_picture(image, format, "out");
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ("out", failure.file());
        return failure.what();
    }
}

}  // namespace

TEST(picture_format, the_ending_of_a_name_decides) {
    EXPECT_EQ(PictureFormat::kPng, docprep::format_of_name("out/page.png"));
    EXPECT_EQ(PictureFormat::kJpeg, docprep::format_of_name("a.b.JPG"));
    EXPECT_EQ(PictureFormat::kJpeg, docprep::format_of_name("a.Jpeg"));
    EXPECT_EQ(PictureFormat::kPnm, docprep::format_of_name("a.pgm"));
    EXPECT_EQ(PictureFormat::kPnm, docprep::format_of_name("a.ppm"));
    EXPECT_EQ(PictureFormat::kPnm, docprep::format_of_name("a.pnm"));
    EXPECT_EQ(PictureFormat::kTiff, docprep::format_of_name("a.tif"));
    EXPECT_EQ(PictureFormat::kTiff, docprep::format_of_name("a.TIFF"));
    EXPECT_EQ(PictureFormat::kWebp, docprep::format_of_name("a.webp"));
    for (const char* name : {"", "png", "a.gif", "a.png ", "a.png.gz", "a.png/b", "a."})
        EXPECT_FALSE(docprep::format_of_name(name)) << name;
}

TEST(picture_format, every_name_stands_for_a_format) {
    EXPECT_EQ(9u, docprep::picture_format_names().size());
    for (const std::string& name : docprep::picture_format_names())
        EXPECT_TRUE(docprep::format_of_name("a" + name)) << name;
}

TEST(picture_format, pictures_come_back_in_every_format) {
    const char* const kNames[] = {"PNG", "JPEG", "PNM", "TIFF", "WebP"};
    for (const PictureFormat format : kAll)
        for (const int channels : {1, 3}) {
            const Image image = slopes(33, 45, channels);
            const docprep::Photo photo =
                docprep::decode_photo(docprep::encode_picture(image, format, "out", 200), "photo");
            EXPECT_STREQ(kNames[static_cast<int>(format)], photo.format);
            SCOPED_TRACE(photo.format);
            const int stored = format == PictureFormat::kWebp ? 3 : channels;
            ASSERT_EQ(33, photo.pixels.rows);
            ASSERT_EQ(45, photo.pixels.cols);
            ASSERT_EQ(stored, photo.pixels.channels);
            for (int i = 0; i < 33 * 45; ++i)
                for (int k = 0; k < stored; ++k)
                    ASSERT_NEAR(image.data[i * channels + k % channels], photo.pixels.data[i * stored + k],
                                format == PictureFormat::kJpeg ? 5 : 0)
                        << i << ", " << k;
        }
}

TEST(picture_format, the_same_picture_has_the_same_bytes) {
    for (const PictureFormat format : kAll) {
        const Image image = slopes(40, 30, 3);
        EXPECT_EQ(docprep::encode_picture(image, format, "out"),
                  docprep::encode_picture(image, format, "out"));
    }
}

TEST(picture_format, longer_sides_than_a_format_has_are_one_line) {
    const Image wide = slopes(1, 65501, 1);
    EXPECT_EQ("65501 x 1 pixels are too many for a JPEG (limit 65500 a side)",
              refusal(wide, PictureFormat::kJpeg));
    EXPECT_EQ("65501 x 1 pixels are too many for a WebP (limit 16383 a side)",
              refusal(wide, PictureFormat::kWebp));
    EXPECT_EQ("1 x 16384 pixels are too many for a WebP (limit 16383 a side)",
              refusal(slopes(16384, 1, 1), PictureFormat::kWebp));
    for (const PictureFormat format : {PictureFormat::kPng, PictureFormat::kPnm, PictureFormat::kTiff})
        EXPECT_EQ("", refusal(wide, format));
    EXPECT_EQ("", refusal(slopes(65500, 1, 1), PictureFormat::kJpeg));
    EXPECT_EQ("", refusal(slopes(16383, 1, 1), PictureFormat::kWebp));
}
