#include "pipeline/text_chains.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "drawn.h"

using docprep::Chain;
using docprep::find_chains;
using docprep::Rects;
using docprep::right_neighbours;
using orvex_cv_991::Rect;

namespace {

constexpr int kTextHeight = 14;

std::vector<int> neighbours(const std::vector<Rect>& letters) {
    return right_neighbours(rects_of(letters), kTextHeight);
}

/// Whether the second of two letters is the neighbour of the first.
bool is_neighbour(const Rect& left, const Rect& right) {
    return neighbours({left, right}) == std::vector<int>{1, -1};
}

Rects noise(int n, int extent, int largest, unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    Rects rects;
    for (int k = 0; k < n; ++k)
        rects.push_back(Rect(below(extent), below(extent), 1 + below(largest), 1 + below(largest)));
    return rects;
}

}  // namespace

TEST(text_chains, a_neighbour_is_at_most_one_text_height_away) {
    EXPECT_TRUE(is_neighbour(Rect(10, 20, 10, 14), Rect(34, 20, 10, 14)));
    EXPECT_FALSE(is_neighbour(Rect(10, 20, 10, 14), Rect(35, 20, 10, 14)));
    EXPECT_TRUE(is_neighbour(Rect(10, 20, 10, 14), Rect(16, 20, 10, 14))) << "it may lean over the first";
}

TEST(text_chains, neighbours_overlap_by_half_of_the_lower_one) {
    EXPECT_TRUE(is_neighbour(Rect(10, 20, 10, 20), Rect(22, 33, 10, 14)));
    EXPECT_FALSE(is_neighbour(Rect(10, 20, 10, 20), Rect(22, 34, 10, 14)));
    EXPECT_TRUE(is_neighbour(Rect(10, 20, 10, 14), Rect(22, 0, 10, 60))) << "all of the lower one";
}

TEST(text_chains, dashes_and_rules_are_nobodys_neighbours) {
    const Rect letter(10, 20, 10, 14);
    EXPECT_TRUE(is_neighbour(letter, Rect(22, 25, 10, 6)));
    EXPECT_FALSE(is_neighbour(letter, Rect(22, 25, 10, 5)));
    EXPECT_EQ((std::vector<int>{-1, -1}), neighbours({Rect(10, 25, 10, 5), Rect(22, 20, 10, 14)}));
    // The letter behind the dash is reached across it.
    EXPECT_EQ((std::vector<int>{2, -1, -1}), neighbours({letter, Rect(22, 25, 6, 4), Rect(30, 20, 10, 14)}));
}

TEST(text_chains, the_nearest_of_several_is_the_neighbour_whatever_their_order) {
    const Rect first(10, 20, 10, 14), second(22, 20, 3, 14), third(28, 20, 5, 14);
    EXPECT_EQ((std::vector<int>{1, 2, -1}), neighbours({first, second, third}));
    EXPECT_EQ((std::vector<int>{-1, 0, 1}), neighbours({third, second, first}));
}

TEST(text_chains, of_two_letters_with_one_neighbour_the_nearest_has_it) {
    const Rect far(10, 20, 10, 14), near(12, 28, 14, 14), right(28, 24, 10, 14);
    ASSERT_TRUE(is_neighbour(far, right));
    ASSERT_TRUE(is_neighbour(near, right));
    EXPECT_EQ((std::vector<int>{-1, 2, -1}), neighbours({far, near, right}));
    EXPECT_EQ((std::vector<int>{2, -1, -1}), neighbours({near, far, right}));
}

TEST(text_chains, a_line_is_one_chain_from_left_to_right) {
    Rects letters = letters_of_line(20, 30, [](double x) { return 100 + 0.02 * x; });
    std::reverse(letters.data, letters.data + letters.size);
    const std::vector<Chain> chains = find_chains(letters, kTextHeight);
    ASSERT_EQ(1u, chains.size());
    ASSERT_EQ(30u, chains[0].size());
    for (size_t k = 0; k < 30; ++k) EXPECT_EQ(29 - static_cast<int>(k), chains[0][k]);
}

TEST(text_chains, lines_do_not_mix) {
    Rects letters;
    for (int line = 0; line < 6; ++line)
        append(letters, letters_of_line(20, 30, [&](double) { return 100 + 28 * line; }));
    const std::vector<Chain> chains = find_chains(letters, kTextHeight);
    ASSERT_EQ(6u, chains.size());
    for (size_t line = 0; line < 6; ++line)
        for (size_t k = 0; k < 30; ++k) ASSERT_EQ(static_cast<int>(30 * line + k), chains[line][k]);
}

TEST(text_chains, a_chain_has_3_letters_at_least) {
    const auto chains_of = [](int n, int step) {
        Rects letters;
        for (int k = 0; k < n; ++k) letters.push_back(Rect(10 + step * k, 20, 12, 14));
        return find_chains(letters, kTextHeight).size();
    };
    EXPECT_EQ(0u, chains_of(2, 20));
    EXPECT_EQ(1u, chains_of(3, 20));
}

TEST(text_chains, a_chain_is_2_text_heights_wide_at_least) {
    const auto chains_of_width = [](int width) {
        return find_chains(
                   rects_of({Rect(10, 20, 4, 14), Rect(16, 20, 4, 14), Rect(10 + width - 4, 20, 4, 14)}),
                   kTextHeight)
            .size();
    };
    EXPECT_EQ(0u, chains_of_width(27));
    EXPECT_EQ(1u, chains_of_width(28));
}

TEST(text_chains, chained_letters_are_those_of_all_chains) {
    Rects letters = letters_of_line(20, 5, [](double) { return 100; });
    letters.push_back(Rect(300, 300, 10, 14));
    append(letters, letters_of_line(20, 4, [](double) { return 200; }));
    const Rects chained = docprep::chained_letters(letters, find_chains(letters, kTextHeight));
    ASSERT_EQ(9, chained.size());
    for (int k = 0; k < 9; ++k) EXPECT_NE(300, chained[k].x);
    EXPECT_EQ(0, docprep::chained_letters(letters, {}).size());
}

TEST(text_chains, nothing_gives_nothing) {
    for (const int text_height : {0, 1, 14, 1 << 20}) {
        EXPECT_TRUE(right_neighbours(Rects(), text_height).empty());
        EXPECT_TRUE(find_chains(Rects(), text_height).empty());
    }
}

// A letter has one neighbour to each side at most, the right one begins further right: chains end.
TEST(text_chains, letters_of_noise_are_in_one_chain_at_most) {
    for (const unsigned seed : {1u, 2u, 3u})
        for (const int largest : {1, 9, 60})
            for (const int text_height : {0, 1, 8, 500}) {
                const Rects letters = noise(600, 400, largest, seed);
                const std::vector<int> right = right_neighbours(letters, text_height);
                ASSERT_EQ(600u, right.size());
                std::vector<int> left(600);
                for (int k = 0; k < 600; ++k) {
                    const int next = right[static_cast<size_t>(k)];
                    if (next < 0) continue;
                    ASSERT_GT(letters[next].x, letters[k].x);
                    ASSERT_LE(letters[next].x - letters[k].x - letters[k].width, std::max(text_height, 1));
                    ASSERT_EQ(1, ++left[static_cast<size_t>(next)]);
                }
                std::vector<int> in_chains(600);
                for (const Chain& chain : find_chains(letters, text_height))
                    for (const int k : chain) ASSERT_EQ(1, ++in_chains[static_cast<size_t>(k)]);
            }
}
