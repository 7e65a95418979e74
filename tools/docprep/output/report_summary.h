// The table of a run of the command without a name.
#ifndef DOCPREP_REPORT_SUMMARY_H
#define DOCPREP_REPORT_SUMMARY_H

#include <string>
#include <vector>

#include "output/summary.h"
#include "pipeline/report.h"

namespace docprep {

/// The table for people; `paths` are the files written.
Summary summary(const Report& report, const std::vector<std::string>& paths);

}  // namespace docprep

#endif  // DOCPREP_REPORT_SUMMARY_H
