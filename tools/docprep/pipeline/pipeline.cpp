#include "pipeline/pipeline.h"

#include <utility>

#include "base/failure.h"
#include "cv_imgproc.h"
#include "pipeline/binarise.h"
#include "pipeline/component_picture.h"
#include "pipeline/row_picture.h"
#include "pipeline/seal_ink.h"
#include "pipeline/seal_picture.h"
#include "pipeline/skew.h"
#include "pipeline/text_chains.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Size;

namespace {

/// The work of one run. Each stage draws its picture as soon as it can and frees its images at its end, so that
/// those of two stages never take memory together.
class Run {
 public:
    Run(const PipelineOptions& options, Report& report, PictureSink& sink)
        : options_(options), stages_(options.stages), report_(report), steps_(report.steps), sink_(sink) {
        if (options.min_sharpness) stages_.choose(Stage::kSharpness);
        if (options.require_text) stages_.choose(Stage::kRows);
        // Text tells which way up the photograph lies, and every picture is turned alike.
        if (!options.turn) stages_.need(Stage::kBinarise);
    }

    void prepare(Image photo) {
        draw(Picture::kPhoto, [&] { return Image(photo); });
        if (options_.turn) turn(photo, *options_.turn, Turn::How::kGiven);
        Image gray;
        if (stages_.needed(Stage::kBinarise) || stages_.needed(Stage::kSaliency))
            steps_.run("gray", [&] { CImgproc::bgr2gray(photo, gray); });
        Image binary;
        Print print;
        if (stages_.needed(Stage::kBinarise)) {
            find_print_on(gray, binary, print);
            if (!options_.turn) turn_upright(photo, gray, binary, print);
        }
        if (report_.turn.degrees != 0) draw(Picture::kUpright, [&] { return Image(photo); });
        if (!gray.empty()) draw(Picture::kGray, [&] { return Image(gray); });
        if (stages_.chosen(Stage::kBinarise)) draw(Picture::kBinary, [&] { return Image(binary); });
        if (stages_.needed(Stage::kSharpness)) prepare_sharpness(gray, print.text);
        const Lettering lettering = lettering_of(gray, print.text);
        Image clean;  // stays empty without seals
        if (stages_.needed(Stage::kSeal)) prepare_seals(photo, gray, lettering.paper, clean);
        if (stages_.needed(Stage::kPage)) prepare_page(photo, gray, std::move(binary), lettering, clean);
        if (stages_.needed(Stage::kSaliency)) prepare_saliency(gray);
    }

 private:
    void turn(Image& photo, int degrees, Turn::How how) {
        if (degrees != 0) steps_.run("turn", [&] { CImgproc::rot90ClockWise(photo, photo, degrees / 90); });
        report_.turn.degrees = degrees;
        report_.turn.how = how;
        report_.turn.cols = photo.cols;
        report_.turn.rows = photo.rows;
    }

    /// Brings the photograph upright, with what was found on it.
    void turn_upright(Image& photo, Image& gray, Image& binary, Print& print) {
        TurnEvidence evidence;
        steps_.run("turn", [&] { evidence = find_turn(print.components, photo.rows, photo.cols); });
        if (evidence.degrees != 0)
            steps_.run("turn", [&] {
                const int turns = evidence.degrees / 90;
                for (int k = 0; k < turns; ++k)
                    print.components =
                        turned_clockwise(print.components, k % 2 == 0 ? photo.rows : photo.cols);
                CImgproc::rot90ClockWise(gray, gray, turns);
                CImgproc::rot90ClockWise(binary, binary, turns);
                print.text = select_text(print.components, gray.rows, gray.cols);
            });
        const bool by_note = evidence.degrees == 0 && report_.source.orientation != 1;
        turn(photo, evidence.degrees, by_note ? Turn::How::kExif : Turn::How::kAuto);
        report_.turn.evidence = evidence;
    }

    /// Draws a picture and hands it on, if it is wanted.
    template <class Draw>
    void draw(Picture kind, const Draw& drawn, int dots_per_inch = 0) {
        const char* const step = for_report_alone(kind) ? "report" : "draw";
        if (sink_.wants(kind)) steps_.run(step, [&] { sink_.take(kind, drawn(), dots_per_inch); });
    }

    /// The photograph's print, as it lies. Which letters there are is told by their surroundings whatever the method:
    /// one threshold for all loses those in shadows.
    void find_print_on(const Image& gray, Image& binary, Print& print) {
        steps_.run("binarise", [&] {
            report_.binarisation = measure_for(options_.binarise, gray);
            binarise(gray, *report_.binarisation, binary);
        });
        Image adaptive;
        if (options_.binarise != BinariseMethod::kAdaptive)
            steps_.run("binarise",
                       [&] { binarise(gray, measure_for(BinariseMethod::kAdaptive, gray), adaptive); });
        print = print_on(adaptive.empty() ? binary : adaptive);
    }

    Print print_on(const Image& binary) {
        Print print;
        steps_.run("components", [&] { print = find_print(report_.source.file, binary); });
        return print;
    }

    void prepare_sharpness(const Image& gray, const TextComponents& text) {
        steps_.run("sharpness", [&] { report_.sharpness = measure_sharpness(gray, text); });
        if (options_.min_sharpness)
            require_sharpness(report_.source.file, *report_.sharpness, *options_.min_sharpness);
    }

    /// What the photograph's letters tell about it.
    struct Lettering {
        TextComponents text;
        std::vector<Chain> chains;
        Rects chained;
        Paper paper;
    };

    Lettering lettering_of(const Image& gray, const TextComponents& text) {
        Lettering lettering;
        if (!stages_.needed(Stage::kSeal) && !stages_.needed(Stage::kPage)) return lettering;
        steps_.run("paper", [&] {
            lettering.text = text;
            lettering.chains = find_chains(text.kept, text.text_height);
            lettering.chained = chained_letters(text.kept, lettering.chains);
            lettering.paper = find_paper(gray, lettering.chained, text.text_height);
        });
        return lettering;
    }

    /// How the photograph becomes a level page.
    Deskew plan(const Image& photo, const Lettering& lettering) {
        if (options_.keep_skew) return plan_deskew(photo, 0);
        TextComponents chained;
        chained.kept = lettering.chained;
        chained.text_height = lettering.text.text_height;
        const Deskew level = plan_deskew(photo, estimate_skew(chained));
        const Bend bend =
            find_bend(lettering.text.kept, lettering.chains, lettering.text.text_height, level.matrix);
        return bend.none() ? level : with_bend(level, bend);
    }

    /// Stages page, components and rows.
    void prepare_page(const Image& photo, const Image& gray, Image binary, const Lettering& lettering,
                      const Image& clean) {
        Deskew deskew;
        steps_.run("skew", [&] {
            deskew = plan(photo, lettering);
            if (options_.crop) deskew = cropped(deskew, paper_on_page(lettering.paper, deskew));
        });
        report_.deskew = deskew;
        report_.paper = lettering.paper.outline;
        const int text_height = lettering.text.text_height;
        Page page;
        steps_.run("page", [&] {
            page = make_page({gray, clean, binary, *report_.binarisation, deskew, lettering.paper,
                              lettering.chained, text_height},
                             options_.page);
            binary = Image();
        });
        report_.page = PageReport{options_.page, page.ink, dots_per_inch(text_height)};
        draw(Picture::kPaper, [&] { return Image(photo); });
        if (!page.light.empty()) draw(Picture::kLight, [&] { return std::move(page.light); });
        if (stages_.needed(Stage::kRows)) draw(Picture::kLines, [&] { return Image(page.picture); });
        if (stages_.chosen(Stage::kPage))
            draw(
                Picture::kPage, [&] { return std::move(page.picture); }, report_.page->dots_per_inch);
        if (!stages_.needed(Stage::kComponents)) return;

        page.picture = Image();
        Print print = print_on(page.print);
        draw(Picture::kComponents, [&] { return draw_components(page.print, print); });
        page = {};
        report_.print = std::move(print);
        if (stages_.needed(Stage::kRows)) prepare_rows(photo, deskew);
    }

    void prepare_rows(const Image& photo, const Deskew& deskew) {
        const TextComponents& text = report_.print->text;
        const WayBack way_back(deskew, Size(photo.cols, photo.rows), report_.turn.degrees / 90);
        steps_.run("rows", [&] { report_.text_rows = find_rows(text.kept, text.text_height, way_back); });
        if (options_.require_text && report_.text_rows->empty())
            throw Refusal(report_.source.file, "no text was found");
        draw(Picture::kRows, [&] {
            return draw_rows(deskew.none() ? Image(photo) : deskewed_on_white(photo, deskew),
                             *report_.text_rows);
        });
    }

    void prepare_seals(const Image& photo, const Image& gray, const Paper& paper, Image& clean) {
        Seals seals;
        Image mask;
        steps_.run("seal", [&] { seals = find_seals(photo, paper, mask); });
        if (seals.found() && stages_.needed(Stage::kPage))
            steps_.run("seal", [&] { clean = without_seals(photo, gray, seals, mask); });
        if (stages_.chosen(Stage::kSeal)) {
            if (seals.found()) draw(Picture::kSeal, [&] { return draw_seals(photo, mask); });
            report_.seals = std::move(seals);
        }
    }

    void prepare_saliency(const Image& gray) {
        if (!sink_.wants(Picture::kSaliency)) return;
        Image saliency;
        steps_.run("saliency", [&] {
            Image everywhere;
            everywhere.mat_create(gray.rows, gray.cols, 1, 255);
            orvex_991::vector<unsigned char> levels;
            CImgproc::saliencyDetect(gray, saliency, everywhere, levels);
        });
        draw(Picture::kSaliency, [&] { return std::move(saliency); });
    }

    const PipelineOptions& options_;
    Stages stages_;
    Report& report_;
    Steps& steps_;
    PictureSink& sink_;
};

}  // namespace

void run_pipeline(Image photo, const PipelineOptions& options, Report& report, PictureSink& sink) {
    Run(options, report, sink).prepare(std::move(photo));
}

}  // namespace docprep
