#include "prepare.h"

#include <CLI/CLI.hpp>

#include "binarise.h"
#include "cv_imgproc.h"
#include "failure.h"
#include "options.h"
#include "output_files.h"
#include "png_file.h"
#include "report.h"
#include "seal_picture.h"

namespace docprep {

using orvex_cv_991::CImgproc;

namespace {

/// Memory for components grows with the runs of foreground pixels in a row of the image, by about 150 bytes
/// each, and a file of a few hundred KB can decode to 100 million of them. A page has some thousands.
constexpr int kMostRuns = 1 << 24;

void require_few_runs(const std::string& path, const Image& binary) {
    int64_t runs = 0;
    for (int row = 0; row < binary.rows; ++row) {
        const unsigned char* const pixels = binary.data + static_cast<ptrdiff_t>(row) * binary.cols;
        runs += pixels[0] & 1;
        for (int col = 1; col < binary.cols; ++col) runs += pixels[col] & ~pixels[col - 1] & 1;
    }
    if (runs > kMostRuns)
        throw Failure(path, "is noise: " + std::to_string(runs) + " dark runs are too many");
}

// Each stage draws and encodes its picture as soon as it can and frees its images at its end, so that those
// of two stages never take memory together.

/// Stages binarise, components and rows.
void prepare_page(const Stages& stages, const Image& photo, const Image& gray, Report& report,
                  OutputFiles& files) {
    Steps& steps = report.steps;
    Image binary;
    steps.run("binarise", [&] { report.threshold = binarise(gray, binary); });
    if (stages.chosen(Stage::kBinarise))
        steps.run("draw", [&] { files.add("binary.png", encode_png(binary)); });
    if (!stages.needed(Stage::kComponents)) return;

    require_few_runs(report.source.file, binary);
    PageComponents& page = report.components.emplace();
    Rects components;
    steps.run("components", [&] { CImgproc::connectdComponent(binary, components, nullptr); });
    page.found = components.size;
    steps.run("text", [&] { page.text = select_text(components, photo.rows, photo.cols); });
    if (!stages.needed(Stage::kRows)) return;

    Rows& rows = report.text_rows.emplace();
    steps.run("rows", [&] { CImgproc::divideComponentsToRows(page.text.kept, rows); });
    steps.run("draw", [&] { files.add("rows.png", encode_png(draw_rows(photo, rows))); });
}

void prepare_seals(const Image& photo, Report& report, OutputFiles& files) {
    Image mask;
    report.steps.run("seal", [&] { report.seals = find_seals(photo, mask); });
    if (report.seals->found())
        report.steps.run("draw", [&] { files.add("seal.png", encode_png(draw_seals(photo, mask))); });
    else
        files.remove("seal.png");
}

void prepare_saliency(const Image& gray, Report& report, OutputFiles& files) {
    Image saliency;
    report.steps.run("saliency", [&] {
        Image everywhere;
        everywhere.mat_create(gray.rows, gray.cols, 1, 255);
        orvex_991::vector<unsigned char> levels;
        CImgproc::saliencyDetect(gray, saliency, everywhere, levels);
    });
    report.steps.run("draw", [&] { files.add("saliency.png", encode_png(saliency)); });
}

void run_stages(const Stages& stages, const Image& photo, Report& report, OutputFiles& files) {
    Image gray;
    const bool page = stages.needed(Stage::kBinarise);
    if (page || stages.needed(Stage::kSaliency))
        report.steps.run("gray", [&] { CImgproc::bgr2gray(photo, gray); });
    if (page) prepare_page(stages, photo, gray, report, files);
    if (stages.needed(Stage::kSeal)) prepare_seals(photo, report, files);
    if (stages.needed(Stage::kSaliency)) prepare_saliency(gray, report, files);
}

}  // namespace

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
    app.add_flag("--verbose", options.verbose,
                 "Show the library's diagnostic lines on standard error instead of writing library.log");
}

void prepare(const PrepareOptions& options) {
    Report report;
    LibraryLog log(options.verbose ? LibraryLines::kShown : LibraryLines::kKept);
    OutputFiles files(options.folder);
    {
        const Image photo = read_input(options.input, log, report.steps, report.source);
        const LibraryLog::Redirection redirection(log);
        run_stages(options.stages, photo, report, files);
    }
    if (!options.verbose) files.add("library.log", log.content());
    files.add("result.json", result_json(report));
    files.publish(options.input.file);
    summary(report, files.paths()).print();
}

}  // namespace docprep
