#include "prepare.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "binarise.h"
#include "cv_imgproc.h"
#include "options.h"
#include "output_files.h"
#include "page.h"
#include "png_file.h"
#include "red_ink.h"
#include "report.h"
#include "row_picture.h"
#include "seal_picture.h"
#include "skew.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Size;

namespace {

/// The work of one run. Each stage draws and encodes its picture as soon as it can and frees its images at
/// its end, so that those of two stages never take memory together.
class Run {
 public:
    Run(const PrepareOptions& options, Report& report, OutputFiles& files)
        : options_(options), stages_(options.stages), report_(report), steps_(report.steps), files_(files) {
        if (options.min_sharpness) stages_.choose(Stage::kSharpness);
    }

    void prepare(Image photo) {
        turn(photo);
        Image gray;
        if (stages_.needed(Stage::kBinarise) || stages_.needed(Stage::kSaliency))
            steps_.run("gray", [&] { CImgproc::bgr2gray(photo, gray); });
        if (stages_.needed(Stage::kBinarise)) prepare_print(photo, gray);
        if (stages_.needed(Stage::kSeal)) prepare_seals(photo);
        if (stages_.needed(Stage::kSaliency)) prepare_saliency(gray);
    }

 private:
    int quarter_turns() const { return options_.turn / 90; }

    void turn(Image& photo) {
        if (quarter_turns() != 0)
            steps_.run("turn", [&] { CImgproc::rot90ClockWise(photo, photo, quarter_turns()); });
        report_.turn = {options_.turn, photo.cols, photo.rows};
    }

    /// Encodes what `picture` gives.
    template <class Picture>
    void draw(const std::string& name, const Picture& picture) {
        steps_.run("draw", [&] { files_.add(name, encode_png(picture())); });
    }

    /// Stage binarise, and those that look at print.
    void prepare_print(const Image& photo, const Image& gray) {
        Page page;  // for now the photograph as it lies
        steps_.run("binarise", [&] {
            report_.binarisation = measure_for(options_.binarise, gray);
            binarise(gray, *report_.binarisation, page.binary);
        });
        if (stages_.chosen(Stage::kBinarise))
            draw("binary.png", [&]() -> const Image& { return page.binary; });
        if (!stages_.needed(Stage::kSharpness) && !stages_.needed(Stage::kPage)) return;

        Print print = print_on(page);
        if (stages_.needed(Stage::kSharpness)) prepare_sharpness(gray, print.text);
        if (!stages_.needed(Stage::kPage)) return;

        prepare_page(photo, gray, std::move(page), std::move(print));
    }

    /// Stages page, components and rows, from the photograph as it lies.
    void prepare_page(const Image& photo, const Image& gray, Page page, Print print) {
        const Deskew deskew = plan_deskew(gray, options_.keep_skew ? 0 : skew_of(print.text));
        report_.deskew = deskew;
        const bool level = deskew.degrees == 0;
        const bool with_components = stages_.needed(Stage::kComponents);
        Image level_photo;  // stays empty where the photograph is level
        if (!level) {
            steps_.run("deskew", [&] { page = level_page(gray, *report_.binarisation, deskew); });
            if (with_components) {
                print = print_on(page);
                steps_.run("deskew", [&] { level_photo = deskewed_on_white(photo, deskew); });
            }
        }
        if (with_components) {
            steps_.run("ink", [&] { drop_red_ink(level ? photo : level_photo, page.binary, print.text); });
            report_.print = std::move(print);
        }
        if (stages_.chosen(Stage::kPage)) draw("page.png", [&] { return black_on_white(std::move(page)); });
        if (!stages_.needed(Stage::kRows)) return;
        page = {};
        const WayBack way_back(deskew, Size(photo.cols, photo.rows), quarter_turns());
        steps_.run("rows", [&] { report_.text_rows = find_rows(report_.print->text.kept, way_back); });
        draw("rows.png",
             [&] { return draw_rows(level ? Image(photo) : std::move(level_photo), *report_.text_rows); });
    }

    Print print_on(const Page& page) {
        Print print;
        steps_.run("components", [&] { print = find_print(report_.source.file, page.binary); });
        return print;
    }

    void prepare_sharpness(const Image& gray, const TextComponents& text) {
        steps_.run("sharpness", [&] { report_.sharpness = measure_sharpness(gray, text); });
        if (options_.min_sharpness)
            require_sharpness(report_.source.file, *report_.sharpness, *options_.min_sharpness);
    }

    double skew_of(const TextComponents& text) {
        double skew = 0;
        steps_.run("skew", [&] { skew = estimate_skew(text); });
        return skew;
    }

    void prepare_seals(const Image& photo) {
        Image mask;
        steps_.run("seal", [&] { report_.seals = find_seals(photo, mask); });
        if (report_.seals->found())
            draw("seal.png", [&] { return draw_seals(photo, mask); });
        else
            files_.remove("seal.png");
    }

    void prepare_saliency(const Image& gray) {
        Image saliency;
        steps_.run("saliency", [&] {
            Image everywhere;
            everywhere.mat_create(gray.rows, gray.cols, 1, 255);
            orvex_991::vector<unsigned char> levels;
            CImgproc::saliencyDetect(gray, saliency, everywhere, levels);
        });
        draw("saliency.png", [&]() -> const Image& { return saliency; });
    }

    const PrepareOptions& options_;
    Stages stages_;
    Report& report_;
    Steps& steps_;
    OutputFiles& files_;
};

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
    const auto set_turn = [&options](const std::string& text) {
        options.turn = 90 * static_cast<int>(position_of("--turn", text, {"0", "90", "180", "270"}));
    };
    app.add_option_function<std::string>("--turn", set_turn,
                                         "Turn the photograph clockwise first, by 0, 90, 180 or 270 degrees")
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
        Run(options, report, files).prepare(std::move(photo));
    }
    if (!options.verbose) files.add("library.log", log.content());
    files.add("result.json", result_json(report));
    files.publish(options.input.file);
    summary(report, files.paths()).print();
}

}  // namespace docprep
