#include "pipeline/baseline.h"

#include <algorithm>
#include <cmath>

#include "pipeline/least_squares.h"

namespace docprep {

using orvex_cv_991::Rect;

namespace {

constexpr int kRounds = 8;
// In letters' weights: a word of few letters is straight, and level rather than steep. A long line shows its own
// shape; were it held straight, its ends would be taken for other letters' feet.
constexpr std::array<double, 3> kPriors = {1e-9, 0.05, 0.5};
constexpr double kFewFeet = 8;

std::array<double, 3> powers(double t) {
    return {1, t, t * t};
}

}  // namespace

Place foot_of(const Rect& letter) {
    return {letter.x + (letter.width - 1) / 2.0, letter.y + letter.height - 1.0};
}

double foot_tolerance(int text_height) {
    constexpr double kShare = 0.12;
    return std::max(kShare * text_height, 1.0);
}

Baseline::Baseline(const std::vector<Place>& feet, double tolerance) : tolerance_(tolerance) {
    std::vector<double> heights;
    for (const Place& foot : feet) {
        middle_.x += foot.x / static_cast<double>(feet.size());
        heights.push_back(foot.y);
    }
    std::nth_element(heights.begin(), heights.begin() + static_cast<ptrdiff_t>(heights.size() / 2),
                     heights.end());
    middle_.y = heights[heights.size() / 2];
    for (const Place& foot : feet) reach_ = std::max(reach_, std::fabs(foot.x - middle_.x));
    std::array<double, 3> priors = kPriors;
    const double few = std::min(kFewFeet / static_cast<double>(feet.size()), 1.0);
    for (double& prior : priors) prior *= few * few;
    // Each round, feet count the less the further they lie from the parabola of the round before.
    std::vector<double> weights(feet.size(), 1);
    for (int round = 0; round < kRounds; ++round) {
        LeastSquares<3> squares;
        for (size_t k = 0; k < feet.size(); ++k)
            squares.add(powers((feet[k].x - middle_.x) / reach_), feet[k].y - middle_.y, weights[k]);
        parabola_ = squares.solve(priors);
        for (size_t k = 0; k < feet.size(); ++k) {
            const double off = (feet[k].y - at(feet[k].x)) / tolerance_;
            weights[k] = 1 / (1 + off * off);
        }
    }
}

double Baseline::at(double x) const {
    // Beyond its feet it goes on straight.
    const double t = (x - middle_.x) / reach_, inside = std::clamp(t, -1.0, 1.0);
    const double slope = parabola_[1] + 2 * parabola_[2] * inside;
    return middle_.y + parabola_[0] + (parabola_[1] + parabola_[2] * inside) * inside + slope * (t - inside);
}

bool Baseline::holds(const Place& foot) const {
    return std::fabs(foot.y - at(foot.x)) <= tolerance_;
}

}  // namespace docprep
