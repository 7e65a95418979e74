// docprep morph: binary morphology on one picture.
#ifndef DOCPREP_MORPH_H
#define DOCPREP_MORPH_H

#include <optional>

#include "base/image.h"
#include "commands/picture_command.h"
#include "cv_geometry.h"

namespace docprep {

struct MorphOptions : PictureOptions {
    orvex_cv_991::MORPH_TYPE operation = orvex_cv_991::MORPH_DILATE;
    std::optional<Extents> window;
};

/// Whether every pixel of a picture (1 or 3 channels) is black or white.
bool is_black_and_white(const Image& picture);

/// The picture's first channel.
Image first_channel(const Image& picture);

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_morph(CLI::App& app, MorphOptions& options);

/// Runs the command. The foreground, 255, is what is white in a black and white picture, and what is dark,
/// as in binarise.h, in any other.
/// @throws Failure; CException from the library; std::bad_alloc
void morph(const MorphOptions& options);

}  // namespace docprep

#endif  // DOCPREP_MORPH_H
