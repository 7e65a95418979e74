#include "commands/resize.h"

#include <CLI/CLI.hpp>
#include <cmath>

#include "cli/options.h"
#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Size;

void add_resize(CLI::App& app, ResizeOptions& options) {
    add_picture_options(app, options);
    CLI::Option* const size =
        add_extents(app, "--size", options.size, "Make the result W columns wide and H rows high");
    add_positive(app, "--factor", options.factor,
                 "Instead of --size: scale both sides, dropping fractions of a pixel")
        ->excludes(size);
    app.callback([&options] {
        if (!options.size && !options.factor) throw CLI::RequiredError("--size or --factor");
    });
}

void resize(const ResizeOptions& options) {
    run_picture_command(options, [&](const Image& picture, Steps& steps, Summary&) {
        Image result;
        if (options.size) {
            const Size size(options.size->cols, options.size->rows);
            require_output_size(options, size.width, size.height);
            steps.run("resize", [&] { CImgproc::resize(picture, result, size, INTERP_LINEAR); });
        } else {
            const float factor = *options.factor;
            // In single precision, as the operation computes them.
            require_output_size(options, std::floor(static_cast<float>(picture.cols) * factor),
                                std::floor(static_cast<float>(picture.rows) * factor));
            steps.run("resize", [&] { CImgproc::resize(picture, result, factor, INTERP_LINEAR); });
        }
        return result;
    });
}

}  // namespace docprep
