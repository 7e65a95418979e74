#include "html/html_report.h"

#include <algorithm>
#include <filesystem>

#include "base/number_text.h"
#include "formats/jpeg_file.h"
#include "html/html_text.h"
#include "html/report_charts.h"
#include "html/report_style.h"
#include "pipeline/component_picture.h"
#include "pipeline/in_words.h"

namespace docprep {

namespace {

/// Letters stay legible at half the size of what cameras write.
constexpr int kQuality = 72;

std::string milliseconds(double ms) {
    return number_text(ms, 1) + " ms";
}

std::string definitions(const Facts& facts, const char* kind) {
    std::string list;
    for (const auto& [name, value] : facts)
        list += "<div><dt>" + escaped(name) + "</dt><dd><bdi>" + escaped(value) + "</bdi></dd></div>";
    return facts.empty() ? "" : "<dl class=\"" + std::string(kind) + "\">" + list + "</dl>";
}

std::string words_table(const Facts& facts) {
    std::string rows;
    for (const auto& [name, value] : facts)
        rows +=
            "<tr><th scope=\"row\">" + escaped(name) + "</th><td><bdi>" + escaped(value) + "</bdi></td></tr>";
    return "<table class=\"words\"><tbody>" + rows + "</tbody></table>";
}

/// Writes one page; what it is made of lives longer.
class Writer {
 public:
    Writer(const Report& report, const ReportPictures& pictures) : report_(report), pictures_(pictures) {}

    std::string stages() {
        photo();
        turn();
        gray();
        levels();
        light();
        binary();
        paper();
        components();
        rows();
        lines();
        seals();
        saliency();
        page();
        return std::move(html_);
    }

    std::string times() const {
        double most = 0;
        for (const Steps::Step& step : report_.steps.list()) most = std::max(most, step.ms);
        std::vector<Bar> bars;
        for (const Steps::Step& step : report_.steps.list())
            bars.push_back({step.name, milliseconds(step.ms), most > 0 ? step.ms / most : 0, ""});
        bars.push_back({"in all", milliseconds(report_.steps.total_ms()), 0, "sum"});
        return "<section id=\"times\"><div class=\"about\"><h2>Where the time went</h2><p>Each step of the "
               "run with its milliseconds; pictures are encoded beside the other work, and <i>encode</i> is "
               "the waiting for them.</p></div><div class=\"show\">" +
               bar_table(bars) + "</div></section>";
    }

 private:
    /// A picture that fills its place and is enlarged when it is pressed; empty when the run did not make it.
    /// @param over  drawn over it
    std::string shown(Picture kind, const std::string& name, const std::string& what,
                      const std::string& over = "") const {
        const ReportPictures::Copy* const copy = pictures_.find(kind);
        if (copy == nullptr) return "";
        const std::string cols = std::to_string(copy->pixels.cols), rows = std::to_string(copy->pixels.rows);
        const std::string id = "view-" + name;
        return "<div class=\"place\" style=\"--w:" + cols + ";--h:" + rows + "\"><div class=\"view\" id=\"" +
               id + "\" popover=\"auto\"><button type=\"button\" popovertarget=\"" + id + "\"><img alt=\"" +
               escaped(what) + ", press to enlarge or to close\" width=\"" + cols + "\" height=\"" + rows +
               "\" src=\"data:image/jpeg;base64," + base64(encode_jpeg(copy->pixels, kQuality)) + "\"/>" +
               over + "</button></div></div>";
    }

    /// The lines over a picture, in its own pixels.
    template <class Overlay>
    std::string overlaid(Picture kind, const Overlay& overlay) const {
        const ReportPictures::Copy* const copy = pictures_.find(kind);
        return copy == nullptr ? "" : overlay(copy->cols, copy->rows);
    }

    /// How long the steps of these names took together; nothing when none ran.
    void add_time(Facts& facts, const std::vector<std::string>& steps) const {
        double ms = 0;
        bool ran = false;
        for (const Steps::Step& step : report_.steps.list()) {
            if (std::find(steps.begin(), steps.end(), step.name) == steps.end()) continue;
            ms += step.ms;
            ran = true;
        }
        if (ran) facts.emplace_back("time", milliseconds(ms));
    }

    void section(const std::string& name, const std::string& title, const std::string& sentence, Facts facts,
                 const std::vector<std::string>& steps, const std::string& shows) {
        add_time(facts, steps);
        html_ += "<section id=\"" + name + "\"><div class=\"about\"><h2><span class=\"number\">" +
                 std::to_string(++number_) + "</span>" + title + "</h2><p>" + sentence + "</p>" +
                 definitions(facts, "facts") + "</div><div class=\"show\">" + shows + "</div></section>\n";
    }

    void photo() {
        const Source& source = report_.source;
        Facts facts = {{"file", source.file},
                       {"format", source.format},
                       {"stored", pixel_size(source.stored_cols, source.stored_rows)},
                       {"orientation",
                        source.orientation == 1 ? "upright" : "EXIF " + std::to_string(source.orientation)},
                       {"size", pixel_size(source.cols, source.rows)}};
        std::string shows = shown(Picture::kPhoto, "photo", "The photograph");
        if (report_.sharpness) {
            facts.emplace_back("sharpness", number_text(double{report_.sharpness->value}, 0) + ", " +
                                                verdict(*report_.sharpness));
            shows += sharpness_scale(*report_.sharpness);
        }
        section(
            "photo", "Photograph",
            "The picture as it was read, upright as its camera noted. Sharpness is how hard the edges of its "
            "letters are.",
            facts, {"read", "colour", "orient", "sharpness"}, shows);
    }

    void turn() {
        const Turn& turn = report_.turn;
        if (turn.degrees == 0 && !turn.evidence) return;
        Facts facts = {
            {"turned", turn.degrees == 0 ? "not" : std::to_string(turn.degrees) + " degrees clockwise"}};
        if (turn.evidence)
            facts.emplace_back("confidence", turn.evidence->sure ? number_text(turn.evidence->confidence(), 2)
                                                                 : "too little text to tell");
        section("turn", "Turn",
                "Letters stand on a line: their lower edges agree more often than their upper ones, which "
                "tells which way up the page lies. The bars count neighbours that agree.",
                facts, {"turn"},
                shown(Picture::kUpright, "upright", "The photograph after it was turned") +
                    (turn.evidence ? turn_chart(*turn.evidence) : ""));
    }

    void gray() {
        const std::string picture = shown(Picture::kGray, "gray", "The photograph's grey levels");
        if (picture.empty()) return;
        section("gray", "Grey levels",
                "Colours become levels from black to white, on which print is looked for.", {}, {"gray"},
                picture);
    }

    void levels() {
        if (!pictures_.levels()) return;
        const Binarisation& how = *report_.binarisation;
        const bool adaptive = how.method == BinariseMethod::kAdaptive;
        Facts facts = {{"method", binarise_method_names()[static_cast<size_t>(how.method)]}};
        if (adaptive) {
            facts.emplace_back("contrast", number_text(how.contrast, 1) + " levels");
            facts.emplace_back("surroundings", pixel_size(how.block, how.block));
        } else {
            facts.emplace_back("threshold", std::to_string(how.threshold));
        }
        section("histogram", "Histogram",
                adaptive
                    ? "How much darker (left) or lighter (right) than their surroundings pixels are. What is "
                      "left of the line is print, in light and in shadow alike; heights are roots of the "
                      "counts."
                    : "How many pixels have each level, from black to white. What is left of the line is "
                      "print; heights are roots of the counts.",
                facts, {}, level_chart(*pictures_.levels(), how));
    }

    void light() {
        const std::string picture = shown(Picture::kLight, "light", "The light on the page");
        if (picture.empty()) return;
        Facts facts;
        if (report_.page) {
            facts.emplace_back("ink", std::to_string(report_.page->ink.level));
            facts.emplace_back("paper from", std::to_string(report_.page->ink.threshold));
        }
        section("light", "Even light",
                "The light that fell on the level page: what is left once print is filled with what "
                "surrounds it. The page is divided by it, so that paper is white in shadows, too.",
                facts, {}, picture);
    }

    void binary() {
        const std::string picture = shown(Picture::kBinary, "binary", "Dark print as white on black");
        if (picture.empty()) return;
        section("binary", "Binary picture",
                "Print is white and everything else black: nothing in between is left.",
                {{"binarised", in_words(*report_.binarisation)}}, {"binarise"}, picture);
    }

    void paper() {
        if (!report_.paper) return;
        const Points& outline = *report_.paper;
        section("paper", "Paper",
                "The sheet is what surrounds the letters without a step in brightness. What lies beyond it, "
                "a desk or the next page, is white on the prepared page.",
                {{"corners", std::to_string(outline.size)}}, {"paper"},
                shown(Picture::kPaper, "paper", "The outline of the paper",
                      overlaid(Picture::kPaper,
                               [&](int cols, int rows) { return paper_overlay(outline, cols, rows); })));
    }

    void components() {
        if (!report_.print) return;
        const TextComponents& text = report_.print->text;
        const auto entry = [](Fate fate, int64_t n, const char* words) {
            return KeyEntry{css(colour_of(fate)), std::to_string(n) + " " + words};
        };
        section("components", "Components",
                "Marks of connected ink. Those that can be letters are text; the others are left out, by "
                "their size or because they touch the edge.",
                {{"found", std::to_string(report_.print->components.size)},
                 {"text", std::to_string(text.kept.size)},
                 {"text height", std::to_string(text.text_height) + " pixels"}},
                {"components"},
                shown(Picture::kComponents, "components", "Components by what they are taken for") +
                    key({entry(Fate::kText, text.kept.size, "text"),
                         entry(Fate::kBorder, text.border, "touch the edge"),
                         entry(Fate::kTall, text.tall, "too tall: frames, pictures"),
                         entry(Fate::kWide, text.wide, "too wide: rules"),
                         entry(Fate::kSpeck, text.specks, "too small: specks, dots")}));
    }

    void rows() {
        if (!report_.text_rows) return;
        section("rows", "Rows of text",
                "Letters that stand side by side are chained to rows; each row has a colour of its own.",
                {{"rows", std::to_string(report_.text_rows->size())}}, {"rows"},
                shown(Picture::kRows, "rows", "Letters in the colours of their rows"));
    }

    void lines() {
        if (!report_.text_rows || report_.text_rows->empty()) return;
        const TextRows& text_rows = *report_.text_rows;
        Facts facts = {{"page", in_words(*report_.deskew)}};
        if (text_rows.size() > kMostOverlaid)
            facts.emplace_back("shown", "the first " + std::to_string(kMostOverlaid) + " rows");
        section("lines", "Baselines and hulls",
                "What each row stands on, the tightest shape without dents round it, and the smallest "
                "rectangle round that, at whatever angle.",
                facts, {"skew"},
                shown(Picture::kLines, "lines", "Rows with their baselines, hulls and rectangles",
                      overlaid(Picture::kLines,
                               [&](int cols, int rows) { return rows_overlay(text_rows, cols, rows); })) +
                    key({{"var(--mark)", "baseline", "stroke"},
                         {"var(--accent-soft)", "hull"},
                         {"repeating-linear-gradient(90deg,var(--mark) 0 4px,transparent 4px 7px)",
                          "rectangle of least area", "stroke"}}));
    }

    void seals() {
        if (!report_.seals) return;
        const Seals& seals = *report_.seals;
        Facts facts = {{"seals", std::to_string(seals.seals.size())}};
        if (seals.found()) facts.emplace_back("pixels", std::to_string(seals.pixels));
        if (!seals.reason.empty()) facts.emplace_back("none, since", seals.reason);
        section("seals", "Red seals",
                "Red ink on the paper, unless it is as long as a heading. It is taken off the page, and "
                "black print below it stays.",
                facts, {"seal"}, shown(Picture::kSeal, "seals", "Seals in colour, the rest in pale grey"));
    }

    void saliency() {
        const std::string picture = shown(Picture::kSaliency, "saliency", "The saliency of the grey levels");
        if (picture.empty()) return;
        section("saliency", "Saliency", "The rarer a pixel's level, the lighter it is here: what stands out.",
                {}, {"saliency"}, picture);
    }

    void page() {
        const std::string picture = shown(Picture::kPage, "page", "The prepared page");
        if (picture.empty()) return;
        section("page", "Prepared page",
                "What a recogniser is given: upright, level, evenly lit, nothing but paper.",
                {{"kind", page_kind_names()[static_cast<size_t>(report_.page->kind)]},
                 {"levelled", in_words(*report_.deskew)},
                 {"size", pixel_size(report_.deskew->cols, report_.deskew->rows)},
                 {"dots an inch", std::to_string(report_.page->dots_per_inch)}},
                {"page"}, picture);
    }

    const Report& report_;
    const ReportPictures& pictures_;
    std::string html_;
    int number_ = 0;
};

std::string head(const std::string& title) {
    return "<!DOCTYPE html>\n"
           "<html lang=\"en\"><head><meta charset=\"utf-8\"/>\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
           "style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'\"/>\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
           "<link rel=\"icon\" href=\"data:,\"/>\n"
           "<title>" +
           title + "</title><style>" + kReportStyle + "</style></head>\n";
}

std::string key_figures(const Report& report) {
    Facts figures = {{"size", pixel_size(report.source.cols, report.source.rows)}};
    if (report.sharpness) figures.emplace_back("sharpness", verdict(*report.sharpness));
    if (report.print) figures.emplace_back("letters", std::to_string(report.print->text.kept.size()));
    if (report.text_rows) figures.emplace_back("rows of text", std::to_string(report.text_rows->size()));
    if (report.seals) figures.emplace_back("seals", std::to_string(report.seals->seals.size()));
    figures.emplace_back("time", milliseconds(report.steps.total_ms()));
    return definitions(figures, "figures");
}

/// What a file of a run is.
std::string meaning_of(const std::string& file) {
    const std::string stem = std::filesystem::path(file).stem().string();
    for (const auto& [name, meaning] : Facts{{"page", "the page for a recogniser"},
                                             {"binary", "dark print, white on black"},
                                             {"rows", "rows in colours"},
                                             {"seal", "seals in colour"},
                                             {"saliency", "what stands out"},
                                             {"library", "the library's lines"},
                                             {"timings", "milliseconds a step"},
                                             {"report", "this page"},
                                             {"result", "what was measured"}})
        if (name == stem) return meaning;
    return "";
}

std::string last_section(const Report& report, const Facts& options, const std::vector<std::string>& files) {
    const Source& source = report.source;
    Facts written;
    for (const std::string& file : files) written.emplace_back(file, meaning_of(file));
    const auto part = [](const char* title, const Facts& facts) {
        return "<div><h3>" + std::string(title) + "</h3>" + words_table(facts) + "</div>";
    };
    return "<section id=\"facts\" class=\"last\">" +
           part("Input", {{"file", source.file},
                          {"format", source.format},
                          {"stored", pixel_size(source.stored_cols, source.stored_rows)},
                          {"orientation", std::to_string(source.orientation)},
                          {"upright", pixel_size(report.turn.cols, report.turn.rows)}}) +
           part("Options", options) + part("Files", written) + "</section>\n";
}

}  // namespace

Bytes html_report(const Report& report, const ReportPictures& pictures, const Facts& options,
                  const std::vector<std::string>& files) {
    const std::string title = escaped(std::filesystem::path(report.source.file).filename().string());
    Writer writer(report, pictures);
    const std::string html =
        head(title) + "<body><header><p class=\"program\">docprep " DOCPREP_VERSION "</p><h1><bdi>" + title +
        "</bdi></h1>" + key_figures(report) + "</header>\n<main>\n" + writer.stages() + writer.times() +
        last_section(report, options, files) +
        "</main><footer>Milliseconds differ from run to run; everything else is the same "
        "whenever a photograph is prepared alike.</footer></body></html>\n";
    return Bytes(html.begin(), html.end());
}

}  // namespace docprep
