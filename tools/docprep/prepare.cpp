#include "prepare.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "options.h"
#include "output_files.h"
#include "png_file.h"
#include "report.h"

namespace docprep {

void add_prepare(CLI::App& app, PrepareOptions& options) {
    add_input(app, options.input);
    const auto not_empty = [](const std::string& text) { return text.empty() ? "is empty" : ""; };
    app.add_option("-o,--output", options.folder, "Folder for the results, created if missing")
        ->required()
        ->check(not_empty)
        ->type_name("FOLDER");
    const auto set_stages = [&options](const std::string& text) {
        options.stages = Stages();
        for (const std::string& name : split(text, ','))
            options.stages.choose(static_cast<Stage>(position_of("--stages", name, stage_names())));
    };
    app.add_option_function<std::string>(
           "--stages", set_stages,
           "What to compute, with commas between; everything by default: " + listed(stage_names()))
        ->type_name("LIST");
    const auto set_turn = [&options](const std::string& text) {
        const auto position =
            static_cast<int>(position_of("--turn", text, {"auto", "0", "90", "180", "270"}));
        if (position > 0)
            options.turn = 90 * (position - 1);
        else
            options.turn.reset();
    };
    app.add_option_function<std::string>("--turn", set_turn,
                                         "Turn the photograph clockwise first, by 0, 90, 180 or 270 degrees; "
                                         "auto, the default: as its text says")
        ->type_name("DEGREES");
    add_positive(app, "--min-sharpness", options.min_sharpness,
                 "Refuse a photograph whose sharpness is below this");
    const auto set_method = [&options](const std::string& text) {
        options.binarise =
            static_cast<BinariseMethod>(position_of("--binarize", text, binarise_method_names()));
    };
    app.add_option_function<std::string>(
           "--binarize,--binarise", set_method,
           "How print is parted from paper: " + listed(binarise_method_names()) + "; adaptive by default")
        ->type_name("METHOD");
    const auto set_page = [&options](const std::string& text) {
        options.page = static_cast<PageKind>(position_of("--page", text, page_kind_names()));
    };
    app.add_option_function<std::string>(
           "--page", set_page, "What page.png is: " + listed(page_kind_names()) + "; soft by default")
        ->type_name("KIND");
    app.add_flag("--crop", options.crop, "Cut the page to its paper");
    app.add_flag("--no-deskew", options.keep_skew, "Leave rows of text as askew as they are");
    app.add_flag("--verbose", options.verbose,
                 "Show the library's diagnostic lines on standard error instead of writing library.log");
}

void prepare(const PrepareOptions& options) {
    Report report;
    LibraryLog log(options.verbose ? LibraryLines::kShown : LibraryLines::kKept);
    OutputFiles files(options.folder);
    {
        Image photo = read_input(options.input, log, report.steps, report.source);
        const LibraryLog::Redirection redirection(log);
        run_pipeline(std::move(photo), options, report,
                     [&](const std::string& name, const Image& picture, int dots_per_inch) {
                         files.add(name, encode_png(picture, dots_per_inch));
                     });
    }
    if (report.seals && !report.seals->found()) files.remove("seal.png");
    if (!options.verbose) files.add("library.log", log.content());
    files.add("result.json", result_json(report));
    files.publish(options.input.file);
    summary(report, files.paths()).print();
}

}  // namespace docprep
