#include "coordinate.h"

#include <cmath>

namespace testing_support {

Coordinate any_coordinate_inside(Random& random, size_t size, size_t first, size_t n) {
    const float last = static_cast<float>(size - 1);
    const auto any_end = [&] {
        if (random.chance(30)) return 0.0f;
        if (random.chance(30)) return std::nextafter(last, 0.0f);
        return last * static_cast<float>(random.range(0, 4095)) / 4096.0f;
    };
    for (;;) {
        const float begin = any_end(), end = random.chance(20) ? begin : any_end();
        const float step = n > 1 ? (end - begin) / static_cast<float>(n - 1) : end - begin;
        const float offset = static_cast<float>(random.range(-400, 400)) / 16.0f;
        const Coordinate coordinate{begin - step * static_cast<float>(first) - offset, step, offset};
        const auto is_inside = [&](float x) { return x >= 0.0f && x < last; };
        if (n == 0 || (is_inside(coordinate.at(first)) && is_inside(coordinate.at(first + n - 1))))
            return coordinate;
    }
}

size_t any_first(Random& random) {
    return static_cast<size_t>(random.pick({0, 1, 5, 64, 1000, 16383}));
}

int weight_q11(float x) {
    const float fraction = x - std::floor(x);
    const float rest = 1.0f - fraction;
    return static_cast<int>(rest * 2048.0f);
}

}  // namespace testing_support
