#include "pipeline/baseline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "pipeline/least_squares.h"

using docprep::Baseline;
using docprep::LeastSquares;
using docprep::Place;
using orvex_cv_991::Rect;

namespace {

constexpr std::array<double, 3> kTiny = {1e-12, 1e-12, 1e-12};

/// Feet every 14 pixels; every `descends`th lies 5 pixels below the line.
std::vector<Place> feet_on(const std::function<double(double)>& line, int n, int descends) {
    std::vector<Place> feet;
    for (int k = 0; k < n; ++k) {
        const double x = 100 + 14.0 * k;
        feet.push_back({x, line(x) + (k % descends == descends - 1 ? 5 : 0)});
    }
    return feet;
}

double largest_error(const Baseline& baseline, const std::function<double(double)>& line, double left,
                     double right) {
    double most = 0;
    for (double x = left; x <= right; ++x) most = std::max(most, std::fabs(baseline.at(x) - line(x)));
    return most;
}

}  // namespace

TEST(least_squares, equations_that_agree_are_solved) {
    LeastSquares<3> squares;
    for (int t = -3; t <= 3; ++t) squares.add({1, 1.0 * t, 1.0 * t * t}, 7 - 2.0 * t + 0.5 * t * t);
    const auto solution = squares.solve(kTiny);
    EXPECT_NEAR(7, solution[0], 1e-9);
    EXPECT_NEAR(-2, solution[1], 1e-9);
    EXPECT_NEAR(0.5, solution[2], 1e-9);
}

TEST(least_squares, the_mean_is_nearest_to_values_that_differ_and_follows_their_weights) {
    LeastSquares<1> even, weighted;
    even.add({1}, 10);
    even.add({1}, 20);
    EXPECT_NEAR(15, even.solve({1e-12})[0], 1e-9);
    weighted.add({1}, 10, 3);
    weighted.add({1}, 20, 1);
    EXPECT_NEAR(12.5, weighted.solve({1e-12})[0], 1e-9);
}

TEST(least_squares, unknowns_that_no_equation_speaks_of_are_0) {
    LeastSquares<3> squares;
    squares.add({1, 0, 0}, 4);
    EXPECT_EQ((std::array<double, 3>{2, 0, 0}), squares.solve({1, 1, 1}));
    EXPECT_EQ((std::array<double, 3>{0, 0, 0}), LeastSquares<3>().solve({1, 1, 1}));
}

TEST(least_squares, the_residual_is_perpendicular_to_every_unknown) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> uniform(-1, 1);
    LeastSquares<4> squares;
    std::vector<std::array<double, 4>> rows;
    std::vector<double> values;
    for (int k = 0; k < 30; ++k) {
        rows.push_back({uniform(random), uniform(random), uniform(random), uniform(random)});
        values.push_back(uniform(random));
        squares.add(rows.back(), values.back());
    }
    const auto solution = squares.solve({1e-12, 1e-12, 1e-12, 1e-12});
    for (size_t i = 0; i < 4; ++i) {
        double product = 0;
        for (size_t k = 0; k < rows.size(); ++k) {
            double left = values[k];
            for (size_t j = 0; j < 4; ++j) left -= rows[k][j] * solution[j];
            product += left * rows[k][i];
        }
        EXPECT_NEAR(0, product, 1e-9);
    }
}

TEST(baseline, a_foot_is_the_middle_of_the_lowest_pixels) {
    EXPECT_EQ(12, docprep::foot_of(Rect(10, 20, 5, 8)).x);
    EXPECT_EQ(27, docprep::foot_of(Rect(10, 20, 5, 8)).y);
    EXPECT_EQ(3.5, docprep::foot_of(Rect(3, 0, 2, 1)).x);
    EXPECT_EQ(0, docprep::foot_of(Rect(3, 0, 2, 1)).y);
}

TEST(baseline, the_tolerance_is_a_share_of_the_text_height_and_a_pixel_at_least) {
    EXPECT_EQ(1, docprep::foot_tolerance(0));
    EXPECT_EQ(1, docprep::foot_tolerance(8));
    EXPECT_NEAR(4.8, docprep::foot_tolerance(40), 1e-9);
}

TEST(baseline, descenders_do_not_move_it) {
    for (const double slope : {0.0, 0.05, -0.2}) {
        const auto line = [&](double x) { return 300 + slope * x; };
        const Baseline baseline(feet_on(line, 30, 4), 1.7);
        EXPECT_LT(largest_error(baseline, line, 100, 520), 0.5) << slope;
    }
}

TEST(baseline, it_follows_a_bent_line) {
    const auto line = [](double x) { return 300 + 40 * std::pow((x - 310) / 210, 2); };
    const Baseline baseline(feet_on(line, 31, 6), 1.7);
    EXPECT_LT(largest_error(baseline, line, 100, 520), 0.8);
}

TEST(baseline, beyond_its_feet_it_goes_on_straight) {
    const auto line = [](double x) { return 300 + 12 * std::pow((x - 310) / 210, 2); };
    const Baseline baseline(feet_on(line, 31, 99), 1.7);
    for (const double step : {10.0, 1000.0}) {
        const double end = 520, slope = (baseline.at(end) - baseline.at(end - 0.01)) / 0.01;
        EXPECT_NEAR(baseline.at(end) + step * slope, baseline.at(end + step), 0.001 * step);
        const double begin = 100, fall = (baseline.at(begin + 0.01) - baseline.at(begin)) / 0.01;
        EXPECT_NEAR(baseline.at(begin) - step * fall, baseline.at(begin - step), 0.001 * step);
    }
}

TEST(baseline, it_holds_what_lies_within_the_tolerance) {
    const Baseline baseline(feet_on([](double) { return 300; }, 20, 99), 2);
    EXPECT_TRUE(baseline.holds({200, 301.9}));
    EXPECT_TRUE(baseline.holds({200, 298.1}));
    EXPECT_FALSE(baseline.holds({200, 302.1}));
    EXPECT_FALSE(baseline.holds({200, 297.9}));
}

TEST(baseline, one_foot_and_feet_above_each_other_give_a_level_line) {
    const Baseline one({{50, 70}}, 1);
    EXPECT_NEAR(70, one.at(50), 1e-6);
    EXPECT_NEAR(70, one.at(500), 1e-6);
    const Baseline above({{50, 70}, {50, 70}, {50, 90}}, 1);
    EXPECT_NEAR(70, above.at(50), 0.5);
    EXPECT_NEAR(above.at(50), above.at(500), 1e-6);
}

TEST(baseline, words_of_few_letters_stay_nearly_level) {
    // Two feet would otherwise give a slope of 3 in 14.
    const Baseline word({{100, 200}, {114, 203}}, 1);
    EXPECT_LT(std::fabs(word.at(114) - word.at(100)), 3);
    EXPECT_GT(word.at(100), 199.9);
    EXPECT_LT(word.at(114), 203.1);
}
