// How report.html looks.
#ifndef DOCPREP_REPORT_STYLE_H
#define DOCPREP_REPORT_STYLE_H

namespace docprep {

/// The style sheet; without <, & and ]]>, so that it can stand in HTML and XML alike.
extern const char* const kReportStyle;

}  // namespace docprep

#endif  // DOCPREP_REPORT_STYLE_H
