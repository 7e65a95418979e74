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
#include "print.h"
#include "seals.h"
#include "sharpness.h"
#include "steps.h"
#include "summary.h"
#include "text_rows.h"

namespace docprep {

/// The photograph turned by the user's wish.
struct Turn {
    int degrees = 0;  ///< clockwise
    int cols = 0;     ///< extents after it
    int rows = 0;
};

/// Everything that is reported; of stages that did not run there is nothing.
struct Report {
    Source source;
    Turn turn;
    std::optional<Sharpness> sharpness;
    std::optional<Binarisation> binarisation;
    std::optional<Deskew> deskew;
    std::optional<Print> print;
    std::optional<TextRows> text_rows;
    std::optional<Seals> seals;
    Steps steps;
};

/// result.json. Bytes of the input's name that are not UTF-8 become U+FFFD.
Bytes result_json(const Report& report);

/// The table for people; `paths` are the files written.
Summary summary(const Report& report, const std::vector<std::string>& paths);

}  // namespace docprep

#endif  // DOCPREP_REPORT_H
