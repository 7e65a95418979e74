#include "formats/exif.h"

#include <gtest/gtest.h>

#include "encoders.h"

using docprep::Bytes;

namespace {

int orientation_of(const Bytes& tiff) {
    Bytes block = {'E', 'x', 'i', 'f', 0, 0};
    block.insert(block.end(), tiff.begin(), tiff.end());
    return docprep::exif_orientation(block.data(), block.size());
}

constexpr int kOrientation = 0x112;
constexpr int kWidth = 0x100;
constexpr int kShort = 3;
constexpr int kLong = 4;

}  // namespace

TEST(exif, both_byte_orders_are_read) {
    for (int orientation = 1; orientation <= 8; ++orientation)
        for (const bool big_endian : {false, true})
            EXPECT_EQ(orientation,
                      orientation_of(tiff_with_entry(big_endian, kOrientation, kShort, orientation)));
}

TEST(exif, invalid_entries_count_as_none) {
    EXPECT_EQ(0, orientation_of(tiff_with_entry(false, kOrientation, kShort, 0)));
    EXPECT_EQ(0, orientation_of(tiff_with_entry(false, kOrientation, kShort, 9)));
    EXPECT_EQ(0, orientation_of(tiff_with_entry(false, kOrientation, kLong, 6)));
    EXPECT_EQ(0, orientation_of(tiff_with_entry(false, kWidth, kShort, 6)));
}

TEST(exif, cut_blocks_are_read_without_harm) {
    const Bytes whole = exif_with_orientation(6);
    for (size_t n = 0; n <= whole.size(); ++n) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(n));
        const int orientation = docprep::exif_orientation(cut.data(), cut.size());
        EXPECT_TRUE(orientation == 0 || orientation == 6) << n << " bytes";
    }
    EXPECT_EQ(6, docprep::exif_orientation(whole.data(), whole.size()));
}
