#include "pipeline/result_json.h"

#include <array>
#include <cmath>

#include "base/geometry_json.h"
#include "base/json.h"

namespace docprep {

using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;

namespace {

/// An object's members, one a line.
class Members {
 public:
    /// Begins a member; its value is to be appended to what is returned.
    std::string& add(const std::string& name) {
        text_ += text_.empty() ? "{\n  \"" : ",\n  \"";
        return text_ += name + "\": ";
    }
    /// A member with its value on one line.
    void add(const std::string& name, const Json& value) { add(name) += value.dump(); }
    const std::string& close() { return text_ += "\n}\n"; }

 private:
    std::string text_;
};

void append(std::string& text, const Rect& rect) {
    text += "{\"x\":" + std::to_string(rect.x) + ",\"y\":" + std::to_string(rect.y) +
            ",\"width\":" + std::to_string(rect.width) + ",\"height\":" + std::to_string(rect.height) + "}";
}

/// A list with one line a rectangle: noise can have millions.
void append(std::string& text, const Rects& rects, const char* line_start) {
    text += "[";
    for (int k = 0; k < rects.size; ++k) {
        text += (k == 0 ? "\n" : ",\n") + std::string(line_start);
        append(text, rects[k]);
    }
    text += "]";
}

/// What is measured is not exact to more digits.
double hundredths(double value) {
    return std::round(value * 100) / 100;
}

using docprep::as_json;  // of points and rectangles, which the others here would hide

Json rounded(const orvex_991::vector<Point32f>& points) {
    Json list = Json::array();
    for (int k = 0; k < points.size; ++k)
        list.push_back(
            Json::array(std::array{hundredths(double{points[k].x}), hundredths(double{points[k].y})}));
    return list;
}

void append(std::string& text, const Seals& seals) {
    if (!seals.found()) {
        text += "null";
        return;
    }
    Rects rects;
    Json outlines = Json::array();
    for (const Seal& seal : seals.seals) {
        rects.push_back(seal.rect);
        outlines.push_back(as_json(seal.outline));
    }
    text += "{\"pixels\":" + std::to_string(seals.pixels) + ",\"rects\":";
    append(text, rects, "    ");
    text += ",\"outlines\":" + outlines.dump() +
            ",\"marks\":{\"pixels\":" + std::to_string(seals.mark_pixels) + ",\"rects\":";
    append(text, seals.marks, "    ");
    text += "}}";
}

Json as_json(const RotatedRect& rect) {
    if (rect.pts.size == 0) return nullptr;
    return {{"corners", rounded(rect.pts)}, {"width", rect.width}, {"height", rect.height}};
}

Json as_json(const PhotoPlace& place) {
    Json corners = Json::array();
    for (const Point& corner : place.corners) corners.push_back(as_json(corner));
    return {{"corners", corners}, {"rect", as_json(place.rect)}};
}

Json as_json(const Source& source) {
    return {{"file", source.file},
            {"format", source.format},
            {"width", source.stored_cols},
            {"height", source.stored_rows},
            {"orientation", source.orientation}};
}

Json as_json(const Alignment& alignment) {
    return {{"feet", alignment.feet}, {"heads", alignment.heads}};
}

const char* word(Turn::How how) {
    switch (how) {
        case Turn::How::kExif:
            return "exif";
        case Turn::How::kAuto:
            return "auto";
        default:
            return "given";
    }
}

Json as_json(const Turn& turn) {
    Json json = {{"degrees", turn.degrees}, {"how", word(turn.how)}};
    if (turn.evidence) {
        json.add("sure", turn.evidence->sure);
        json.add("confidence", hundredths(turn.evidence->confidence()));
        json.add("level", as_json(turn.evidence->level));
        json.add("sideways", as_json(turn.evidence->sideways));
    }
    json.add("width", turn.cols);
    json.add("height", turn.rows);
    return json;
}

Json as_json(const Sharpness& sharpness) {
    return {{"value", hundredths(double{sharpness.value})},
            {"verdict", verdict(sharpness)},
            {"sharp_from", double{kSharp}}};
}

Json as_json(const Binarisation& how) {
    Json json = {{"method", binarise_method_names()[static_cast<size_t>(how.method)]}};
    if (how.method == BinariseMethod::kOtsu) {
        json.add("threshold", how.threshold);
    } else {
        json.add("block", how.block);
        json.add("contrast", hundredths(how.contrast));
    }
    return json;
}

Json as_json(const Deskew& deskew) {
    return {{"degrees", hundredths(deskew.degrees)},
            {"matrix", Json::array(deskew.matrix)},
            {"straightened", !deskew.bend.none()},
            {"width", deskew.cols},
            {"height", deskew.rows}};
}

Json as_json(const PageReport& page) {
    Json json = {{"kind", page_kind_names()[static_cast<size_t>(page.kind)]},
                 {"dots_per_inch", page.dots_per_inch}};
    if (page.kind != PageKind::kBinary) {
        json.add("ink", page.ink.level);
        json.add("paper_from", page.ink.threshold);
    }
    return json;
}

Json as_json(const Print& print) {
    const TextComponents& text = print.text;
    return {{"found", print.components.size()},
            {"text", text.kept.size()},
            {"text_height", text.text_height},
            {"dropped",
             {{"border", text.border}, {"tall", text.tall}, {"wide", text.wide}, {"speck", text.specks}}}};
}

Json as_json(const std::vector<Place>& line) {
    Json list = Json::array();
    for (const Place& place : line)
        list.push_back(Json::array(std::array{hundredths(place.x), hundredths(place.y)}));
    return list;
}

void append(std::string& text, const TextRow& row) {
    const Json shapes = {{"rect", as_json(row.rect)},
                         {"baseline", as_json(row.baseline)},
                         {"hull", as_json(row.hull)},
                         {"min_area_rect", as_json(row.min_area)},
                         {"photo", as_json(row.on_photo)}};
    text += shapes.dump();
    text.back() = ',';  // in place of the closing brace
    text += "\"components\":";
    append(text, row.components, "      ");
    text += "}";
}

void append(std::string& text, const TextRows& rows) {
    text += "[";
    for (size_t k = 0; k < rows.size(); ++k) {
        text += k == 0 ? "\n    " : ",\n    ";
        append(text, rows[k]);
    }
    text += "]";
}

}  // namespace

Bytes result_json(const Report& report, const std::vector<std::string>& files) {
    Members members;
    members.add("files", Json::array(files));
    members.add("docprep", DOCPREP_VERSION);
    members.add("input", as_json(report.source));
    members.add("width", report.source.cols);
    members.add("height", report.source.rows);
    members.add("turn", as_json(report.turn));
    if (report.sharpness) members.add("sharpness", as_json(*report.sharpness));
    if (report.binarisation) members.add("binarise", as_json(*report.binarisation));
    if (report.deskew) members.add("deskew", as_json(*report.deskew));
    if (report.paper) members.add("paper", {{"outline", as_json(*report.paper)}});
    if (report.page) members.add("page", as_json(*report.page));
    if (report.print) members.add("components", as_json(*report.print));
    if (report.seals) append(members.add("seal"), *report.seals);
    if (report.text_rows) append(members.add("rows"), *report.text_rows);
    const std::string& text = members.close();
    return Bytes(text.begin(), text.end());
}

Bytes timings_json(const Report& report) {
    Members members;
    for (const Steps::Step& step : report.steps.list()) members.add(step.name, step.ms);
    const std::string& text = members.close();
    return Bytes(text.begin(), text.end());
}

}  // namespace docprep
