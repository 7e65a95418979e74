#include <gtest/gtest.h>

#include "util_exception.h"

namespace testing_support {
namespace {

using orvex_991::CException;

TEST(Exception, carries_code_and_message) {
    const CException plain(3);
    EXPECT_EQ(plain.code, 3);
    EXPECT_STREQ(plain.message.c_str(), "");
    const CException copy = CException(CException(2, "none found"));
    EXPECT_EQ(copy.code, 2);
    EXPECT_STREQ(copy.message.c_str(), "none found");
}

}  // namespace
}  // namespace testing_support
