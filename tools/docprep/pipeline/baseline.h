// The line that letters of a row stand on.
#ifndef DOCPREP_BASELINE_H
#define DOCPREP_BASELINE_H

#include <array>
#include <vector>

#include "pipeline/affine.h"
#include "pipeline/text_components.h"

namespace docprep {

/// The middle of a component's lower edge.
Place foot_of(const orvex_cv_991::Rect& letter);

/// A parabola through most of the feet of a row: descenders and raised marks do not move it.
class Baseline {
 public:
    /// @param feet  at least one, from left to right
    /// @param tolerance  in pixels: how far from it feet are taken for those of other letters
    Baseline(const std::vector<Place>& feet, double tolerance);

    double at(double x) const;
    bool holds(const Place& foot) const;

 private:
    double tolerance_;
    Place middle_;
    double reach_ = 1;
    std::array<double, 3> parabola_{};
};

/// What Baseline takes for a foot that is off.
double foot_tolerance(int text_height);

}  // namespace docprep

#endif  // DOCPREP_BASELINE_H
