// report.html: a run told in pictures, on one page that needs no other file and no network.
#ifndef DOCPREP_HTML_REPORT_H
#define DOCPREP_HTML_REPORT_H

#include <string>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "html/report_pictures.h"

namespace docprep {

/// Names and values, for people.
using Facts = std::vector<std::pair<std::string, std::string>>;

/// The page, as HTML that is well-formed XML. It has no script, and browsers are told to load nothing. Of stages
/// that did not run there is nothing.
/// @param options  what the run was asked for
/// @param files    the names of those that stand beside it
/// @throws std::bad_alloc
Bytes html_report(const Report& report, const ReportPictures& pictures, const Facts& options,
                  const std::vector<std::string>& files);

}  // namespace docprep

#endif  // DOCPREP_HTML_REPORT_H
