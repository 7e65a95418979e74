// docprep resize: one picture in another size.
#ifndef DOCPREP_RESIZE_H
#define DOCPREP_RESIZE_H

#include <optional>

#include "commands/picture_command.h"

namespace docprep {

struct ResizeOptions : PictureOptions {
    std::optional<Extents> size;
    std::optional<float> factor;  ///< instead of size; above 0
};

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_resize(CLI::App& app, ResizeOptions& options);

/// Runs the command.
/// @throws Failure; CException from the library; std::bad_alloc
void resize(const ResizeOptions& options);

}  // namespace docprep

#endif  // DOCPREP_RESIZE_H
