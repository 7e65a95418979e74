#include "commands/morph.h"

#include <CLI/CLI.hpp>

#include "base/failure.h"
#include "base/number_text.h"
#include "cli/options.h"
#include "cv_imgproc.h"
#include "pipeline/binarise.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::MORPH_TYPE;
using orvex_cv_991::Size;

namespace {

/// The names of the operations, by their values.
std::vector<std::string> operation_names() {
    return {"dilate", "erode", "open", "close"};
}
static_assert(orvex_cv_991::MORPH_DILATE == 0 && orvex_cv_991::MORPH_ERODE == 1);
static_assert(orvex_cv_991::MORPH_OPEN == 2 && orvex_cv_991::MORPH_CLOSE == 3);

Image binary_of(const Image& picture, Steps& steps, Summary& summary) {
    // Not by way of grey, where white is 253.
    if (is_black_and_white(picture)) {
        summary.line("foreground", "white (the picture is black and white)");
        return first_channel(picture);
    }
    Image gray;
    Image binary;
    Binarisation how;
    steps.run("gray", [&] { CImgproc::bgr2gray(picture, gray); });
    steps.run("binarise", [&] {
        how = measure_for(BinariseMethod::kOtsu, gray);
        binarise(gray, how, binary);
    });
    summary.line("foreground", "dark (gray level " + std::to_string(how.threshold) + " and below)");
    return binary;
}

}  // namespace

bool is_black_and_white(const Image& picture) {
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    const unsigned char* pixel = picture.data;
    for (ptrdiff_t i = 0; i < n; ++i, pixel += picture.channels) {
        if (pixel[0] != 0 && pixel[0] != 255) return false;
        for (int k = 1; k < picture.channels; ++k)
            if (pixel[k] != pixel[0]) return false;
    }
    return true;
}

Image first_channel(const Image& picture) {
    Image first;
    first.mat_create(picture.rows, picture.cols, 1, 0);
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    for (ptrdiff_t i = 0; i < n; ++i) first.data[i] = picture.data[i * picture.channels];
    return first;
}

void add_morph(CLI::App& app, MorphOptions& options) {
    add_picture_options(app, options);
    const auto set_operation = [&options](const std::string& text) {
        options.operation = static_cast<MORPH_TYPE>(position_of("--op", text, operation_names()));
    };
    app.add_option_function<std::string>("--op", set_operation, "One of " + listed(operation_names()))
        ->required()
        ->type_name("NAME");
    add_extents(app, "--size", options.window, "The window, W columns by H rows")->required();
}

void morph(const MorphOptions& options) {
    run_picture_command(options, [&](const Image& picture, Steps& steps, Summary& summary) {
        const Size window(options.window->cols, options.window->rows);
        if (window.width > picture.cols || window.height > picture.rows)
            throw Failure(options.input.file, "is smaller (" + pixel_size(picture.cols, picture.rows) +
                                                  " pixels) than the window " + as_text(*options.window));
        Image binary = binary_of(picture, steps, summary);
        steps.run("morph", [&] { CImgproc::morphologyBinary(binary, binary, window, options.operation); });
        return binary;
    });
}

}  // namespace docprep
