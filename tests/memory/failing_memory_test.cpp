// Every allocation of every operation fails once, the first, the second and so on until the operation passes.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <utility>

#include "allocations.h"
#include "capture.h"
#include "cv_imgproc.h"
#include "operations.h"
#include "same.h"
#include "seals.h"

namespace testing_support {
namespace {

using orvex_991::CException;
using orvex_991::String;
using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;

/// What left a call, kept without memory of its own.
struct Failure {
    int code = 0;  // 0: nothing was thrown
    bool is_bad_alloc = false;
    char message[64] = "";
    bool any_allocation_failed = false;
    bool reported_hull = false, reported_rectangle = false;
};

Failure failure_of(long k, const std::function<void()>& run) {
    Failure failure;
    Capture capture;
    {
        const FailingAllocations failing(k);
        try {
            run();
        } catch (const CException& e) {
            failure.code = e.code;
            std::strncpy(failure.message, e.message.c_str(), sizeof failure.message - 1);
        } catch (const std::bad_alloc&) {
            failure.is_bad_alloc = true;
        }
        failure.any_allocation_failed = FailingAllocations::any_failed();
    }
    const std::string printed = capture.finish();
    failure.reported_hull = printed.find("convexhull done") != std::string::npos;
    failure.reported_rectangle = printed.find("min area done") != std::string::npos;
    return failure;
}

/// Lets allocation k = 1, 2, .. of run() fail until none does, calling check(failure, k) after each that did.
/// @return how many there are
template <class Run, class Check>
long fail_each(Run run, Check check) {
    for (long k = 1;; ++k) {
        const Failure failure = failure_of(k, run);
        if (!failure.any_allocation_failed) return k - 1;
        check(failure, k);
        if (testing::Test::HasFatalFailure() || k > 100000) return -1;
    }
}

U8 letters() {
    U8 page = text_page(60, 80, 3);
    for (int i = 0; i < page.rows * page.cols; ++i) page.data[i] = page.data[i] < 128 ? 255 : 0;
    return page;
}

U8 photo_of_a_seal() {
    U8 bgr = colour_image(200, 330, 235, 240, 245);
    draw_ring(bgr, 100, 90, 20, 32, 40, 40, 210);
    draw_box(bgr, 140, 70, 7, 7, 40, 40, 210);
    draw_box(bgr, 250, 150, 7, 7, 40, 40, 210);
    return bgr;
}

void expect_documented(const Operation& operation, const Failure& failure, const Outputs& before,
                       Outputs after, const U8& src) {
    after.mask = before.mask;  // it may have been written in part
    const bool unchanged = static_cast<bool>(same(outcome_of({}, after), outcome_of({}, before)));
    const bool initialised = after.dst.rows == src.rows && after.dst.cols == src.cols;
    switch (operation.out_of_memory) {
        case OutOfMemory::kCode3:
            EXPECT_EQ(failure.code, 3);
            EXPECT_TRUE(unchanged);
            break;
        case OutOfMemory::kCode3Initialised:
            EXPECT_EQ(failure.code, 3);
            EXPECT_TRUE(unchanged || initialised);
            break;
        case OutOfMemory::kCode2:
            EXPECT_EQ(failure.code, 2);
            EXPECT_TRUE(unchanged || initialised || after.rects.size == 0);
            EXPECT_EQ(after.points.size, before.points.size);
            break;
        case OutOfMemory::kCode2Or3:
            EXPECT_TRUE(failure.code == 2 || failure.code == 3) << failure.code;
            EXPECT_TRUE(unchanged || initialised);
            break;
        case OutOfMemory::kBadAlloc:
            EXPECT_TRUE(failure.is_bad_alloc || failure.code == 3);
            EXPECT_EQ(after.number, before.number);
            break;
        case OutOfMemory::kNothing:
            ADD_FAILURE() << "allocates";
            break;
    }
}

void expect_documented_on(const U8& src) {
    for (const Operation& operation : image_operations()) {
        SCOPED_TRACE(operation.name + " of " + shape_of(src));
        const long in_use = blocks_in_use();
        // What happens with memory enough; an input check, of the channels for instance, may be all there is.
        Failure normally;
        {
            Outputs out;
            normally = failure_of(LONG_MAX, [&] { operation.run(src, out); });
        }
        for (long k = 1;; ++k) {
            const Outputs before;
            Outputs after;
            const Failure failure = failure_of(k, [&] { operation.run(src, after); });
            if (!failure.any_allocation_failed) {
                EXPECT_EQ(failure.code, normally.code);
                EXPECT_STREQ(failure.message, normally.message);
                break;
            }
            expect_documented(operation, failure, before, std::move(after), src);
            if (testing::Test::HasFailure()) {
                ADD_FAILURE() << "allocation " << k << " failed: code " << failure.code << " \""
                              << failure.message << "\"" << (failure.is_bad_alloc ? " std::bad_alloc" : "");
                return;
            }
        }
        EXPECT_EQ(blocks_in_use(), in_use) << "blocks are left over";
    }
}

TEST(FailingMemory, ends_every_operation_on_gray_images_as_documented) {
    expect_documented_on(letters());
    expect_documented_on(text_page(40, 61, 5));
}

TEST(FailingMemory, ends_every_operation_on_colour_images_as_documented) {
    expect_documented_on(photo_of_a_seal());
}

// Labels beyond the forest: the pixel by pixel scan and its own memory.
TEST(FailingMemory, ends_every_operation_on_noise_as_documented) {
    Random random(7);
    expect_documented_on(content(random, 31, 33, 1, Content::kHalf));
}

TEST(FailingMemory, leaves_messages_of_refused_formats_whole) {
    U8 dst;
    const U8 gray = letters();
    vector<unsigned char> levels;
    Failure failure = failure_of(1, [&] { CImgproc::threshold(gray, dst, 0, 255, 0, U8()); });
    EXPECT_EQ(failure.code, 1);
    EXPECT_STREQ(failure.message, "only support otsu binary mode");
    failure = failure_of(1, [&] { CImgproc::threshold(gray, dst, 1, 255, 8, U8()); });
    EXPECT_EQ(failure.code, 1);
    EXPECT_STREQ(failure.message, "currently low_th must be 0  and high_th must be 255");
    const U8 colour = filled(60, 80, 3, 1);
    failure = failure_of(1, [&] { CImgproc::saliencyDetect(colour, dst, gray, levels); });
    EXPECT_EQ(failure.code, 1);
    EXPECT_STREQ(failure.message, "saliency detection input format error");
}

// The list of levels grows by the array's own allocation, which is no CException.
TEST(FailingMemory, of_the_list_of_levels_is_code_2_with_its_message) {
    const U8 gray = letters();
    bool seen = false;
    for (long k = 1; k < 10; ++k) {
        U8 dst;
        vector<unsigned char> levels;
        const Failure failure = failure_of(k, [&] { CImgproc::saliencyDetect(gray, dst, gray, levels); });
        if (failure.code != 2) continue;
        EXPECT_STREQ(failure.message, "saliency detection algorithm error");
        seen = true;
    }
    EXPECT_TRUE(seen);
}

TEST(FailingMemory, of_a_conversion_of_frames_is_code_3) {
    const std::vector<unsigned char> frame(16 * 12 * 3 / 2, 100);
    const long n = fail_each(
        [&] {
            U8 dst;
            CImgproc::yuv2bgr(frame.data(), 12, 16, dst);
        },
        [](const Failure& failure, long) { ASSERT_EQ(failure.code, 3); });
    EXPECT_EQ(n, 1);
}

TEST(FailingMemory, of_a_rotation_matrix_is_code_3) {
    const long n = fail_each([] { CImgproc::getRotationMatrix2D(Point32f(1, 2), 30, 1); },
                             [](const Failure& failure, long) { ASSERT_EQ(failure.code, 3); });
    EXPECT_EQ(n, 1);
}

TEST(FailingMemory, of_row_grouping_is_code_2) {
    vector<Rect> rects;
    for (int k = 0; k < 500; ++k) rects.push_back(Rect(k % 37, 20 * (k / 60), 5, 9));
    for (long k = 1;; ++k) {
        vector<Rect> taken(rects);
        vector<vector<Rect>> rows(2);
        const Failure failure =
            failure_of(k, [&] { CImgproc::divideComponentsToRows(std::move(taken), rows); });
        if (!failure.any_allocation_failed) {
            EXPECT_GT(k, 5);
            EXPECT_EQ(rows.size, 9);
            break;
        }
        ASSERT_EQ(failure.code, 2) << "allocation " << k;
        ASSERT_STREQ(failure.message, "");
    }
}

TEST(FailingMemory, of_hulls_and_their_rectangles_is_the_arrays_own_exception) {
    Random random(4);
    vector<Point> points;
    for (int k = 0; k < 300; ++k) points.push_back(Point(random.range(-99, 99), random.range(-99, 99)));
    const auto expect_bad_alloc = [](const Failure& failure, long k) {
        ASSERT_TRUE(failure.is_bad_alloc) << "allocation " << k;
    };
    const long in_use = blocks_in_use();
    long n = fail_each(
        [&] {
            vector<Point> hull;
            CImgproc::convexHull(points, hull);
        },
        [&](const Failure& failure, long k) {
            expect_bad_alloc(failure, k);
            ASSERT_FALSE(failure.reported_hull) << "allocation " << k;
        });
    EXPECT_GT(n, 3);
    n = fail_each([&] { CImgproc::minAreaRect(points); }, expect_bad_alloc);
    EXPECT_GT(n, 3);
    EXPECT_EQ(blocks_in_use(), in_use);
}

TEST(FailingMemory, of_the_rectangle_of_a_mask_reports_no_time_of_it) {
    const U8 mask = letters();
    const long n = fail_each([&] { CImgproc::minAreaRect(mask); },
                             [](const Failure& failure, long k) {
                                 ASSERT_TRUE(failure.is_bad_alloc || failure.code == 3);
                                 ASSERT_FALSE(failure.reported_rectangle) << "allocation " << k;
                             });
    EXPECT_GT(n, 3);
}

// The output comes before the runs, whose memory comes first.
TEST(FailingMemory, of_labels_is_code_3_and_the_output_has_its_shape) {
    const U8 mask = letters();
    Mat<int> labels;
    labels.mat_create(2, 3, 1, 7);
    int count = -5;
    const Failure failure = failure_of(1, [&] { CImgproc::bwlabel(mask, labels, count); });
    EXPECT_EQ(failure.code, 3);
    EXPECT_EQ(labels.rows, mask.rows);
    EXPECT_EQ(labels.cols, mask.cols);
    EXPECT_EQ(count, -5);
}

TEST(FailingMemory, of_a_hull_leaves_it_empty_unless_it_is_the_points) {
    vector<Point> points(3), hull(2, Point(7, 7));
    points[1] = Point(5, 0);
    points[2] = Point(0, 5);
    const Failure failure = failure_of(1, [&] { CImgproc::convexHull(points, hull); });
    EXPECT_TRUE(failure.is_bad_alloc);
    EXPECT_EQ(hull.size, 0);
    EXPECT_TRUE(failure_of(1, [&] { CImgproc::convexHull(points, points); }).is_bad_alloc);
    EXPECT_EQ(points.size, 3);
}

TEST(FailingMemory, of_matrices_is_code_3_and_of_lists_the_runtimes_exception) {
    const U8 image = letters();
    EXPECT_EQ(failure_of(1, [&] { const U8 copy(image); }).code, 3);
    EXPECT_EQ(failure_of(1, [&] { image.clone(); }).code, 3);
    U8 assigned = filled(2, 2, 1, 3);
    EXPECT_EQ(failure_of(1, [&] { assigned = image; }).code, 3);
    EXPECT_EQ(assigned.data, nullptr);
    EXPECT_EQ(assigned.rows, image.rows);
    const vector<int> list(5, 1);
    vector<int> copy(2, 7), grown;
    EXPECT_TRUE(failure_of(1, [&] { copy = list; }).is_bad_alloc);
    EXPECT_EQ(copy.size, 2);
    EXPECT_TRUE(failure_of(1, [&] { grown.push_back(1); }).is_bad_alloc);
    EXPECT_EQ(grown.size, 0);
    EXPECT_TRUE(failure_of(1, [] { const orvex_cv_991::ForestJoin forest(3); }).is_bad_alloc);
}

TEST(FailingMemory, literals_need_none_and_other_texts_do) {
    EXPECT_FALSE(failure_of(1, [] {
                     const String text = String::literal("a text that stays");
                     const String copy(text);
                     String assigned;
                     assigned = copy;
                     const CException e(2, assigned);
                 }).is_bad_alloc);
    EXPECT_TRUE(failure_of(1, [] { const String text("a text that is copied"); }).is_bad_alloc);
}

}  // namespace
}  // namespace testing_support
