// What report.html draws by itself: charts, and lines over pictures, as HTML with inline SVG.
#ifndef DOCPREP_REPORT_CHARTS_H
#define DOCPREP_REPORT_CHARTS_H

#include <string>
#include <vector>

#include "base/drawing.h"
#include "pipeline/histogram.h"
#include "pipeline/report.h"

namespace docprep {

/// "rgb(1 2 3)"
std::string css(const Colour& colour);

/// What a colour stands for.
struct KeyEntry {
    std::string colour;
    std::string words;
    const char* kind = "";  ///< "stroke": of a line
};

std::string key(const std::vector<KeyEntry>& entries);

/// A named amount, as a row with a bar.
struct Bar {
    std::string name;
    std::string amount;    ///< in words
    double share = 0;      ///< of the full length: 0 to 1
    const char* row = "";  ///< the row's class
};

std::string bar_table(const std::vector<Bar>& bars);

/// The pixels by what decides, print and paper in different colours, with the limit between them.
/// @param levels  see decisive_levels
std::string level_chart(const Histogram& levels, const Binarisation& how);

/// The value beside what counts as sharp.
std::string sharpness_scale(const Sharpness& sharpness);

/// Pairs of neighbours that agree, as the page lies and sideways.
std::string turn_chart(const TurnEvidence& evidence);

/// Lines over a picture of so many pixels, which they have to be stretched over.
std::string paper_overlay(const Points& outline, int cols, int rows);
/// Of the first kMostOverlaid rows.
std::string rows_overlay(const TextRows& text_rows, int cols, int rows);
constexpr size_t kMostOverlaid = 400;

}  // namespace docprep

#endif  // DOCPREP_REPORT_CHARTS_H
