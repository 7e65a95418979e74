// What a run of the command without a name says about itself: result.json and the summary.
#ifndef DOCPREP_REPORT_H
#define DOCPREP_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "binarise.h"
#include "deskew.h"
#include "file_bytes.h"
#include "input.h"
#include "page.h"
#include "print.h"
#include "seals.h"
#include "sharpness.h"
#include "steps.h"
#include "summary.h"
#include "text_rows.h"
#include "turn.h"

namespace docprep {

/// How the photograph was turned after it was read.
struct Turn {
    enum class How {
        kExif,  ///< not at all: the camera's note had it upright
        kAuto,  ///< as its text says
        kGiven  ///< by the user's wish
    };

    int degrees = 0;  ///< clockwise
    How how = How::kAuto;
    std::optional<TurnEvidence> evidence;  ///< what the text says
    int cols = 0;                          ///< extents after it
    int rows = 0;
};

struct PageReport {
    PageKind kind = PageKind::kSoft;
    Ink ink;  ///< of a soft or grey page
    int dots_per_inch = 0;
};

/// Everything that is reported; of stages that did not run there is nothing.
struct Report {
    Source source;
    Turn turn;
    std::optional<Sharpness> sharpness;
    std::optional<Binarisation> binarisation;
    std::optional<Deskew> deskew;
    std::optional<Points> paper;  ///< its outline
    std::optional<PageReport> page;
    std::optional<Print> print;
    std::optional<TextRows> text_rows;
    std::optional<Seals> seals;
    Steps steps;
};

/// For people.
std::string in_words(const Binarisation& how);
std::string in_words(const Turn& turn);
std::string in_words(const Deskew& deskew);

/// result.json: the same bytes whenever a photograph is prepared alike. U+FFFD stands for bytes of the input's name
/// that are not UTF-8.
/// @param files  the names of those that stand beside it; on its second line, so that the next run finds them quickly
Bytes result_json(const Report& report, const std::vector<std::string>& files);

/// timings.json: milliseconds by the names of the steps.
Bytes timings_json(const Report& report);

/// The table for people; `paths` are the files written.
Summary summary(const Report& report, const std::vector<std::string>& paths);

}  // namespace docprep

#endif  // DOCPREP_REPORT_H
