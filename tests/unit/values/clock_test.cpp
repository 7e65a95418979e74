#include <gtest/gtest.h>

#include "util_clock.h"

namespace testing_support {
namespace {

using orvex_991::Clock;

TEST(Clock, measures_between_start_and_stop) {
    Clock clock;
    EXPECT_EQ(clock.getTimeMS(), 0.0f);
    clock.start();
    volatile int work = 0;
    for (int i = 0; i < 100000; ++i) work = work + 1;
    clock.stop();
    const float once = clock.getTimeMS();
    EXPECT_GT(once, 0.0f);
    EXPECT_EQ(clock.getTimeMS(), once);
}

}  // namespace
}  // namespace testing_support
