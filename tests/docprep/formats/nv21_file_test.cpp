#include "formats/nv21_file.h"

#include <gtest/gtest.h>

#include <random>

#include "base/failure.h"
#include "encoders.h"
#include "formats/file_bytes.h"
#include "formats/photo.h"
#include "test_files.h"

using docprep::Bytes;
using docprep::Extents;

namespace {

Bytes frame_of(size_t n) {
    Bytes frame(n);
    for (size_t i = 0; i < n; ++i) frame[i] = static_cast<unsigned char>(i * 7);
    return frame;
}

Bytes frame_in(const std::string& path, const Extents& size) {
    return docprep::decode_nv21(docprep::read_file(path), path, size);
}

std::string refusal(const std::string& path, const Extents& size) {
    try {
        frame_in(path, size);
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ(path, failure.file());
        return failure.what();
    }
}

}  // namespace

TEST(nv21_file, a_frame_of_the_exact_length_is_read) {
    const TemporaryFolder folder;
    EXPECT_EQ(frame_of(36), frame_in(folder.write("f.nv21", frame_of(36)), {6, 4}));
}

TEST(nv21_file, an_odd_last_row_has_its_own_pairs) {
    const TemporaryFolder folder;
    EXPECT_EQ(18 + 12, docprep::nv21_bytes({6, 3}));
    EXPECT_EQ(frame_of(30), frame_in(folder.write("f.nv21", frame_of(30)), {6, 3}));
}

TEST(nv21_file, shorter_and_longer_frames_are_refused) {
    const TemporaryFolder folder;
    EXPECT_EQ("is shorter than the 36 bytes of an NV21 frame of 6x4",
              refusal(folder.write("short.nv21", frame_of(35)), {6, 4}));
    EXPECT_EQ("is longer than the 36 bytes of an NV21 frame of 6x4",
              refusal(folder.write("long.nv21", frame_of(37)), {6, 4}));
    EXPECT_EQ("is empty", refusal(folder.write("empty.nv21", Bytes()), {6, 4}));
}

TEST(nv21_file, odd_columns_are_refused) {
    const TemporaryFolder folder;
    EXPECT_EQ("NV21 frames with an odd number of columns are not supported",
              refusal(folder.write("f.nv21", frame_of(31)), {5, 4}));
}

TEST(nv21_file, too_many_pixels_are_refused) {
    const TemporaryFolder folder;
    EXPECT_EQ("2147483646 x 2147483647 pixels are too many (limit 256 Mi)",
              refusal(folder.write("f.nv21", frame_of(36)), {2147483646, 2147483647}));
}

TEST(nv21_file, gzipped_frames_are_decompressed_whatever_their_name) {
    const TemporaryFolder folder;
    const Bytes packed = gzip(frame_of(36));
    for (const char* name : {"f.nv21.gz", "f.nv21", "f"})
        EXPECT_EQ(frame_of(36), frame_in(folder.write(name, packed), {6, 4}));
}

TEST(nv21_file, a_frame_that_begins_like_gzip_is_a_frame) {
    const TemporaryFolder folder;
    Bytes frame = frame_of(36);
    frame[0] = 0x1f;
    frame[1] = 0x8b;
    EXPECT_EQ(frame, frame_in(folder.write("f.nv21.gz", frame), {6, 4}));
    frame.pop_back();
    EXPECT_EQ("not a readable gzip file", refusal(folder.write("f.nv21", frame), {6, 4}));
}

TEST(nv21_file, gzipped_frames_of_other_lengths_are_refused) {
    const TemporaryFolder folder;
    EXPECT_EQ("is shorter than the 36 bytes of an NV21 frame of 6x4",
              refusal(folder.write("short.nv21.gz", gzip(frame_of(35))), {6, 4}));
    EXPECT_EQ("is longer than the 36 bytes of an NV21 frame of 6x4",
              refusal(folder.write("long.nv21.gz", gzip(frame_of(37))), {6, 4}));
    EXPECT_EQ("is longer than the 36 bytes of an NV21 frame of 6x4",
              refusal(folder.write("bomb.nv21.gz", gzip(Bytes(10000000))), {6, 4}));
}

TEST(nv21_file, every_truncation_of_a_gzipped_frame_is_refused) {
    const TemporaryFolder folder;
    const Bytes packed = gzip(Bytes(36, 7));  // shorter than the frame, whose length is never refused
    for (size_t n = 0; n < packed.size(); ++n) {
        const Bytes cut(packed.begin(), packed.begin() + static_cast<ptrdiff_t>(n));
        // A single byte is no signature yet.
        EXPECT_EQ(n == 0   ? "is empty"
                  : n == 1 ? "is shorter than the 36 bytes of an NV21 frame of 6x4"
                           : "truncated gzip file",
                  refusal(folder.write("cut.nv21.gz", cut), {6, 4}))
            << n << " bytes";
    }
}

TEST(nv21_file, damaged_or_continued_gzip_data_is_refused) {
    const TemporaryFolder folder;
    Bytes damaged = gzip(frame_of(36));
    damaged[damaged.size() - 6] ^= 1;  // in the check sum
    EXPECT_EQ("not a readable gzip file", refusal(folder.write("damaged.nv21.gz", damaged), {6, 4}));
    Bytes continued = gzip(frame_of(36));
    continued.push_back(0);
    EXPECT_EQ("has data after the gzip'ed frame", refusal(folder.write("more.nv21.gz", continued), {6, 4}));
}

namespace {

/// Of a frame of these extents whose luma is level(row, col).
template <class Level>
bool looks_transposed(const Extents& size, const Level& level) {
    Bytes frame;
    for (int row = 0; row < size.rows; ++row)
        for (int col = 0; col < size.cols; ++col)
            frame.push_back(static_cast<unsigned char>(level(row, col)));
    frame.resize(static_cast<size_t>(docprep::nv21_bytes(size)), 128);
    EXPECT_FALSE(docprep::looks_transposed(frame, size));
    return docprep::looks_transposed(frame, {size.rows, size.cols});
}

}  // namespace

TEST(nv21_file, swapped_extents_are_noticed) {
    const auto blocks = [](int row, int col) { return (row / 20 * 7 + col / 30 * 5) % 8 * 30; };
    EXPECT_TRUE(looks_transposed({320, 240}, blocks));
    EXPECT_TRUE(looks_transposed({240, 320}, blocks));
    EXPECT_TRUE(looks_transposed({512, 256}, blocks));
}

TEST(nv21_file, swapped_extents_are_not_seen_where_there_is_nothing_to_see) {
    std::mt19937 random(7);
    EXPECT_FALSE(looks_transposed({320, 240}, [](int, int) { return 90; }));
    EXPECT_FALSE(looks_transposed({320, 240}, [&](int, int) { return static_cast<int>(random() % 256); }));
    EXPECT_FALSE(looks_transposed({240, 240}, [](int row, int col) { return row / 9 * 40 + col / 7; }));
    EXPECT_FALSE(looks_transposed({2, 1}, [](int, int col) { return 100 * col; }));
}
