// What a run of the command without a name says about itself: result.json and the summary.
#ifndef DOCPREP_REPORT_H
#define DOCPREP_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/steps.h"
#include "pipeline/binarise.h"
#include "pipeline/deskew.h"
#include "pipeline/page.h"
#include "pipeline/print.h"
#include "pipeline/seals.h"
#include "pipeline/sharpness.h"
#include "pipeline/source.h"
#include "pipeline/text_rows.h"
#include "pipeline/turn.h"

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

}  // namespace docprep

#endif  // DOCPREP_REPORT_H
