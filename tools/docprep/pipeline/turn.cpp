#include "pipeline/turn.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "pipeline/text_chains.h"

namespace docprep {

using orvex_cv_991::Rect;

namespace {

// Found on 124 photographs and pages, of which 121 were brought upright and no upright one was turned.
constexpr double kAgreement = 0.08;  // of the text height
constexpr double kSideways = 1.3;    // times the pairs of the page as it lies
constexpr int kLeastSideways = 40;
constexpr double kUpsideDown = 1.15;  // times the pairs that agree at their feet
constexpr int kLeastUpright = 60;

/// Steeper neighbours say nothing about the page's slope.
constexpr double kSteepest = 0.3;
constexpr double kSlopeStep = 0.01;

/// From the middle of a letter to that of its right neighbour.
struct Pair {
    double dx;
    double feet_dy;
    double heads_dy;
};

std::vector<Pair> pairs_of(const TextComponents& text) {
    const std::vector<int> right = right_neighbours(text.kept, text.text_height);
    std::vector<Pair> pairs;
    for (int k = 0; k < text.kept.size; ++k) {
        if (right[static_cast<size_t>(k)] < 0) continue;
        const Rect& a = text.kept[k];
        const Rect& b = text.kept[right[static_cast<size_t>(k)]];
        const double dx = b.x - a.x + (b.width - a.width) / 2.0;
        if (dx > 0)
            pairs.push_back(
                {dx, static_cast<double>(b.y + b.height - a.y - a.height), static_cast<double>(b.y - a.y)});
    }
    return pairs;
}

/// The slope on which most pairs agree, by their feet or their heads.
double common_slope(const std::vector<Pair>& pairs) {
    constexpr int kReach = static_cast<int>(kSteepest / kSlopeStep + 0.5);
    std::vector<int> votes(2 * kReach + 3);  // one more at each end, so that every slope has neighbours
    const auto vote = [&](double slope) {
        if (std::fabs(slope) <= kSteepest)
            ++votes[static_cast<size_t>(std::lround(slope / kSlopeStep) + kReach + 1)];
    };
    for (const Pair& pair : pairs) {
        vote(pair.feet_dy / pair.dx);
        vote(pair.heads_dy / pair.dx);
    }
    int best = 0;
    double sum = 0;  // of the steps that have the most votes together with their neighbours, for their middle
    int ties = 0;
    for (int k = 1; k <= 2 * kReach + 1; ++k) {
        const auto at = static_cast<size_t>(k);
        const int score = votes[at - 1] + 2 * votes[at] + votes[at + 1];
        if (score < best) continue;
        if (score > best) sum = ties = 0;
        best = score;
        sum += k - kReach - 1;
        ++ties;
    }
    return best > 0 ? sum / ties * kSlopeStep : 0;
}

bool upside_down(const Alignment& alignment) {
    return alignment.all() >= kLeastUpright && alignment.heads > kUpsideDown * alignment.feet;
}

}  // namespace

Alignment alignment_of(const TextComponents& text) {
    const std::vector<Pair> pairs = pairs_of(text);
    const double slope = common_slope(pairs);
    const double tolerance = std::max(kAgreement * text.text_height, 0.5);
    Alignment alignment;
    alignment.pairs = static_cast<int>(pairs.size());
    for (const Pair& pair : pairs) {
        alignment.feet += std::fabs(pair.feet_dy - slope * pair.dx) <= tolerance;
        alignment.heads += std::fabs(pair.heads_dy - slope * pair.dx) <= tolerance;
    }
    return alignment;
}

double TurnEvidence::confidence() const {
    const Alignment& chosen = degrees % 180 == 0 ? level : sideways;
    if (chosen.all() == 0) return 0;
    const double axis = static_cast<double>(chosen.all()) / (level.all() + sideways.all());
    const int side = degrees >= 180 ? chosen.heads : chosen.feet;
    return std::min(axis, static_cast<double>(side) / chosen.all());
}

Rects turned_clockwise(const Rects& rects, int rows) {
    Rects turned;
    for (int k = 0; k < rects.size; ++k) {
        const Rect& rect = rects[k];
        turned.push_back(Rect(rows - rect.y - rect.height, rect.x, rect.height, rect.width));
    }
    return turned;
}

TurnEvidence find_turn(const Rects& components, int rows, int cols) {
    TurnEvidence turn;
    turn.level = alignment_of(select_text(components, rows, cols));
    turn.sideways = alignment_of(select_text(turned_clockwise(components, rows), cols, rows));
    const bool sideways =
        turn.sideways.all() > kLeastSideways && turn.sideways.all() > kSideways * turn.level.all();
    const Alignment& chosen = sideways ? turn.sideways : turn.level;
    turn.sure = chosen.all() >= kLeastUpright || sideways;
    turn.degrees = (sideways ? 90 : 0) + (upside_down(chosen) ? 180 : 0);
    return turn;
}

}  // namespace docprep
