#include "commands/warp.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>

#include "cli/options.h"
#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Size;

namespace {

/// Moves what is mapped to the middle of a result that is just large enough for it.
Size fit(AffineMatrix& matrix, const Image& picture, const PictureOptions& options) {
    const WideExtents extents = mapped_extents(matrix, picture);
    require_output_size(options, extents.cols, extents.rows);
    const Size size(static_cast<int>(extents.cols), static_cast<int>(extents.rows));
    centre_in(matrix, picture, size.width, size.height);
    return size;
}

}  // namespace

std::optional<AffineMatrix> parse_matrix(const std::string& text) {
    const std::vector<std::string> parts = split(text, ',');
    AffineMatrix matrix;
    if (parts.size() != matrix.size()) return std::nullopt;
    for (size_t k = 0; k < matrix.size(); ++k) {
        const char* const end = parts[k].data() + parts[k].size();
        const auto [stop, error] = std::from_chars(parts[k].data(), end, matrix[k]);
        if (error != std::errc() || stop != end || !std::isfinite(matrix[k])) return std::nullopt;
    }
    return matrix;
}

void add_warp(CLI::App& app, WarpOptions& options) {
    add_picture_options(app, options);
    CLI::Option* const angle =
        add_number(app, "--angle", options.angle, "Turn about the centre, degrees anticlockwise");
    add_positive(app, "--scale", options.scale, "With --angle: enlarge by this factor as well")->needs(angle);
    const auto set_matrix = [&options](const std::string& text) {
        options.matrix = parse_matrix(text);
        if (!options.matrix)
            throw CLI::ValidationError("--matrix", "'" + text + "' is not six numbers a,b,c,d,e,f");
        const AffineMatrix& m = *options.matrix;
        if (m[0] * m[4] - m[1] * m[3] == 0)
            throw CLI::ValidationError("--matrix", "'" + text + "' maps everything to a line or a point");
    };
    app.add_option_function<std::string>(
           "--matrix", set_matrix,
           "Instead of --angle: take the picture's (x, y) to (a x + b y + c, d x + e y + f)")
        ->type_name("a,b,c,d,e,f")
        ->excludes(angle);
    app.add_flag("--fit", options.fit, "Choose the result's size and shift so that nothing is cut off");
    app.callback([&options] {
        if (!options.angle && !options.matrix) throw CLI::RequiredError("--angle or --matrix");
    });
}

void warp(const WarpOptions& options) {
    run_picture_command(options, [&](const Image& picture, Steps& steps, Summary& summary) {
        AffineMatrix matrix = options.matrix
                                  ? *options.matrix
                                  : turn_about_centre(*options.angle, options.scale.value_or(1), picture);
        Size size(picture.cols, picture.rows);
        if (options.fit) size = fit(matrix, picture, options);
        summary.line("matrix", as_text(matrix));

        Image result;
        steps.run("warp", [&] {
            CImgproc::warpAffine(picture, result, as_mat(matrix), size, orvex_cv_991::INTERP_LINEAR, nullptr);
        });
        return result;
    });
}

}  // namespace docprep
