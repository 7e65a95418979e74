// Fitting polynomials to points.
#ifndef DOCPREP_LEAST_SQUARES_H
#define DOCPREP_LEAST_SQUARES_H

#include <array>
#include <cstddef>

namespace docprep {

/// Least squares of n unknowns, by normal equations.
template <size_t n>
class LeastSquares {
 public:
    using Row = std::array<double, n>;

    /// The equation row * unknowns = value.
    void add(const Row& row, double value, double weight = 1) {
        for (size_t i = 0; i < n; ++i) {
            for (size_t j = 0; j < n; ++j) matrix_[i][j] += weight * row[i] * row[j];
            right_[i] += weight * row[i] * value;
        }
    }

    /// The solution, with weights above 0 that keep small what the equations say little about. The matrix is then
    /// positive definite, so that elimination needs no pivots.
    Row solve(const Row& weights) {
        for (size_t i = 0; i < n; ++i) matrix_[i][i] += weights[i];
        for (size_t i = 0; i < n; ++i)
            for (size_t k = i + 1; k < n; ++k) {
                const double factor = matrix_[k][i] / matrix_[i][i];
                for (size_t j = i; j < n; ++j) matrix_[k][j] -= factor * matrix_[i][j];
                right_[k] -= factor * right_[i];
            }
        Row solution{};
        for (size_t i = n; i-- > 0;) {
            double sum = right_[i];
            for (size_t j = i + 1; j < n; ++j) sum -= matrix_[i][j] * solution[j];
            solution[i] = sum / matrix_[i][i];
        }
        return solution;
    }

 private:
    std::array<Row, n> matrix_{};
    Row right_{};
};

}  // namespace docprep

#endif  // DOCPREP_LEAST_SQUARES_H
