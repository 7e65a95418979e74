// What a run has found, for programs.
#ifndef DOCPREP_RESULT_JSON_H
#define DOCPREP_RESULT_JSON_H

#include <string>
#include <vector>

#include "base/bytes.h"
#include "pipeline/report.h"

namespace docprep {

/// result.json: the same bytes whenever a photograph is prepared alike. U+FFFD stands for bytes of the input's name
/// that are not UTF-8.
/// @param files  the names of those that stand beside it; on its second line, so that the next run finds them quickly
Bytes result_json(const Report& report, const std::vector<std::string>& files);

/// timings.json: milliseconds by the names of the steps.
Bytes timings_json(const Report& report);

}  // namespace docprep

#endif  // DOCPREP_RESULT_JSON_H
