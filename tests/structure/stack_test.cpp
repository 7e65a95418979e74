// Every operation gets by with a small stack, whatever the image: no recursion follows the input.
#include <gtest/gtest.h>
#include <pthread.h>

#include <string>

#include "capture.h"
#include "operations.h"
#include "seals.h"

namespace testing_support {
namespace {

constexpr size_t kStackBytes = 256 * 1024;

struct Call {
    const Operation& operation;
    const U8& src;
};

void* run(void* argument) {
    const Call& call = *static_cast<const Call*>(argument);
    Outputs out;
    try {
        call.operation.run(call.src, out);
    } catch (const orvex_991::CException&) {
    }
    return nullptr;
}

// A thread whose stack is too small ends the program, and so the test.
void run_on_a_small_stack(const Operation& operation, const U8& src) {
    Call call{operation, src};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackBytes);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(Structure, every_operation_gets_by_with_a_stack_of_256_KiB) {
    Random random(9);
    const U8 images[] = {text_page(700, 900, 4),
                         content(random, 500, 600, 1, Content::kHalf),
                         content(random, 500, 600, 1, Content::kCheckerboard),
                         content(random, 500, 600, 1, Content::kSpiral),
                         content(random, 3, 100000, 1, Content::kNoise),
                         content(random, 100000, 3, 1, Content::kNoise),
                         content(random, 300, 400, 3, Content::kNoise),
                         any_seal_photo(random)};
    for (const U8& src : images)
        for (const Operation& operation : image_operations())
            printed_by([&] { run_on_a_small_stack(operation, src); });
}

// The worst input of the partition: many equal elements, and sorted ones.
TEST(Structure, row_grouping_and_hulls_get_by_with_it_too) {
    const auto work = [](void*) -> void* {
        orvex_991::vector<orvex_cv_991::Rect> rects;
        orvex_991::vector<orvex_cv_991::Point> points, hull;
        for (int k = 0; k < 100000; ++k) {
            rects.push_back(orvex_cv_991::Rect(k % 7, k / 50, 3, 2));
            points.push_back(orvex_cv_991::Point(k, k % 3));
        }
        orvex_991::vector<orvex_991::vector<orvex_cv_991::Rect>> rows;
        orvex_cv_991::CImgproc::divideComponentsToRows(rects, rows);
        orvex_cv_991::CImgproc::convexHull(points, hull);
        orvex_cv_991::CImgproc::minAreaRect(points);
        return nullptr;
    };
    printed_by([&] {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstacksize(&attributes, kStackBytes);
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &attributes, work, nullptr), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
    });
}

}  // namespace
}  // namespace testing_support
