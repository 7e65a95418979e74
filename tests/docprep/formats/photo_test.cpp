#include "formats/photo.h"

#include <gtest/gtest.h>

#include <random>

#include "base/failure.h"
#include "encoders.h"
#include "test_files.h"

using docprep::Bytes;
using docprep::Failure;

namespace {

int stripes(int row, int col, int k) {
    return (row * 13 + col * 29 + k * 71) % 256;
}

/// The reason for which the bytes are refused; empty when they are not. Any other exception fails the test.
std::string refusal(const Bytes& bytes) {
    try {
        docprep::decode_photo(bytes, "photo");
        return "";
    } catch (const Failure& failure) {
        EXPECT_EQ("photo", failure.file());
        return failure.what();
    }
}

Bytes small_jpeg(bool progressive) {
    JpegRequest request;
    request.quality = 80;
    request.progressive = progressive;
    request.exif = exif_with_orientation(6);
    return make_jpeg(request, stripes);
}

Bytes small_png(bool interlaced) {
    PngRequest request;
    request.colour_type = 6;
    request.interlaced = interlaced;
    request.exif = tiff_with_entry(false, 0x112, 3, 8);
    return make_png(request, stripes);
}

/// @param harmless  how many bytes at the end may be missing
void expect_every_truncation_refused(const Bytes& whole, size_t harmless = 0) {
    ASSERT_EQ("", refusal(whole));
    for (size_t n = 0; n < whole.size() - harmless; ++n) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(n));
        const std::string reason = refusal(cut);
        EXPECT_NE("", reason) << "cut after " << n << " of " << whole.size() << " bytes";
        EXPECT_EQ(std::string::npos, reason.find('\n')) << reason;
    }
}

/// Decodes damaged copies: pixels or a Failure, nothing else. Returns how many were refused.
int refused_after_damage(const Bytes& whole, unsigned seed) {
    std::mt19937 random(seed);
    int refused = 0;
    for (int round = 0; round < 2000; ++round) {
        Bytes damaged = whole;
        const unsigned flips = 1 + random() % 8;
        for (unsigned k = 0; k < flips; ++k)
            damaged[random() % damaged.size()] ^= static_cast<unsigned char>(1u << random() % 8);
        if (!refusal(damaged).empty()) ++refused;
    }
    return refused;
}

}  // namespace

constexpr size_t kEndMarker = 2;  // bytes of a JPEG that hold no pixel

TEST(photo, every_truncation_of_a_jpeg_is_refused) {
    expect_every_truncation_refused(small_jpeg(false), kEndMarker);
}

TEST(photo, every_truncation_of_a_progressive_jpeg_is_refused) {
    expect_every_truncation_refused(small_jpeg(true), kEndMarker);
}

TEST(photo, every_truncation_of_a_png_is_refused) {
    expect_every_truncation_refused(small_png(false));
}

TEST(photo, every_truncation_of_an_interlaced_png_is_refused) {
    expect_every_truncation_refused(small_png(true));
}

TEST(photo, damaged_files_give_pixels_or_a_failure) {
    constexpr unsigned kSeed = 20240917;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    EXPECT_GT(refused_after_damage(small_jpeg(false), kSeed), 100);
    EXPECT_GT(refused_after_damage(small_jpeg(true), kSeed), 100);
    EXPECT_GT(refused_after_damage(small_png(false), kSeed), 1000);  // check sums notice nearly all
    EXPECT_GT(refused_after_damage(small_png(true), kSeed), 1000);
}

TEST(photo, random_bytes_behind_a_signature_are_refused) {
    constexpr unsigned kSeed = 77;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    for (int round = 0; round < 500; ++round) {
        Bytes jpeg = {0xff, 0xd8, 0xff};
        Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
        for (unsigned k = random() % 300; k > 0; --k) {
            jpeg.push_back(static_cast<unsigned char>(random()));
            png.push_back(static_cast<unsigned char>(random()));
        }
        EXPECT_NE("", refusal(jpeg));
        EXPECT_NE("", refusal(png));
    }
}

TEST(photo, an_empty_file_is_refused_as_empty) {
    EXPECT_EQ("is empty", refusal({}));
}

TEST(photo, a_text_file_is_refused_as_no_picture) {
    EXPECT_EQ("is none of JPEG, PNG, PNM, TIFF and WebP",
              refusal(bytes_of("Dear friends at the harbour school,\n")));
}

TEST(photo, other_kinds_of_pictures_are_named) {
    const auto file = [](const std::string& beginning, size_t offset = 0) {
        std::string text(offset, '\0');
        text += beginning;
        text.resize(80);
        return bytes_of(text);
    };
    struct Case {
        Bytes bytes;
        std::string kind;
    };
    const std::vector<Case> cases = {
        {file("ftypheic", 4), "a HEIC picture"},
        {file("ftyphevx", 4), "a HEIC picture"},
        {file("ftypmif1", 4), "a HEIF picture"},
        {file("ftypavif", 4), "an AVIF picture"},
        {file("GIF89a"), "a GIF"},
        {file("GIF87a"), "a GIF"},
        {file(std::string("BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28", 15)), "a BMP"},
        {file("%PDF-1.7"), "a PDF"},
        {file(std::string("\0\0\0\x0cjP  \r\n", 10)), "a JPEG 2000"},
        {file("\xff\x4f\xff\x51"), "a JPEG 2000"},
        {file(std::string("\0\0\0\x0cJXL \r\n", 10)), "a JPEG XL"},
        {file("\xff\x0a"), "a JPEG XL"},
        {file("8BPS"), "a PSD"},
        {file(std::string("II*\0\x10\0\0\0CR\2\0", 12)), "a raw camera picture"},
        {file("FUJIFILMCCD-RAW"), "a raw camera picture"},
        {file("ftypcrx ", 4), "a raw camera picture"},
    };
    for (const Case& other : cases)
        EXPECT_EQ("is " + other.kind + ", which is not read; convert it to JPEG or PNG first",
                  refusal(other.bytes));
    EXPECT_EQ("is none of JPEG, PNG, PNM, TIFF and WebP", refusal(bytes_of("BM is short for a long word")));
}

TEST(photo, every_format_is_told_by_its_first_bytes) {
    EXPECT_STREQ("TIFF", docprep::decode_photo(make_tiff({}, stripes), "photo").format);
    TiffRequest big;
    big.big_endian = true;
    EXPECT_STREQ("TIFF", docprep::decode_photo(make_tiff(big, stripes), "photo").format);
    EXPECT_STREQ("WebP", docprep::decode_photo(make_webp({}, stripes), "photo").format);
    EXPECT_STREQ("PNM", docprep::decode_photo(bytes_of("P2 1 1 9 9"), "photo").format);
    EXPECT_EQ("is none of JPEG, PNG, PNM, TIFF and WebP", refusal(bytes_of("P2P is a word")));
}

TEST(photo, bytes_after_the_end_are_ignored) {
    for (Bytes bytes : {small_jpeg(false), small_png(false)}) {
        bytes.insert(bytes.end(), 1000, 0xff);
        EXPECT_EQ("", refusal(bytes));
    }
}

TEST(photo, a_folder_is_refused_as_a_folder) {
    const TemporaryFolder folder;
    try {
        docprep::read_photo(folder.path(""));
        FAIL() << "was read";
    } catch (const Failure& failure) {
        EXPECT_STREQ("is a folder", failure.what());
    }
}

TEST(photo, a_device_is_refused_without_reading_it) {
    try {
        docprep::read_photo("/dev/zero");
        FAIL() << "was read";
    } catch (const Failure& failure) {
        EXPECT_STREQ("is a device", failure.what());
    }
}

TEST(photo, a_huge_file_is_refused_before_it_is_read) {
    const TemporaryFolder folder;
    const std::string path = folder.write("huge.jpg", std::string("\xff\xd8\xff"));
    std::filesystem::resize_file(path, static_cast<uintmax_t>(docprep::kMostFileBytes) + 1);
    try {
        docprep::read_photo(path);
        FAIL() << "was read";
    } catch (const Failure& failure) {
        EXPECT_STREQ("is larger than 1024 MiB", failure.what());
    }
}

TEST(photo, the_name_does_not_decide_the_format) {
    const TemporaryFolder folder;
    EXPECT_STREQ("PNG", docprep::read_photo(folder.write("photo.jpg", small_png(false))).format);
    EXPECT_STREQ("JPEG", docprep::read_photo(folder.write("photo.txt", small_jpeg(false))).format);
}

TEST(photo, announced_extents_beyond_the_limit_are_refused) {
    Bytes jpeg = make_jpeg({}, stripes);
    patch_jpeg_size(jpeg, 65500, 65500);
    EXPECT_EQ("65500 x 65500 pixels are too many (limit 256 Mi)", refusal(jpeg));
    Bytes png = make_png({}, stripes);
    patch_png_size(png, 0x7fffffff, 0x7fffffff);
    EXPECT_EQ("2147483647 x 2147483647 pixels are too many (limit 256 Mi)", refusal(png));
}

TEST(photo, announced_extents_that_the_file_cannot_hold_are_refused) {
    // 2^28 pixels, the limit itself: without this check the decoder would get memory for all of them.
    Bytes jpeg = make_jpeg({}, stripes);
    patch_jpeg_size(jpeg, 16384, 16384);
    EXPECT_EQ("truncated JPEG (too short for its 16384 x 16384 pixels)", refusal(jpeg));
    Bytes png = make_png({}, stripes);
    patch_png_size(png, 16384, 16384);
    EXPECT_EQ("truncated PNG (too short for its 16384 x 16384 pixels)", refusal(png));
}

TEST(photo, a_picture_of_one_colour_is_not_taken_for_truncated) {
    const auto white = [](int, int, int) { return 255; };
    PngRequest png;
    png.rows = png.cols = 3000;
    EXPECT_EQ("", refusal(make_png(png, white)));
    JpegRequest jpeg;
    jpeg.kind = JpegKind::kGray;
    jpeg.rows = jpeg.cols = 3000;
    jpeg.progressive = true;  // with its own Huffman tables: the shortest codes
    EXPECT_EQ("", refusal(make_jpeg(jpeg, white)));
}

TEST(photo, extents_are_checked_without_overflow) {
    docprep::require_size("photo", 1, docprep::kMostPixels);
    EXPECT_THROW(docprep::require_size("photo", 1, docprep::kMostPixels + 1), Failure);
    EXPECT_THROW(docprep::require_size("photo", INT64_MAX, INT64_MAX), Failure);
    EXPECT_THROW(docprep::require_size("photo", 0, 5), Failure);
}
