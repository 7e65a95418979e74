#include "commands/picture_command.h"

#include <CLI/CLI.hpp>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "base/failure.h"
#include "base/number_text.h"
#include "cli/options.h"
#include "output/picture_output.h"

namespace docprep {

void add_verbose(CLI::App& app, bool& verbose) {
    app.add_flag("--verbose", verbose, "Show the library's diagnostic lines on standard error");
}

void add_picture_options(CLI::App& app, PictureOptions& options, const std::string& output) {
    add_input(app, options.input);
    const auto names_a_file = [](const std::string& path) {
        return std::filesystem::path(path).has_filename() ? "" : "'" + path + "' does not name a file";
    };
    const auto names_a_format = [](const std::string& path) {
        return format_for(path) ? "" : "'" + path + "' does not end in " + listed(picture_format_names());
    };
    app.add_option(output, options.output,
                   "File for the result, of the kind that its name ends in (" +
                       listed(picture_format_names()) +
                       "), its folder created if missing; - for a PNG on standard output")
        ->required()
        ->check(names_a_file)
        ->check(names_a_format)
        ->type_name("FILE");
    add_verbose(app, options.verbose);
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

    Bytes content;
    steps.run("encode",
              [&] { content = encode_picture(result, *format_for(options.output), options.output); });
    const std::vector<std::string> paths =
        write_picture(options.output, std::move(content), options.input.file);
    if (options.output == kStandardOutput) return;
    summary.steps(steps);
    summary.written(paths);
    summary.print();
}

}  // namespace docprep
