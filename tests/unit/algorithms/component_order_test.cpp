#include "algorithms/component_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "images.h"
#include "util_vector.h"

namespace orvex_cv_991 {
namespace {

using testing_support::Random;

// Index 0 .. n - 1 after the exchange sort over neighbours, exchange by exchange.
std::vector<int> exchanged(const std::vector<int>& areas) {
    std::vector<int> index(areas.size());
    std::iota(index.begin(), index.end(), 0);
    const auto area = [&](int j) { return areas[static_cast<size_t>(index[static_cast<size_t>(j)])]; };
    const int n = static_cast<int>(areas.size());
    for (int i = 0; i < n - 1; ++i)
        for (int j = 0; j < n - 1 - i; ++j)
            if (!(area(j + 1) < area(j)))
                std::swap(index[static_cast<size_t>(j)], index[static_cast<size_t>(j) + 1]);
    return index;
}

std::vector<int> partitioned(const std::vector<int>& areas) {
    orvex_991::vector<int> index;
    for (size_t i = 0; i < areas.size(); ++i) index.push_back(static_cast<int>(i));
    const auto larger = [&](int a, int b) {
        return areas[static_cast<size_t>(a)] > areas[static_cast<size_t>(b)];
    };
    orvex_991::quick_partition(index, 0, static_cast<int>(areas.size()) - 1, larger);
    return std::vector<int>(index.data, index.data + areas.size());
}

std::vector<int> random_areas(std::mt19937& random, size_t n) {
    const int kinds[] = {1, 2, 3, 8, 50, 1000000};
    const int levels = kinds[random() % 6];
    std::vector<int> areas(n);
    for (int& area : areas) {
        area = static_cast<int>(random() % static_cast<unsigned>(levels));
        if (levels == 8)  // few large ones, as of components
            while (random() % 2) ++area;
    }
    return areas;
}

TEST(ComponentOrder, exchange_order_is_that_of_the_exchanges) {
    std::mt19937 random(81);
    for (int round = 0; round < 60000; ++round) {
        const std::vector<int> areas = random_areas(random, random() % (round % 100 ? 14 : 300));
        ASSERT_EQ(exchange_order(areas), exchanged(areas)) << "round " << round;
    }
}

TEST(ComponentOrder, partition_order_is_that_of_quick_partition) {
    std::mt19937 random(82);
    for (int round = 0; round < 60000; ++round) {
        const std::vector<int> areas = random_areas(random, random() % (round % 50 ? 40 : 900));
        ASSERT_EQ(partition_order(areas), partitioned(areas)) << "round " << round;
    }
}

TEST(ComponentOrder, sorted_and_equal_areas_keep_to_the_scheme) {
    for (const int step : {-3, 0, 3}) {
        std::vector<int> areas(700);
        for (size_t i = 0; i < areas.size(); ++i) areas[i] = 3000 + step * static_cast<int>(i);
        ASSERT_EQ(exchange_order(areas), exchanged(areas)) << step;
        ASSERT_EQ(partition_order(areas), partitioned(areas)) << step;
    }
}

TEST(ComponentOrder, equals_the_procedures_on_every_small_input) {
    for (int n = 0; n <= 7; ++n) {
        int inputs = 1;
        for (int k = 0; k < n; ++k) inputs *= 4;
        for (int code = 0; code < inputs; ++code) {
            std::vector<int> areas;
            for (int k = 0, rest = code; k < n; ++k, rest /= 4) areas.push_back(rest % 4);
            ASSERT_EQ(exchange_order(areas), exchanged(areas)) << "n " << n << " code " << code;
            ASSERT_EQ(partition_order(areas), partitioned(areas)) << "n " << n << " code " << code;
        }
    }
}

TEST(ComponentOrder, equals_the_procedures_on_random_inputs) {
    Random random(41);
    for (int round = 0; round < 20000; ++round) {
        std::vector<int> areas(static_cast<size_t>(random.range(0, round % 100 ? 24 : 300)));
        const int levels = random.pick({1, 2, 3, 8, 1000, INT32_MAX});
        for (int& area : areas) area = random.range(levels == 1000 ? -1000 : 0, levels);
        if (random.chance(10)) std::sort(areas.begin(), areas.end());
        if (random.chance(10)) std::sort(areas.rbegin(), areas.rend());
        ASSERT_EQ(exchange_order(areas), exchanged(areas)) << "round " << round;
        ASSERT_EQ(partition_order(areas), partitioned(areas)) << "round " << round;
    }
}

}  // namespace
}  // namespace orvex_cv_991
