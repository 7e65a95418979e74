// docprep warp: an affine map of one picture.
#ifndef DOCPREP_WARP_H
#define DOCPREP_WARP_H

#include <array>
#include <optional>

#include "picture_command.h"

namespace docprep {

/// [0 1 2; 3 4 5], from the picture's (x, y) to the result's.
using AffineMatrix = std::array<float, 6>;

struct WarpOptions : PictureOptions {
    std::optional<float> angle;          ///< degrees, anticlockwise
    std::optional<float> scale;          ///< with angle
    std::optional<AffineMatrix> matrix;  ///< instead of angle
    bool fit = false;                    ///< the result's size is chosen so that nothing is cut off
};

/// Reads six finite numbers with commas between them; nothing for any other text.
std::optional<AffineMatrix> parse_matrix(const std::string& text);

/// What parse_matrix reads as the same matrix.
std::string as_text(const AffineMatrix& matrix);

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_warp(CLI::App& app, WarpOptions& options);

/// Runs the command.
/// @throws Failure; CException from the library; std::bad_alloc
void warp(const WarpOptions& options);

}  // namespace docprep

#endif  // DOCPREP_WARP_H
