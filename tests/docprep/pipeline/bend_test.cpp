#include "pipeline/bend.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "drawn.h"
#include "pipeline/text_chains.h"

using docprep::AffineMatrix;
using docprep::Bend;
using docprep::Rects;

namespace {

constexpr int kTextHeight = 14;
constexpr AffineMatrix kLevel = {1, 0, 0, 0, 1, 0};

using Shift = std::function<double(double, double)>;

/// A page of lines of 60 letters, its lines moved down by `shift`.
Rects page_of(int lines, const Shift& shift) {
    Rects letters;
    for (int line = 0; line < lines; ++line) {
        const double y = 100 + 40.0 * line;
        append(letters, letters_of_line(80, 60, [&](double x) { return y + shift(x, y); }));
    }
    return letters;
}

Bend bend_of(const Rects& letters, const AffineMatrix& level = kLevel) {
    return docprep::find_bend(letters, docprep::find_chains(letters, kTextHeight), kTextHeight, level);
}

/// By how much lines that were moved by `shift` deviate from straight ones after the bend is taken off.
double unevenness(const Bend& bend, int lines, const Shift& shift) {
    double most = 0;
    for (int line = 0; line < lines; ++line) {
        const double y = 100 + 40.0 * line;
        double low = HUGE_VAL, high = -HUGE_VAL;
        for (double x = 85; x <= 910; x += 5) {
            const double height = y + shift(x, y);
            // Where the straightened page has what lies at (x, height).
            double straight = height;
            for (int round = 0; round < 20; ++round) straight = height - bend.shift(x, straight);
            low = std::min(low, straight);
            high = std::max(high, straight);
        }
        most = std::max(most, high - low);
    }
    return most;
}

double parabola(double x, double y) {
    return (18 - 0.02 * y) * std::pow((x - 500) / 420, 2);
}

}  // namespace

TEST(bend, none_shifts_nothing) {
    const Bend none;
    EXPECT_TRUE(none.none());
    EXPECT_EQ(0, none.shift(123, 456));
    EXPECT_TRUE(none.seen_from(10, 20).none());
    EXPECT_EQ(0, none.seen_from(10, 20).shift(1, 2));
}

TEST(bend, terms_are_factors_of_powers) {
    for (size_t term = 0; term < Bend::kTerms; ++term) {
        std::array<double, Bend::kTerms> terms{};
        terms[term] = 6;
        const Bend bend({100, 50}, {40, 20}, terms);
        EXPECT_FALSE(bend.none());
        const auto across = static_cast<double>(1 + term / 3), down = static_cast<double>(term % 3);
        const double expected = 6 * std::pow(0.5, across) * std::pow(-0.25, down);
        EXPECT_NEAR(expected, bend.shift(120, 45), 1e-12) << term;
        EXPECT_EQ(0, bend.shift(100, 45)) << "a line is where its middle is";
    }
}

TEST(bend, beyond_the_text_it_goes_on_as_at_the_edge) {
    std::array<double, Bend::kTerms> terms{};
    for (size_t k = 0; k < terms.size(); ++k) terms[k] = 1.0 + static_cast<double>(k % 5);
    const Bend bend({100, 50}, {40, 20}, terms);
    for (const double x : {60.0, 90.0, 140.0, 300.0}) {
        EXPECT_NEAR(bend.shift(x, 70), bend.shift(x, 1000), 1e-9);
        EXPECT_NEAR(bend.shift(x, 30), bend.shift(x, -1000), 1e-9);
    }
    for (const double y : {30.0, 55.0, 70.0}) {
        const double right = (bend.shift(140, y) - bend.shift(139.999, y)) / 0.001;
        EXPECT_NEAR(bend.shift(140, y) + 200 * right, bend.shift(340, y), 0.1);
        const double left = (bend.shift(60.001, y) - bend.shift(60, y)) / 0.001;
        EXPECT_NEAR(bend.shift(60, y) - 200 * left, bend.shift(-140, y), 0.1);
    }
}

TEST(bend, seen_from_elsewhere_it_is_the_same) {
    std::array<double, Bend::kTerms> terms{};
    for (size_t k = 0; k < terms.size(); ++k) terms[k] = 2.0 - static_cast<double>(k);
    const Bend bend({100, 50}, {40, 20}, terms);
    const Bend moved = bend.seen_from(13, -7);
    for (const double x : {-50.0, 80.0, 200.0})
        for (const double y : {0.0, 45.0, 100.0})
            EXPECT_NEAR(bend.shift(x, y), moved.shift(x - 13, y + 7), 1e-9);
}

TEST(bend, straight_lines_have_none) {
    EXPECT_TRUE(bend_of(page_of(12, [](double, double) { return 0; })).none());
}

TEST(bend, bent_lines_become_straight) {
    const Shift wave = [](double x, double) { return 4 * std::sin(x / 190); };
    const Shift converging = [](double x, double y) { return 0.00006 * (x - 500) * (y - 400); };
    for (const Shift& shift : {Shift(parabola), wave, converging}) {
        const Bend bend = bend_of(page_of(20, shift));
        ASSERT_FALSE(bend.none());
        EXPECT_GT(unevenness(Bend(), 20, shift), 7);
        EXPECT_LT(unevenness(bend, 20, shift), 2);
    }
}

TEST(bend, it_is_that_of_the_level_page) {
    const Bend here = bend_of(page_of(20, parabola));
    const Bend there = bend_of(page_of(20, parabola), {1, 0, 30, 0, 1, -40});
    ASSERT_FALSE(there.none());
    for (const double x : {90.0, 500.0, 900.0})
        for (const double y : {120.0, 400.0, 800.0})
            EXPECT_NEAR(here.shift(x, y), there.shift(x + 30, y - 40), 0.01);
}

TEST(bend, a_third_of_a_text_height_is_too_little_to_resample_for) {
    const auto arch = [](double height) {
        return [height](double x, double) { return height * std::pow((x - 500) / 420, 2); };
    };
    EXPECT_TRUE(bend_of(page_of(12, arch(3))).none());
    EXPECT_FALSE(bend_of(page_of(12, arch(8))).none());
}

TEST(bend, four_lines_are_needed) {
    const Shift shift = [](double x, double) { return 18 * std::pow((x - 500) / 420, 2); };
    EXPECT_TRUE(bend_of(page_of(3, shift)).none());
    EXPECT_FALSE(bend_of(page_of(4, shift)).none());
}

TEST(bend, lines_steeper_than_those_of_pages_have_none) {
    // Neighbours by position, as no line this steep makes chains.
    const auto steep = [](double height) {
        Rects letters;
        std::vector<docprep::Chain> chains;
        for (int line = 0; line < 8; ++line) {
            chains.emplace_back();
            for (int k = 0; k < 60; ++k) chains.back().push_back(60 * line + k);
            append(letters, letters_of_line(80, 60, [&](double x) {
                       return 600 + 40.0 * line + height * std::pow((x - 500) / 420, 2);
                   }));
        }
        return docprep::find_bend(letters, chains, kTextHeight, kLevel);
    };
    EXPECT_FALSE(steep(50).none());
    EXPECT_TRUE(steep(150).none());  // 0.7 at the ends
}

TEST(bend, letters_without_order_have_none) {
    std::mt19937 random(5);
    Rects letters;
    for (int line = 0; line < 12; ++line)
        append(letters, letters_of_line(80, 60, [&](double) { return 100 + 40.0 * line + random() % 7; }));
    EXPECT_TRUE(bend_of(letters).none());
}

TEST(bend, nothing_has_none) {
    for (const int text_height : {0, 14, 1 << 20}) {
        EXPECT_TRUE(docprep::find_bend(Rects(), {}, text_height, kLevel).none());
        const Rects letters = page_of(4, parabola);
        EXPECT_TRUE(docprep::find_bend(letters, {}, text_height, kLevel).none());
    }
}
