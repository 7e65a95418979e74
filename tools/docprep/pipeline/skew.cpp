#include "pipeline/skew.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace docprep {

using orvex_cv_991::Rect;

namespace {

constexpr int kLeastComponents = 12;
/// More say no more about the angle, and cost time.
constexpr int kMostComponents = 4000;

/// How angles are tried: in degrees, and how many places lie within a text height.
struct Search {
    double step;
    double reach;  ///< to both sides of the middle
    double places;
};
constexpr Search kCoarse = {0.1, kMostSkew, 5};
constexpr Search kFine = {0.02, 1, 10};

/// Scattered marks fall together by chance only: their best angle is hardly better than the median one.
constexpr double kLeastGain = 1.5;
/// Angles as good as the best: short rows are as level over a range of angles, and their middle is meant.
constexpr double kAsGood = 0.97;

/// The middle of a component's lower edge.
struct Foot {
    double x;
    double y;
};

std::vector<Foot> feet_of(const Rects& components) {
    std::vector<Foot> feet;
    const int step = components.size / kMostComponents + 1;
    for (int k = 0; k < components.size; k += step) {
        const Rect& rect = components[k];
        feet.push_back({rect.x + rect.width / 2.0, static_cast<double>(rect.y) + rect.height});
    }
    return feet;
}

/// How unequally feet are spread when seen along rows that fall by an angle.
class Spread {
 public:
    explicit Spread(const TextComponents& text)
        : feet_(feet_of(text.kept)), text_height_(text.text_height), places_(feet_.size()) {}

    /// The number of pairs of feet on one place, for each angle tried.
    std::vector<double> scores(const Search& search, double middle) {
        std::vector<double> scores;
        const int steps = static_cast<int>(std::lround(search.reach / search.step));
        const double place = std::max(text_height_ / search.places, 1.0);
        for (int k = -steps; k <= steps; ++k) scores.push_back(score(middle + k * search.step, place));
        return scores;
    }

 private:
    double score(double degrees, double place) {
        constexpr double kRadians = 3.14159265358979324 / 180;
        const double down = std::cos(degrees * kRadians) / place;
        const double right = std::sin(degrees * kRadians) / place;
        for (size_t k = 0; k < feet_.size(); ++k) places_[k] = feet_[k].y * down - feet_[k].x * right;
        std::sort(places_.begin(), places_.end());
        // Each foot counts those less than a place below it: places of fixed bounds would part neighbours.
        double pairs = 0;
        size_t end = 0;
        for (size_t k = 0; k < places_.size(); ++k) {
            while (end < places_.size() && places_[end] < places_[k] + 1) ++end;
            pairs += static_cast<double>(end - k);
        }
        return pairs;
    }

    std::vector<Foot> feet_;
    double text_height_;
    std::vector<double> places_;
};

/// The middle of the angles that are as good as the best.
double middle_of_best(const std::vector<double>& scores, const Search& search, double middle) {
    const double least = kAsGood * *std::max_element(scores.begin(), scores.end());
    double sum = 0;
    int n = 0;
    for (size_t k = 0; k < scores.size(); ++k) {
        if (scores[k] < least) continue;
        sum += static_cast<double>(k) * search.step;
        ++n;
    }
    return middle - search.reach + sum / n;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

double estimate_skew(const TextComponents& text) {
    if (text.kept.size < kLeastComponents) return 0;
    Spread spread(text);
    const std::vector<double> coarse = spread.scores(kCoarse, 0);
    const auto best = std::max_element(coarse.begin(), coarse.end());
    if (*best < kLeastGain * median(coarse)) return 0;
    const double middle = static_cast<double>(best - coarse.begin()) * kCoarse.step - kCoarse.reach;
    return middle_of_best(spread.scores(kFine, middle), kFine, middle);
}

}  // namespace docprep
