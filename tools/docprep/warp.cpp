#include "warp.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "cv_imgproc.h"
#include "options.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point32f;
using orvex_cv_991::Size;

namespace {

/// Where a picture's centre lies: pixel (0, 0) is centred on (0, 0).
double centre(int extent) {
    return (extent - 1) / 2.0;
}

AffineMatrix rotation(float angle, float scale, const Image& picture) {
    const Point32f about(static_cast<float>(centre(picture.cols)), static_cast<float>(centre(picture.rows)));
    const Mat<float> turned = CImgproc::getRotationMatrix2D(about, angle, scale);
    AffineMatrix matrix;
    std::copy_n(turned.data, matrix.size(), matrix.begin());
    return matrix;
}

/// The extent on one axis of a mapped picture; `m` is that axis' row of the matrix.
double mapped_extent(const float* m, const Image& picture) {
    // What single precision adds to a quarter turn shall not cost another row of pixels.
    constexpr double kRounding = 0.01;
    const double extent = std::fabs(double{m[0]}) * picture.cols + std::fabs(double{m[1]}) * picture.rows;
    return std::max(1.0, std::ceil(extent - kRounding));
}

/// The shift on one axis that brings the picture's centre to that of a result of `extent`.
float centring_shift(const float* m, const Image& picture, int extent) {
    const double from_centre = double{m[0]} * centre(picture.cols) + double{m[1]} * centre(picture.rows);
    return static_cast<float>(centre(extent) - from_centre);
}

/// Moves what is mapped to the middle of a result that is just large enough for it.
Size fit(AffineMatrix& matrix, const Image& picture, const PictureOptions& options) {
    const double cols = mapped_extent(&matrix[0], picture);
    const double rows = mapped_extent(&matrix[3], picture);
    require_output_size(options, cols, rows);
    const Size size(static_cast<int>(cols), static_cast<int>(rows));
    matrix[2] = centring_shift(&matrix[0], picture, size.width);
    matrix[5] = centring_shift(&matrix[3], picture, size.height);
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

std::string as_text(const AffineMatrix& matrix) {
    std::string text;
    for (const float value : matrix) {
        char number[24];
        std::snprintf(number, sizeof number, "%.9g", static_cast<double>(value));
        text += (text.empty() ? "" : ",") + std::string(number);
    }
    return text;
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
        AffineMatrix matrix =
            options.matrix ? *options.matrix : rotation(*options.angle, options.scale.value_or(1), picture);
        Size size(picture.cols, picture.rows);
        if (options.fit) size = fit(matrix, picture, options);
        summary.line("matrix", as_text(matrix));

        Mat<float> transformation;
        transformation.mat_create(2, 3, 1, 0);
        std::copy(matrix.begin(), matrix.end(), transformation.data);
        Image result;
        steps.run("warp", [&] {
            CImgproc::warpAffine(picture, result, transformation, size, orvex_cv_991::INTERP_LINEAR, nullptr);
        });
        return result;
    });
}

}  // namespace docprep
