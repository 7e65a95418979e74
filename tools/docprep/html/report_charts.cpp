#include "html/report_charts.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "html/html_text.h"
#include "pipeline/row_picture.h"

namespace docprep {

using orvex_cv_991::Point;
using orvex_cv_991::Point32f;

namespace {

std::string percent(double share) {
    return number_text(100 * std::clamp(share, 0.0, 1.0), 2) + "%";
}

/// "x,y x,y ..." with `digits` behind the point.
template <class List, class Place>
std::string polygon_points(const List& list, size_t n, const Place& place) {
    std::string text;
    for (size_t k = 0; k < n; ++k) {
        const auto& [x, y] = place(list[static_cast<int>(k)]);
        text += (k == 0 ? "" : " ") + number_text(x, 1) + "," + number_text(y, 1);
    }
    return text;
}

std::string points_of(const Points& points) {
    return polygon_points(points, points.size(),
                          [](const Point& p) { return std::pair<double, double>(p.x, p.y); });
}

std::string points_of(const orvex_991::vector<Point32f>& points) {
    return polygon_points(points, points.size(),
                          [](const Point32f& p) { return std::pair<double, double>(p.x, p.y); });
}

std::string points_of(const std::vector<Place>& places) {
    std::string text;
    for (const Place& place : places) text += number_text(place.x, 1) + "," + number_text(place.y, 1) + " ";
    return text;
}

std::string overlay(int cols, int rows, const std::string& shapes) {
    return "<svg viewBox=\"0 0 " + std::to_string(cols) + " " + std::to_string(rows) +
           "\" preserveAspectRatio=\"none\" aria-hidden=\"true\">" + shapes + "</svg>";
}

std::string row_shapes(const TextRow& row, const std::string& colour) {
    return "<g stroke=\"" + colour + "\"><polygon class=\"hull\" fill=\"" + colour + "\" points=\"" +
           points_of(row.hull) + "\"/><polygon class=\"line least\" points=\"" + points_of(row.min_area.pts) +
           "\"/><polyline class=\"line baseline\" points=\"" + points_of(row.baseline) + "\"/></g>";
}

/// The levels that a chart shows.
struct Axis {
    int first;
    int last;

    int levels() const { return last - first + 1; }
    double share(double level) const { return (level - first) / levels(); }
};

/// All levels, or all distances but the rarest, with the limit and what is like its surroundings among them.
Axis axis_of(const Histogram& levels, const Binarisation& how) {
    if (how.method == BinariseMethod::kOtsu) return {0, 255};
    constexpr double kRarest = 0.002;
    const int limit = static_cast<int>(std::ceil(1.5 * how.contrast));
    return {std::max(std::min(levels.quantile(kRarest), -limit), -255),
            std::min(std::max(levels.quantile(1 - kRarest), limit), 255)};
}

/// The roots of the counts, so that little print is seen beside much paper: 0 to 100.
std::vector<double> heights_of(const Histogram& levels, const Axis& axis) {
    std::vector<double> heights;
    for (int level = axis.first; level <= axis.last; ++level)
        heights.push_back(std::sqrt(static_cast<double>(levels.count(level))));
    const double most = *std::max_element(heights.begin(), heights.end());
    for (double& height : heights) height *= most > 0 ? 100 / most : 0;
    return heights;
}

/// The bars from one position up to another, as one shape.
std::string bars_path(const std::vector<double>& heights, size_t begin, size_t end, const char* kind) {
    std::string path = "M" + std::to_string(begin) + " 100";
    for (size_t k = begin; k < end; ++k) path += "V" + number_text(100 - heights[k], 1) + "h1";
    return std::string("<path class=\"") + kind + "\" d=\"" + path + "V100Z\"/>";
}

}  // namespace

std::string key(const std::vector<KeyEntry>& entries) {
    std::string list;
    for (const KeyEntry& entry : entries)
        list += "<li><i class=\"" + std::string(entry.kind) + "\" style=\"--c:" + entry.colour + "\"></i>" +
                escaped(entry.words) + "</li>";
    return "<ul class=\"key\">" + list + "</ul>";
}

std::string css(const Colour& colour) {
    return "rgb(" + std::to_string(colour.bgr[2]) + " " + std::to_string(colour.bgr[1]) + " " +
           std::to_string(colour.bgr[0]) + ")";
}

std::string bar_table(const std::vector<Bar>& bars) {
    std::string rows;
    for (const Bar& bar : bars)
        rows +=
            "<tr class=\"" + std::string(bar.row) + "\"><th scope=\"row\">" + escaped(bar.name) +
            "</th><td class=\"bar\"><i style=\"--share:" + number_text(std::clamp(bar.share, 0.0, 1.0), 4) +
            "\"></i></td><td class=\"amount\">" + escaped(bar.amount) + "</td></tr>";
    return "<table><tbody>" + rows + "</tbody></table>";
}

std::string level_chart(const Histogram& levels, const Binarisation& how) {
    const bool adaptive = how.method == BinariseMethod::kAdaptive;
    const Axis axis = axis_of(levels, how);
    const std::vector<double> heights = heights_of(levels, axis);
    // The first level that is paper.
    const double limit = adaptive ? -how.contrast : how.threshold + 1;
    const double at = axis.share(limit);
    const auto parted =
        static_cast<size_t>(std::clamp(static_cast<int>(std::ceil(limit)) - axis.first, 0, axis.levels()));
    const std::string words =
        adaptive ? number_text(how.contrast, 1) + " darker" : "threshold " + std::to_string(how.threshold);
    std::string chart = "<div class=\"chart\" role=\"img\" aria-label=\"" +
                        escaped("Histogram; print and paper part at " + words) + "\"><svg viewBox=\"0 0 " +
                        std::to_string(axis.levels()) +
                        " 100\" preserveAspectRatio=\"none\" aria-hidden=\"true\">" +
                        bars_path(heights, 0, parted, "print") +
                        bars_path(heights, parted, heights.size(), "paper") + "</svg>";
    chart += "<div class=\"limit" + std::string(at > 0.5 ? " late" : "") + "\" style=\"--at:" + percent(at) +
             "\"><span>" + words + "</span></div>";
    chart += "<div class=\"axis\"><span>" + std::to_string(axis.first) + "</span>";
    if (adaptive) chart += "<span class=\"zero\" style=\"--at:" + percent(axis.share(0)) + "\">0</span>";
    chart += "<span>" + std::string(adaptive ? "+" : "") + std::to_string(axis.last) + "</span></div></div>";
    return chart + key({{"var(--ink)", "print"}, {"var(--accent-soft)", "paper"}});
}

std::string sharpness_scale(const Sharpness& sharpness) {
    constexpr double kMost = 300;  // the sharpest of the photographs measured have somewhat less
    const std::string at = percent(double{sharpness.value} / kMost);
    return "<div class=\"scale\"><span class=\"value\" style=\"--at:" + at + "\">" +
           number_text(double{sharpness.value}, 0) + "</span><div class=\"track\"><i class=\"" +
           (sharpness.value < kSharp ? "bad" : "sharp") + "\" style=\"--at:" + at +
           "\"></i></div><div class=\"limit\" style=\"--at:" + percent(double{kSharp} / kMost) +
           "\"><span>sharp from " + number_text(double{kSharp}, 0) + "</span></div></div>";
}

std::string turn_chart(const TurnEvidence& evidence) {
    const Alignment& level = evidence.level;
    const Alignment& sideways = evidence.sideways;
    const int most = std::max({level.feet, level.heads, sideways.feet, sideways.heads, 1});
    const auto bar = [&](const char* name, int pairs, bool chosen) {
        return Bar{name, std::to_string(pairs), static_cast<double>(pairs) / most, chosen ? "" : "less"};
    };
    const bool turned_sideways = evidence.degrees % 180 != 0;
    return bar_table({bar("as it lies, lower edges", level.feet, evidence.degrees == 0),
                      bar("as it lies, upper edges", level.heads, evidence.degrees == 180),
                      bar("sideways, lower edges", sideways.feet, turned_sideways && evidence.degrees == 90),
                      bar("sideways, upper edges", sideways.heads, evidence.degrees == 270)});
}

std::string paper_overlay(const Points& outline, int cols, int rows) {
    const std::string points = points_of(outline);
    // The picture's edge and the outline in one path: what lies between them is darkened.
    return overlay(cols, rows,
                   "<path class=\"outside\" fill-rule=\"evenodd\" d=\"M0 0H" + std::to_string(cols) + "V" +
                       std::to_string(rows) + "H0ZM" + points +
                       "Z\"/><polygon class=\"line outline\" points=\"" + points + "\"/>");
}

std::string rows_overlay(const TextRows& text_rows, int cols, int rows) {
    std::string shapes;
    for (size_t k = 0; k < std::min(text_rows.size(), kMostOverlaid); ++k)
        shapes += row_shapes(text_rows[k], css(row_colour(static_cast<int>(k))));
    return overlay(cols, rows, shapes);
}

}  // namespace docprep
