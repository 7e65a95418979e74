// What a run of the command without a name says about itself: result.json and the summary.
#ifndef DOCPREP_REPORT_H
#define DOCPREP_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "file_bytes.h"
#include "input.h"
#include "row_picture.h"
#include "seals.h"
#include "steps.h"
#include "summary.h"
#include "text_components.h"

namespace docprep {

/// The components of a page: how many there are, and which of them are text.
struct PageComponents {
    int found = 0;
    TextComponents text;
};

/// Everything that is reported; of stages that did not run there is nothing.
struct Report {
    Source source;
    std::optional<int> threshold;
    std::optional<PageComponents> components;
    std::optional<Rows> text_rows;
    std::optional<Seals> seals;
    Steps steps;
};

/// The smallest rectangle round all of them; empty for none.
orvex_cv_991::Rect bounding_rect(const Rects& rects);

/// result.json. Bytes of the input's name that are not UTF-8 become U+FFFD.
Bytes result_json(const Report& report);

/// The table for people; `paths` are the files written.
Summary summary(const Report& report, const std::vector<std::string>& paths);

}  // namespace docprep

#endif  // DOCPREP_REPORT_H
