#include "pipeline/bend.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "pipeline/baseline.h"
#include "pipeline/least_squares.h"

namespace docprep {

namespace {

constexpr size_t kLeastFeet = 5;     // of a line that says something about its shape
constexpr size_t kLeastLines = 4;    // that say something about the page's
constexpr double kWorthwhile = 0.3;  // of the text height: what lines must deviate from straight
constexpr double kLeastGain = 0.6;   // what is left of the deviation, at most
constexpr double kSteepest = 0.35;   // more is no page, but a mistake

using Line = std::vector<Place>;

Place mean_of(const Line& line) {
    Place mean;
    for (const Place& foot : line) {
        mean.x += foot.x / static_cast<double>(line.size());
        mean.y += foot.y / static_cast<double>(line.size());
    }
    return mean;
}

std::vector<Line> lines_of(const Rects& letters, const std::vector<Chain>& chains, double tolerance,
                           const AffineMatrix& level) {
    std::vector<Line> lines;
    for (const Chain& chain : chains) {
        if (chain.size() < kLeastFeet) continue;
        Line feet, line;
        for (const int k : chain) feet.push_back(mapped(level, foot_of(letters[k])));
        const Baseline baseline(feet, tolerance);
        std::copy_if(feet.begin(), feet.end(), std::back_inserter(line),
                     [&](const Place& foot) { return baseline.holds(foot); });
        if (line.size() >= kLeastFeet) lines.push_back(std::move(line));
    }
    return lines;
}

/// The part of the page that lines lie in.
struct Extent {
    Place centre;
    Place reach;

    explicit Extent(const std::vector<Line>& lines) {
        Place least = lines[0][0], most = least;
        for (const Line& line : lines)
            for (const Place& foot : line) {
                least = {std::min(least.x, foot.x), std::min(least.y, foot.y)};
                most = {std::max(most.x, foot.x), std::max(most.y, foot.y)};
            }
        centre = {(least.x + most.x) / 2, (least.y + most.y) / 2};
        reach = {(most.x - least.x) / 2 + 1, (most.y - least.y) / 2 + 1};
    }
};

std::array<double, Bend::kTerms> powers(double t, double s) {
    std::array<double, Bend::kTerms> row{};
    size_t k = 0;
    double across = t;
    for (int i = 0; i < Bend::kAcross; ++i, across *= t) {
        double down = 1;
        for (int j = 0; j < Bend::kDown; ++j, down *= s) row[k++] = across * down;
    }
    return row;
}

/// The polynomial under which the feet of each line lie on one height.
Bend fitted(const std::vector<Line>& lines, const Extent& extent) {
    LeastSquares<Bend::kTerms> squares;
    double feet = 0;
    for (const Line& line : lines) {
        // Only how a line runs counts, not where it lies: everything less its mean over the line.
        const Place mean = mean_of(line);
        const double s = (mean.y - extent.centre.y) / extent.reach.y;
        std::array<double, Bend::kTerms> mean_row{};
        for (const Place& foot : line) {
            const auto row = powers((foot.x - extent.centre.x) / extent.reach.x, s);
            for (size_t k = 0; k < row.size(); ++k) mean_row[k] += row[k] / static_cast<double>(line.size());
        }
        for (const Place& foot : line) {
            auto row = powers((foot.x - extent.centre.x) / extent.reach.x, s);
            for (size_t k = 0; k < row.size(); ++k) row[k] -= mean_row[k];
            squares.add(row, foot.y - mean.y);
        }
        feet += static_cast<double>(line.size());
    }
    // The higher the power, the more must speak for it.
    std::array<double, Bend::kTerms> weight{};
    for (size_t k = 0; k < weight.size(); ++k) {
        const size_t across = k / Bend::kDown, down = k % Bend::kDown;
        weight[k] = feet * 2e-5 * std::pow(4.0, static_cast<double>(across + down));
    }
    return Bend(extent.centre, extent.reach, squares.solve(weight));
}

/// The mean distance of feet from the height of their line, which a bend takes off.
double unevenness(const std::vector<Line>& lines, const Bend& bend) {
    double sum = 0, feet = 0;
    for (const Line& line : lines) {
        const double middle = mean_of(line).y;
        std::vector<double> heights;
        for (const Place& foot : line) heights.push_back(foot.y - bend.shift(foot.x, middle));
        const double mean =
            std::accumulate(heights.begin(), heights.end(), 0.0) / static_cast<double>(heights.size());
        for (const double height : heights) sum += std::fabs(height - mean);
        feet += static_cast<double>(line.size());
    }
    return sum / feet;
}

/// Whether lines run less steep than any page's, and in their order.
bool plausible(const Bend& bend, const Extent& extent) {
    constexpr int kSteps = 16;
    for (int i = 0; i <= kSteps; ++i)
        for (int j = 0; j <= kSteps; ++j) {
            const double x = extent.centre.x + extent.reach.x * (2.0 * i / kSteps - 1);
            const double y = extent.centre.y + extent.reach.y * (2.0 * j / kSteps - 1);
            const double along = bend.shift(x + 1, y) - bend.shift(x - 1, y);
            const double down = bend.shift(x, y + 1) - bend.shift(x, y - 1);
            if (std::fabs(along / 2) > kSteepest || std::fabs(down / 2) > kSteepest) return false;
        }
    return true;
}

/// How far the lines' ends and middles lie from a straight level line.
double largest_shift(const std::vector<Line>& lines, const Bend& bend) {
    double most = 0;
    for (const Line& line : lines) {
        double low = HUGE_VAL, high = -HUGE_VAL;
        for (const Place& foot : line) {
            const double shift = bend.shift(foot.x, foot.y);
            low = std::min(low, shift);
            high = std::max(high, shift);
        }
        most = std::max(most, high - low);
    }
    return most;
}

}  // namespace

Bend::Bend(const Place& centre, const Place& reach, const std::array<double, kTerms>& terms)
    : none_(false), centre_(centre), reach_(reach), terms_(terms) {}

double Bend::shift(double x, double y) const {
    if (none_) return 0;
    const double t = (x - centre_.x) / reach_.x;
    const double s = std::clamp((y - centre_.y) / reach_.y, -1.0, 1.0);
    const double inside = std::clamp(t, -1.0, 1.0);
    double value = 0, slope = 0;  // Horner's scheme, from the highest power of x
    for (int i = kAcross; i >= 1; --i) {
        const double* const term = &terms_[static_cast<size_t>(i - 1) * kDown];
        const double factor = term[0] + s * (term[1] + s * term[2]);
        slope = slope * inside + i * factor;
        value = (value + factor) * inside;
    }
    return value + slope * (t - inside);
}

Bend Bend::seen_from(double x, double y) const {
    Bend moved = *this;
    moved.centre_.x -= x;
    moved.centre_.y -= y;
    return moved;
}

Bend find_bend(const Rects& letters, const std::vector<Chain>& chains, int text_height,
               const AffineMatrix& level) {
    const std::vector<Line> lines = lines_of(letters, chains, foot_tolerance(text_height), level);
    if (lines.size() < kLeastLines) return Bend();
    const Extent extent(lines);
    const Bend bend = fitted(lines, extent);
    if (largest_shift(lines, bend) < kWorthwhile * text_height || !plausible(bend, extent)) return Bend();
    if (unevenness(lines, bend) > kLeastGain * unevenness(lines, Bend())) return Bend();
    return bend;
}

}  // namespace docprep
