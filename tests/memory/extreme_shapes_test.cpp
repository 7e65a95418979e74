// Shapes that mat_create takes, or leaves behind when it fails, and that no loop over rows and
// columns fits: every operation ends in a result or in a documented error, and none looks outside
// a block (address sanitizer).
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <vector>

#include "allocations.h"
#include "capture.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::Size;

constexpr int kExtents[] = {INT_MIN, -65536, -50000, -1, 0, 1, 3, 50000, 65536, INT_MAX};

// Larger blocks count as memory that is not to be had: so do those of gigabytes that some shapes make.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;

/// A matrix of that shape, or what mat_create leaves of it.
U8 shaped(int rows, int cols, int channels) {
    U8 m;
    const FailingAllocations failing(LONG_MAX, kMostBytes);
    try {
        m.mat_create(rows, cols, channels, 200);
    } catch (const CException&) {
    }
    return m;
}

template <class Run>
void for_each_shape(Run run) {
    for (const int rows : kExtents)
        for (const int cols : kExtents)
            for (const int channels : kExtents) run(rows, cols, channels);
}

TEST(ExtremeShapes, end_every_operation_without_a_look_outside_the_block) {
    long calls = 0, thrown = 0;
    for_each_shape([&](int rows, int cols, int channels) {
        const U8 src = shaped(rows, cols, channels);
        for (const Operation& operation : image_operations()) {
            Outputs out;
            ++calls;
            const int code = code_of([&] {
                const FailingAllocations failing(LONG_MAX, kMostBytes);
                operation.run(src, out);
            });
            EXPECT_TRUE(code >= 0 && code <= 4) << operation.name;
            thrown += code != 0;
        }
    });
    EXPECT_GT(thrown, calls / 2);
    EXPECT_LT(thrown, calls);
}

TEST(ExtremeShapes, give_what_the_reference_gives) {
    for_each_shape([&](int rows, int cols, int channels) {
        // The reference walks what it is given, and large images are ordinary ones.
        for (const int extent : {rows, cols, channels})
            if (extent < -65536 || extent > 65536) return;
        for (const int count : {1, 3, channels})
            if (reference::wrapping_product(reference::wrapping_product(rows, cols), count) > 1000) return;
        if (channels == 0 && int64_t{rows} * cols > 1 << 20) return;
        const U8 src = shaped(rows, cols, channels);
        for (const Operation& operation : image_operations()) {
            // A quarter of so many pixels would be gigabytes.
            if (operation.name == "resize by 0.5" && int64_t{rows} * cols > 1 << 22) continue;
            ASSERT_TRUE(equals_reference(operation, src, false));
            if (src.data) {  // what has no block cannot be copied
                ASSERT_TRUE(equals_reference(operation, src, true));
            }
        }
    });
}

// Nothing is read where the product of rows and columns is below 1, and what was left of a matrix by a failed
// mat_create(-2, 3, 1, 0) is one of those.
TEST(ExtremeShapes, with_a_product_below_1_have_the_statistics_of_nothing) {
    const U8 left = shaped(-2, 3, 1);
    ASSERT_EQ(left.data, nullptr);
    EXPECT_EQ(CImgproc::countNonZero(left), 0);
    EXPECT_EQ(CImgproc::countNonZeroRate(left), 0.0f);
    EXPECT_EQ(CImgproc::minVal(left), 255);
    EXPECT_EQ(CImgproc::maxVal(left), 255);
    EXPECT_EQ(CImgproc::otsu(left, left), 0);
    U8 dst = filled(1, 1, 1, 9);
    EXPECT_EQ(CImgproc::threshold(left, dst, 0, 255, 8, left), 0);
    EXPECT_EQ(dst.data[0], 9);
    float mean = 5, deviation = 5;
    CImgproc::meanStdDev(left, mean, deviation);
    EXPECT_EQ(mean, 0.0f);
    EXPECT_EQ(deviation, 0.0f);
    orvex_991::vector<float> shares;
    CImgproc::hist(left, shares);
    ASSERT_EQ(shares.size, 256);
    EXPECT_EQ(shares[0], 0.0f);
    EXPECT_EQ(code_of([&] { CImgproc::otsu(left); }), 3) << "its mask of all pixels cannot be made";
}

// No row is seen, but each column's profile begins at the number of rows and ends at row 0.
TEST(ExtremeShapes, a_mask_of_negative_rows_reaches_up_to_row_0) {
    const orvex_cv_991::RotatedRect rect = CImgproc::minAreaRect(filled(-4, 3, -1, 0));
    ASSERT_EQ(rect.pts.size, 4);
    EXPECT_EQ(rect.width * rect.height, 2 * 4);
    EXPECT_EQ(rect.center.x, 1.0f);
    EXPECT_EQ(rect.center.y, -2.0f);
    EXPECT_EQ(CImgproc::minAreaRect(shaped(-4, 3, 1)).pts.size, 4);
    EXPECT_EQ(CImgproc::minAreaRect(filled(-4, 1, -1, 0)).pts.size, 0) << "two points";
    EXPECT_EQ(CImgproc::minAreaRect(filled(4, -3, -1, 0)).pts.size, 0) << "no columns";
}

// The product wraps to 1,794,967,296, which a block of no elements does not hold.
TEST(ExtremeShapes, whose_product_wraps_above_0_are_code_3_without_channels) {
    U8 m;
    m.mat_create(-50000, 50000, 0, 0);
    float mean = 0, deviation = 0;
    EXPECT_EQ(code_of([&] { CImgproc::meanStdDev(m, mean, deviation); }), 3);
    EXPECT_EQ(code_of([&] { CImgproc::countNonZero(m); }), 3);
    EXPECT_EQ(code_of([&] { CImgproc::countNonZeroRate(m); }), 3);
    EXPECT_EQ(code_of([&] { CImgproc::minAreaRect(m); }), 3);
}

// What a failed mat_create left, when there is memory again.
TEST(ExtremeShapes, without_a_block_leave_a_threshold_of_zeros) {
    U8 left, dst;
    EXPECT_EQ(code_of([&] {
                  const FailingAllocations failing(1);
                  left.mat_create(3, 4, 1, 7);
              }),
              3);
    EXPECT_EQ(code_of([&] {
                  const FailingAllocations none(LONG_MAX);
                  CImgproc::thresholdSeg(left, dst, 5);
              }),
              3);
    ASSERT_NE(dst.data, nullptr);
    EXPECT_EQ(count(dst, 0), 12);
}

TEST(ExtremeShapes, without_a_block_have_no_element_to_set) {
    U8 left;
    EXPECT_EQ(code_of([&] {
                  const FailingAllocations failing(1);
                  left.mat_create(3, 4, 1, 7);
              }),
              3);
    left = static_cast<unsigned char>(9);
    ~left;
    EXPECT_EQ(left.rows, 3);
    EXPECT_EQ(left.data, nullptr);
}

// What warpAffine writes no pixel of, it touches no memory for.
TEST(ExtremeShapes, of_outputs_without_pixels_are_made_by_a_warp) {
    const U8 two = filled(2, 2, 2, 9);
    Mat<float> identity;
    identity.mat_create(2, 3, 1, 0);
    identity.data[0] = identity.data[4] = 1;
    const struct {
        int width, height, interp;
    } cases[] = {{1, INT_MIN, 0}, {INT_MIN, 1, 0},    {-2, -3, 0},         {0, 5, 0},
                 {5, 0, 0},       {65536, 65536, 1},  {-65536, -65536, 0}, {65536, 65536, -3},
                 {1, INT_MIN, 1}, {-65536, -65536, 7}};
    for (const auto& of : cases) {
        SCOPED_TRACE(std::to_string(of.width) + " x " + std::to_string(of.height));
        U8 dst = filled(1, 1, 1, 1), mask = filled(1, 4, 1, 7);
        const std::string printed = normalised(printed_by([&] {
            CImgproc::warpAffine(two, dst, identity, Size(of.width, of.height),
                                 static_cast<INTERP_TYPE>(of.interp), &mask);
        }));
        EXPECT_EQ(dst.rows, of.height);
        EXPECT_EQ(dst.cols, of.width);
        EXPECT_EQ(dst.channels, 2);
        EXPECT_NE(dst.data, nullptr);
        EXPECT_EQ(mask.data[0], 7);
        EXPECT_EQ(printed, std::string(of.interp == 0 ? "D cv_imgproc.cpp:#] linear\n" : "") +
                               "D cv_imgproc.cpp:#] warpaffine cost time: #ms\n");
    }
    U8 dst = filled(1, 1, 1, 1);
    EXPECT_EQ(code_of([&] {
                  CImgproc::warpAffine(two, dst, identity, Size(65536, 65536), INTERP_LINEAR, nullptr);
              }),
              3)
        << "its pixels would be written outside the block";
    EXPECT_EQ(dst.rows, 1);
}

// Every pair of extents as the size of an output.
TEST(ExtremeShapes, of_outputs_end_in_a_result_or_code_3) {
    const Mat<float> turn = CImgproc::getRotationMatrix2D(orvex_cv_991::Point32f(1, 1), 30, 1);
    const std::vector<unsigned char> frame(2 << 20, 100);
    for (const int width : kExtents) {
        for (const int height : kExtents) {
            for (const int channels : {0, 1, 2, 3}) {
                const U8 src = shaped(3, 3, channels);
                for (const int interp : {0, 1}) {
                    U8 dst;
                    const int code = code_of([&] {
                        const FailingAllocations failing(LONG_MAX, kMostBytes);
                        CImgproc::warpAffine(src, dst, turn, Size(width, height),
                                             static_cast<INTERP_TYPE>(interp), nullptr);
                    });
                    EXPECT_TRUE(code == 0 || code == 3);
                    const int resized = code_of([&] {
                        const FailingAllocations failing(LONG_MAX, kMostBytes);
                        CImgproc::resize(src, dst, Size(width, height), static_cast<INTERP_TYPE>(interp));
                    });
                    EXPECT_EQ(resized, width <= 0 || height <= 0 ? 1 : code);
                }
            }
            const int64_t bytes = int64_t{width} * height;
            if (width > 0 && height > 0 && bytes < INT_MAX &&
                bytes * 3 / 2 > static_cast<int64_t>(frame.size()))
                continue;  // the frame is the caller's
            U8 dst;
            const int code = code_of([&] {
                const FailingAllocations failing(LONG_MAX, kMostBytes);
                CImgproc::yuv2bgr(frame.data(), height, width, dst);
            });
            EXPECT_TRUE(code == 0 || code == 3);
        }
    }
}

}  // namespace
}  // namespace testing_support
