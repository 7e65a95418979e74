#include "driver.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "same.h"

namespace fuzzing {

std::vector<Driver>& drivers() {
    static std::vector<Driver> all;
    return all;
}

void fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

void require_same(const Outcome& library, const Outcome& plain, const std::string& what) {
    const testing::AssertionResult result = same(library, plain);
    if (!result) fail(what + ": " + result.message());
}

float canonical(float value) {
    return std::isnan(value) ? std::numeric_limits<float>::quiet_NaN() : value;
}

}  // namespace fuzzing
