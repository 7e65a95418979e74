#include "picture_command.h"

#include <CLI/CLI.hpp>
#include <cinttypes>
#include <cstdio>
#include <filesystem>

#include "failure.h"
#include "options.h"
#include "output_files.h"
#include "picture_format.h"

namespace docprep {

namespace fs = std::filesystem;

void add_picture_options(CLI::App& app, PictureOptions& options) {
    add_input(app, options.input);
    const auto names_a_file = [](const std::string& path) {
        return fs::path(path).has_filename() ? "" : "'" + path + "' does not name a file";
    };
    const auto names_a_format = [](const std::string& path) {
        return format_of_name(path) ? "" : "'" + path + "' does not end in " + listed(picture_format_names());
    };
    app.add_option("-o,--output", options.output,
                   "File for the result, of the kind that its name ends in (" +
                       listed(picture_format_names()) + "); its folder is created if missing")
        ->required()
        ->check(names_a_file)
        ->check(names_a_format)
        ->type_name("FILE");
    app.add_flag("--verbose", options.verbose, "Show the library's diagnostic lines on standard error");
}

void require_output_size(const PictureOptions& options, double cols, double rows) {
    if (cols < 1 || rows < 1) throw Failure(options.output, "would have no pixels");
    if (cols * rows <= static_cast<double>(kMostPixels)) return;
    char text[100];
    std::snprintf(text, sizeof text, "%.10g x %.10g pixels are too many (limit %" PRId64 " Mi)", cols, rows,
                  kMostPixels >> 20);
    throw Failure(options.output, text);
}

void run_picture_command(const PictureOptions& options, const PictureOperation& operation) {
    Steps steps;
    Source source;
    Summary summary;
    LibraryLog log(options.verbose ? LibraryLines::kShown : LibraryLines::kDropped);

    const Image picture = read_input(options.input, log, steps, source);
    summary.source(source);
    Image result;
    {
        const LibraryLog::Redirection redirection(log);
        result = operation(picture, steps, summary);
    }
    summary.line("result", pixel_size(result.cols, result.rows));

    const fs::path output(options.output);
    OutputFiles files(output.parent_path().string());
    const PictureFormat format = *format_of_name(options.output);
    steps.run("encode",
              [&] { files.add(output.filename().string(), encode_picture(result, format, options.output)); });
    files.publish(options.input.file);
    summary.steps(steps);
    summary.written(files.paths());
    summary.print();
}

}  // namespace docprep
