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
    double place = 0;  ///< across the rows, as seen along an angle
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
    explicit Spread(const TextComponents& text) : feet_(feet_of(text.kept)), text_height_(text.text_height) {}

    /// The number of pairs of feet on one place, for each angle tried.
    std::vector<double> scores(const Search& search, double middle) {
        std::vector<double> scores;
        const int steps = static_cast<int>(std::lround(search.reach / search.step));
        const double place = std::max(text_height_ / search.places, 1.0);
        see_along(middle - steps * search.step, place);
        std::sort(feet_.begin(), feet_.end(), [](const Foot& a, const Foot& b) { return a.place < b.place; });
        for (int k = -steps; k <= steps; ++k) {
            see_along(middle + k * search.step, place);
            sort_again();
            scores.push_back(pairs());
        }
        return scores;
    }

 private:
    void see_along(double degrees, double place) {
        constexpr double kRadians = 3.14159265358979324 / 180;
        const double down = std::cos(degrees * kRadians) / place;
        const double right = std::sin(degrees * kRadians) / place;
        for (Foot& foot : feet_) foot.place = foot.y * down - foot.x * right;
    }

    /// By insertion: from one angle to the next few feet change sides, and no two do so twice on the way through all.
    void sort_again() {
        for (size_t k = 1; k < feet_.size(); ++k) {
            const Foot foot = feet_[k];
            size_t to = k;
            for (; to > 0 && feet_[to - 1].place > foot.place; --to) feet_[to] = feet_[to - 1];
            feet_[to] = foot;
        }
    }

    /// Each foot counts those less than a place below it: places of fixed bounds would part neighbours.
    double pairs() const {
        double pairs = 0;
        size_t end = 0;
        for (size_t k = 0; k < feet_.size(); ++k) {
            while (end < feet_.size() && feet_[end].place < feet_[k].place + 1) ++end;
            pairs += static_cast<double>(end - k);
        }
        return pairs;
    }

    std::vector<Foot> feet_;  // in the order of their places
    double text_height_;
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
