#include "output/report_summary.h"

#include "base/number_text.h"
#include "pipeline/in_words.h"

namespace docprep {

Summary summary(const Report& report, const std::vector<std::string>& paths) {
    Summary table;
    table.source(report.source);
    if (report.turn.degrees != 0 || report.turn.evidence) table.line("turned", in_words(report.turn));
    if (report.sharpness)
        table.line("sharpness",
                   number_text(double{report.sharpness->value}, 0) + ", " + verdict(*report.sharpness));
    if (report.binarisation) table.line("binarised", in_words(*report.binarisation));
    if (report.deskew) table.line("page", in_words(*report.deskew));
    if (report.print) {
        table.count("components", report.print->components.size);
        table.count("of them text", report.print->text.kept.size());
    }
    if (report.text_rows && report.text_rows->empty())
        table.line("rows", "none: no text was found");
    else if (report.text_rows)
        table.count("rows", static_cast<int64_t>(report.text_rows->size()));
    if (report.seals && report.seals->found()) {
        table.count("seals", static_cast<int64_t>(report.seals->seals.size()));
        table.count("seal pixels", report.seals->pixels);
    } else if (report.seals) {
        const std::string& reason = report.seals->reason;
        table.line("seal", reason.empty() ? "none" : "none (" + reason + ")");
    }
    table.steps(report.steps);
    table.written(paths);
    return table;
}

}  // namespace docprep
