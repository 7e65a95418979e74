// Comparisons with the reference as assertions of GoogleTest, which other programs do without.
#ifndef ORVEX_TESTS_SUPPORT_SAME_H
#define ORVEX_TESTS_SUPPORT_SAME_H

#include <gtest/gtest.h>

#include "operations.h"
#include "outcome.h"

namespace testing_support {

/// Whether both calls did the same; if not, where they first differ.
testing::AssertionResult same(const Outcome& library, const Outcome& reference);

/// Runs both on the same image and outputs; with `in_place` the destination is the source.
testing::AssertionResult equals_reference(const Operation& operation, const U8& src, bool in_place);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_SAME_H
