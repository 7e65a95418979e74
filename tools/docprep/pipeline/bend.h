// How far lines of text on a level page bend or converge.
#ifndef DOCPREP_BEND_H
#define DOCPREP_BEND_H

#include <array>
#include <vector>

#include "pipeline/affine.h"
#include "pipeline/text_chains.h"

namespace docprep {

/// Where the level lines of a straightened page lay before: point (x, y) was at (x, y + shift(x, y)). The shift is a
/// polynomial, over the part of the page that has text; beyond it, the shift goes on as it does at the edge.
class Bend {
 public:
    static constexpr int kAcross = 4;  ///< powers 1 .. 4 of x: no constant, a line is where its middle is
    static constexpr int kDown = 3;    ///< powers 0 .. 2 of y
    static constexpr size_t kTerms = size_t{kAcross} * kDown;

    /// No bend.
    Bend() = default;
    /// @param centre,reach  of the part with text: from centre - reach to centre + reach; reach above 0
    /// @param terms  factors of x^i y^j in units of reach, j = 0 .. kDown - 1 for i = 1, then for i = 2 and so on
    Bend(const Place& centre, const Place& reach, const std::array<double, kTerms>& terms);

    bool none() const { return none_; }

    double shift(double x, double y) const;

    /// The same bend of a page whose origin lies at (x, y) of this one's.
    Bend seen_from(double x, double y) const;

 private:
    bool none_ = true;
    Place centre_;
    Place reach_;
    std::array<double, kTerms> terms_{};
};

/// The bend of the lines that chains of letters stand on; none where it is too small or too doubtful.
/// @param level  takes the letters to the level page
Bend find_bend(const Rects& letters, const std::vector<Chain>& chains, int text_height,
               const AffineMatrix& level);

}  // namespace docprep

#endif  // DOCPREP_BEND_H
