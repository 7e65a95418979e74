#include "run/prepare.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/number_text.h"
#include "cli/options.h"
#include "html/html_report.h"
#include "output/output_files.h"
#include "output/picture_output.h"
#include "output/report_summary.h"
#include "output/standard_output.h"
#include "pipeline/report.h"
#include "pipeline/result_json.h"
#include "run/folder_pictures.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

/// Pictures that go into a folder and, some of them and others, into its report.
class FolderAndReport : public PictureSink {
 public:
    FolderAndReport(FolderPictures& folder, ReportPictures& report) : folder_(folder), report_(report) {}

    bool wants(Picture kind) const override { return folder_.wants(kind) || report_.wants(kind); }

    void take(Picture kind, Image picture, int dots_per_inch) override {
        if (report_.wants(kind)) report_.take(kind, picture, dots_per_inch);
        if (folder_.wants(kind)) folder_.take(kind, std::move(picture), dots_per_inch);
    }

 private:
    FolderPictures& folder_;
    ReportPictures& report_;
};

/// What a run was asked for, as its report tells it.
Facts told(const PreparationOptions& options) {
    const auto yes_or_no = [](bool on) { return on ? "yes" : "no"; };
    std::vector<std::string> stages;
    for (size_t k = 0; k < stage_names().size(); ++k)
        if (options.stages.chosen(static_cast<Stage>(k))) stages.push_back(stage_names()[k]);
    const auto named = [](const std::vector<std::string>& names, auto value) {
        return names[static_cast<size_t>(value)];
    };
    return {
        {"stages", listed(stages)},
        {"turn", options.turn ? std::to_string(*options.turn) + " degrees" : "auto"},
        {"least sharpness", options.min_sharpness ? number_text(double{*options.min_sharpness}, 2) : "none"},
        {"text required", yes_or_no(options.require_text)},
        {"binarize", named(binarise_method_names(), options.binarise)},
        {"page", named(page_kind_names(), options.page)},
        {"crop", yes_or_no(options.crop)},
        {"deskew", yes_or_no(!options.keep_skew)},
        {"pictures", named(picture_files_names(), options.pictures)}};
}

void add_report(Report& report, const ReportPictures& pictures, const PreparationOptions& options,
                std::vector<std::string> names, OutputFiles& files) {
    names.emplace_back(kResultFile);
    Bytes page;
    report.steps.run("report", [&] { page = html_report(report, pictures, told(options), names); });
    files.add(kReportFile, std::move(page));
}

/// Keeps the page alone.
class PageOnly : public PictureSink {
 public:
    bool wants(Picture kind) const override { return kind == Picture::kPage; }
    void take(Picture, Image picture, int dots_per_inch) override {
        page = std::move(picture);
        resolution = dots_per_inch;
    }

    Image page;
    int resolution = 0;
};

/// Runs the pipeline on a photograph that was read.
void run(Image photo, const PreparationOptions& options, LibraryLog& log, Report& report, PictureSink& sink) {
    const LibraryLog::Redirection redirection(log);
    run_pipeline(std::move(photo), options, report, sink);
}

/// The format of the page, where the output is a place for it alone; none for a folder.
std::optional<PictureFormat> page_format(const std::string& output) {
    std::error_code ignored;
    const bool folder = fs::is_directory(output, ignored) || !fs::path(output).has_filename();
    return folder ? std::nullopt : format_for(output);
}

/// Prepares the page alone, or nothing but the result.
Prepared prepare_without_folder(const PrepareOptions& options, std::optional<PictureFormat> format,
                                LibraryLines lines) {
    Prepared prepared;
    PreparationOptions wanted = options;
    if (!options.stages_given && !options.json) {
        wanted.stages = Stages();
        wanted.stages.choose(Stage::kPage);
    }
    LibraryLog log(lines);
    PageOnly only;
    Image photo = read_input(options.input, log, prepared.report.steps, prepared.report.source);
    run(std::move(photo), wanted, log, prepared.report, only);
    prepared.result = result_json(prepared.report, {});
    if (!format) return prepared;
    Bytes content;
    prepared.report.steps.run(
        "encode", [&] { content = encode_picture(only.page, *format, options.output, only.resolution); });
    prepared.paths = write_picture(options.output, std::move(content), options.input.file);
    return prepared;
}

}  // namespace

void add_preparation(CLI::App& app, PreparationOptions& options) {
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
    app.add_flag("--require-text", options.require_text, "Refuse a photograph without rows of text");
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
    const auto set_pictures = [&options](const std::string& text) {
        options.pictures = static_cast<PictureFiles>(position_of("--pictures", text, picture_files_names()));
    };
    app.add_option_function<std::string>("--pictures", set_pictures,
                                         "How the pictures that people look at are written: " +
                                             listed(picture_files_names()) + "; jpeg by default")
        ->type_name("KIND");
    app.add_flag("--timings", options.timings, "Write the milliseconds of each step to timings.json");
    app.add_flag("--report", options.report, "Write report.html, a page that shows every stage in pictures");
}

void add_prepare(CLI::App& app, PrepareOptions& options) {
    add_input(app, options.input);
    const auto not_empty = [](const std::string& text) { return text.empty() ? "is empty" : ""; };
    app.add_option(
           "-o,--output", options.output,
           "Folder for the results, created if missing; a picture file, or - for standard output, for "
           "the page alone")
        ->check(not_empty)
        ->type_name("FOLDER");
    const auto set_stages = [&options](const std::string& text) {
        options.stages = Stages();
        options.stages_given = true;
        for (const std::string& name : split(text, ','))
            options.stages.choose(static_cast<Stage>(position_of("--stages", name, stage_names())));
    };
    app.add_option_function<std::string>(
           "--stages", set_stages,
           "What to compute, with commas between; everything by default: " + listed(stage_names()))
        ->type_name("LIST");
    add_preparation(app, options);
    app.add_flag("--log", options.log, "Write the library's diagnostic lines to library.log");
    app.add_flag("--json", options.json,
                 "Print the result as JSON in place of the summary; --output may be left out then");
    app.add_flag("-q,--quiet", options.quiet, "Print no summary");
    app.add_flag("--verbose", options.verbose, "Show the library's diagnostic lines on standard error");
    app.callback([&options] {
        if (options.output.empty() && !options.json) throw CLI::RequiredError("--output");
        if (options.output == kStandardOutput && options.json)
            throw CLI::ValidationError("--json", "standard output takes the page or the result, not both");
        if (options.verbose && options.log) throw CLI::ValidationError("--log", "not with --verbose");
        if (options.output.empty()) return;
        std::error_code ignored;
        if (names_another_format(options.output) && !fs::is_directory(options.output, ignored))
            throw CLI::ValidationError("--output", "'" + options.output +
                                                       "' would be a picture of a kind that is not "
                                                       "written; these are: " +
                                                       listed(picture_format_names()));
        if (!page_format(options.output)) return;
        if (options.stages_given && !options.stages.chosen(Stage::kPage))
            throw CLI::ValidationError("--stages", "without page, nothing is left for " + options.output);
        if (options.log || options.timings || options.report)
            throw CLI::ValidationError("--output", "log, timings and report need a folder");
    });
}

Prepared prepare_into(const std::string& folder, const InputOptions& input, const PreparationOptions& options,
                      LibraryLines lines, bool beside) {
    Prepared prepared;
    LibraryLog log(options.log ? LibraryLines::kKept : lines);
    Image photo = read_input(input, log, prepared.report.steps, prepared.report.source);
    OutputFiles files(folder);
    files.lock();
    FolderPictures pictures(options.pictures, options.thumbnail, beside);
    ReportPictures report_pictures(prepared.report);
    FolderAndReport both(pictures, report_pictures);
    PictureSink& sink = options.report ? static_cast<PictureSink&>(both) : pictures;
    run(std::move(photo), options, log, prepared.report, sink);
    prepared.report.steps.run("encode", [&] { pictures.finish(files); });

    std::vector<std::string> names = pictures.names();
    if (options.log) names.emplace_back(kLogFile);
    if (options.timings) names.emplace_back(kTimingsFile);
    if (options.report) names.emplace_back(kReportFile);
    remove_others_of_last_run(folder, names, files);
    if (options.report) add_report(prepared.report, report_pictures, options, names, files);
    if (options.log) files.add(kLogFile, log.content());
    if (options.timings) files.add(kTimingsFile, timings_json(prepared.report));
    prepared.result = result_json(prepared.report, names);
    files.add(kResultFile, prepared.result);
    files.publish(input.opened());
    prepared.paths = files.paths();
    return prepared;
}

void prepare(const PrepareOptions& options) {
    const LibraryLines lines = options.verbose ? LibraryLines::kShown : LibraryLines::kDropped;
    const auto format = options.output.empty() ? std::nullopt : page_format(options.output);
    const bool into_folder = !options.output.empty() && !format;
    const Prepared prepared = into_folder ? prepare_into(options.output, options.input, options, lines, true)
                                          : prepare_without_folder(options, format, lines);
    if (options.json)
        print(prepared.result);
    else if (!options.quiet && options.output != kStandardOutput)
        summary(prepared.report, prepared.paths).print();
}

}  // namespace docprep
