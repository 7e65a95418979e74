// docprep warp: an affine map of one picture.
#ifndef DOCPREP_WARP_H
#define DOCPREP_WARP_H

#include <optional>

#include "commands/picture_command.h"
#include "pipeline/affine.h"

namespace docprep {

struct WarpOptions : PictureOptions {
    std::optional<float> angle;          ///< degrees, anticlockwise
    std::optional<float> scale;          ///< with angle
    std::optional<AffineMatrix> matrix;  ///< instead of angle
    bool fit = false;                    ///< the result's size is chosen so that nothing is cut off
};

/// Reads six finite numbers with commas between them, as as_text writes them; nothing for any other text.
std::optional<AffineMatrix> parse_matrix(const std::string& text);

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_warp(CLI::App& app, WarpOptions& options);

/// Runs the command.
/// @throws Failure; CException from the library; std::bad_alloc
void warp(const WarpOptions& options);

}  // namespace docprep

#endif  // DOCPREP_WARP_H
