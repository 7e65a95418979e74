#include "report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace docprep {

using orvex_cv_991::Rect;
using Json = nlohmann::ordered_json;

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
    void add(const std::string& name, const Json& value) {
        add(name) += value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    const std::string& close() { return text_ += "\n}\n"; }

 private:
    std::string text_;
};

void append(std::string& text, const Rect& rect) {
    text += "{\"x\":" + std::to_string(rect.x) + ",\"y\":" + std::to_string(rect.y) +
            ",\"width\":" + std::to_string(rect.width) + ",\"height\":" + std::to_string(rect.height) + "}";
}

/// A list with one line a rectangle. Not through Json, whose objects take 400 bytes a rectangle: noise can
/// have millions.
void append(std::string& text, const Rects& rects, const char* line_start) {
    text += "[";
    for (int k = 0; k < rects.size; ++k) {
        text += (k == 0 ? "\n" : ",\n") + std::string(line_start);
        append(text, rects[k]);
    }
    text += "]";
}

void append(std::string& text, const Rows& rows) {
    text += "[";
    for (int k = 0; k < rows.size; ++k) {
        text += k == 0 ? "\n    {\"rect\":" : ",\n    {\"rect\":";
        append(text, bounding_rect(rows[k]));
        text += ",\"components\":";
        append(text, rows[k], "      ");
        text += "}";
    }
    text += "]";
}

void append(std::string& text, const Seals& seals) {
    if (!seals.found()) {
        text += "null";
        return;
    }
    text += "{\"pixels\":" + std::to_string(seals.pixels) + ",\"rects\":";
    append(text, seals.rects, "    ");
    text += "}";
}

}  // namespace

Rect bounding_rect(const Rects& rects) {
    if (rects.size == 0) return Rect();
    int left = rects[0].x, top = rects[0].y, right = left, bottom = top;
    for (int k = 0; k < rects.size; ++k) {
        const Rect& rect = rects[k];
        left = std::min(left, rect.x);
        top = std::min(top, rect.y);
        right = std::max(right, rect.x + rect.width);
        bottom = std::max(bottom, rect.y + rect.height);
    }
    return Rect(left, top, right - left, bottom - top);
}

Bytes result_json(const Report& report) {
    const Source& source = report.source;
    Members members;
    members.add("docprep", DOCPREP_VERSION);
    members.add("input", {{"file", source.file},
                          {"format", source.format},
                          {"width", source.stored_cols},
                          {"height", source.stored_rows},
                          {"orientation", source.orientation}});
    members.add("width", source.cols);
    members.add("height", source.rows);
    if (report.threshold) members.add("threshold", *report.threshold);
    if (report.components) {
        const TextComponents& text = report.components->text;
        members.add(
            "components",
            {{"found", report.components->found},
             {"text", text.kept.size()},
             {"text_height", text.text_height},
             {"dropped",
              {{"border", text.border}, {"tall", text.tall}, {"wide", text.wide}, {"speck", text.specks}}}});
    }
    if (report.seals) append(members.add("seal"), *report.seals);
    Json ms = Json::object();
    for (const Steps::Step& step : report.steps.list()) ms[step.name] = step.ms;
    members.add("milliseconds", ms);
    if (report.text_rows) append(members.add("rows"), *report.text_rows);
    const std::string& text = members.close();
    return Bytes(text.begin(), text.end());
}

Summary summary(const Report& report, const std::vector<std::string>& paths) {
    Summary table;
    table.source(report.source);
    if (report.threshold) table.count("threshold", *report.threshold);
    if (report.components) {
        table.count("components", report.components->found);
        table.count("of them text", report.components->text.kept.size());
    }
    if (report.text_rows) table.count("rows", report.text_rows->size);
    if (report.seals && report.seals->found()) {
        table.count("seal marks", report.seals->rects.size);
        table.count("seal pixels", report.seals->pixels);
    } else if (report.seals) {
        const std::string& reason = report.seals->reason;
        table.line("seal", reason.empty() ? "none" : "none (" + reason + ")");
    }
    table.steps(report.steps);
    table.written(paths);
    return table;
}

}  // namespace docprep
