#include "pipeline/report.h"
#include "output/report_summary.h"
#include "pipeline/result_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <stdexcept>

using docprep::Print;
using docprep::Report;
using docprep::Seals;
using docprep::Sharpness;
using docprep::Steps;
using docprep::TextRow;
using nlohmann::json;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;

namespace {

/// Of a run of every stage.
Report sample() {
    Report report;
    report.source.file = "photos/page.jpg";
    report.source.format = "JPEG";
    report.source.stored_cols = 40;
    report.source.stored_rows = 30;
    report.source.orientation = 6;
    report.source.cols = 30;
    report.source.rows = 40;
    docprep::TurnEvidence evidence;
    evidence.level = {30, 10};
    evidence.sideways = {60, 20};
    evidence.degrees = 90;
    evidence.sure = true;
    report.turn = {90, docprep::Turn::How::kAuto, evidence, 40, 30};
    report.sharpness = Sharpness{142.375f, true};
    report.binarisation.emplace().threshold = 128;
    report.deskew = docprep::Deskew{-1.5, {1, 2, 3, 4, 5, 6.5f}, docprep::Bend(), 42, 33};
    for (const Point& corner : {Point(0, 0), Point(29, 3), Point(5, 39)})
        (report.paper ? *report.paper : report.paper.emplace()).push_back(corner);
    report.page = docprep::PageReport{docprep::PageKind::kSoft, {40, 160}, 150};
    Print& print = report.print.emplace();
    for (int k = 0; k < 7; ++k) print.components.push_back(Rect(k, 2, 3, 4));
    print.text.kept.push_back(Rect(1, 2, 3, 4));
    print.text.kept.push_back(Rect(10, 3, 5, 6));
    print.text.text_height = 5;
    print.text.border = 1;
    print.text.tall = 2;
    print.text.specks = 2;
    TextRow& row = report.text_rows.emplace().emplace_back();
    row.components = print.text.kept;
    row.rect = Rect(1, 2, 14, 7);
    row.baseline = {{1, 7.25}, {14, 7.504}};
    for (const Point& corner : {Point(1, 2), Point(14, 3), Point(14, 8)}) row.hull.push_back(corner);
    for (const float x : {1.0f, 2.5f, 3.125f, 4.0f}) row.min_area.pts.push_back(Point32f(x, 9));
    row.min_area.width = 13;
    row.min_area.height = 6;
    row.on_photo.corners = {Point(1, 1), Point(2, 2), Point(3, 3), Point(4, 4)};
    row.on_photo.rect = Rect(21, 22, 23, 24);
    Seals& seals = report.seals.emplace();
    for (const Rect& rect : {Rect(20, 30, 9, 8), Rect(3, 4, 5, 6)}) {
        docprep::Seal& seal = seals.seals.emplace_back();
        seal.rect = rect;
        seal.outline.push_back(rect.left_top());
    }
    seals.pixels = 77;
    seals.marks.push_back(Rect(22, 31, 4, 3));
    seals.mark_pixels = 12;
    report.steps.run("gray", [] {});
    return report;
}

json parsed(const Report& report) {
    const docprep::Bytes text = docprep::result_json(report, {"page.png"});
    return json::parse(text.begin(), text.end());
}

}  // namespace

TEST(report, json_holds_everything) {
    json result = parsed(sample());
    EXPECT_TRUE(result["docprep"].is_string());
    EXPECT_EQ(json({{"file", "photos/page.jpg"},
                    {"format", "JPEG"},
                    {"width", 40},
                    {"height", 30},
                    {"orientation", 6}}),
              result["input"]);
    EXPECT_EQ(30, result["width"]);
    EXPECT_EQ(40, result["height"]);
    EXPECT_EQ(json({{"degrees", 90},
                    {"how", "auto"},
                    {"sure", true},
                    {"confidence", 0.67},  // 80 of 120 pairs, of which 60 of 80 at their feet
                    {"level", {{"feet", 30}, {"heads", 10}}},
                    {"sideways", {{"feet", 60}, {"heads", 20}}},
                    {"width", 40},
                    {"height", 30}}),
              result["turn"]);
    EXPECT_EQ(json({{"value", 142.38}, {"verdict", "sharp"}, {"sharp_from", 110}}), result["sharpness"]);
    EXPECT_EQ(json({{"method", "otsu"}, {"threshold", 128}}), result["binarise"]);
    EXPECT_EQ(json({{"degrees", -1.5},
                    {"matrix", {1, 2, 3, 4, 5, 6.5}},
                    {"straightened", false},
                    {"width", 42},
                    {"height", 33}}),
              result["deskew"]);
    EXPECT_EQ(json({{"outline", {{0, 0}, {29, 3}, {5, 39}}}}), result["paper"]);
    EXPECT_EQ(json({{"kind", "soft"}, {"dots_per_inch", 150}, {"ink", 40}, {"paper_from", 160}}),
              result["page"]);
    EXPECT_EQ(json({{"found", 7},
                    {"text", 2},
                    {"text_height", 5},
                    {"dropped", {{"border", 1}, {"tall", 2}, {"wide", 0}, {"speck", 2}}}}),
              result["components"]);
    ASSERT_EQ(1u, result["rows"].size());
    const json& row = result["rows"][0];
    EXPECT_EQ(json({{"x", 1}, {"y", 2}, {"width", 14}, {"height", 7}}), row["rect"]);
    EXPECT_EQ(json({{1, 7.25}, {14, 7.5}}), row["baseline"]);
    EXPECT_EQ(json({{1, 2}, {14, 3}, {14, 8}}), row["hull"]);
    EXPECT_EQ(json({{"corners", {{1, 9}, {2.5, 9}, {3.13, 9}, {4, 9}}}, {"width", 13}, {"height", 6}}),
              row["min_area_rect"]);
    EXPECT_EQ(json({{1, 1}, {2, 2}, {3, 3}, {4, 4}}), row["photo"]["corners"]);
    EXPECT_EQ(json({{"x", 21}, {"y", 22}, {"width", 23}, {"height", 24}}), row["photo"]["rect"]);
    EXPECT_EQ(json({{"x", 10}, {"y", 3}, {"width", 5}, {"height", 6}}), row["components"][1]);
    EXPECT_EQ(77, result["seal"]["pixels"]);
    ASSERT_EQ(2u, result["seal"]["rects"].size());
    EXPECT_EQ(json({{"x", 20}, {"y", 30}, {"width", 9}, {"height", 8}}), result["seal"]["rects"][0]);
    EXPECT_EQ(json({{{20, 30}}, {{3, 4}}}), result["seal"]["outlines"]);
    EXPECT_EQ(12, result["seal"]["marks"]["pixels"]);
    EXPECT_EQ(json({{"x", 22}, {"y", 31}, {"width", 4}, {"height", 3}}), result["seal"]["marks"]["rects"][0]);
    EXPECT_EQ(json({"page.png"}), result["files"]);
    EXPECT_EQ(14u, result.size());
}

TEST(report, json_holds_no_member_of_a_stage_that_did_not_run) {
    const json result = parsed(Report());
    for (const char* name :
         {"sharpness", "binarise", "deskew", "page", "paper", "components", "rows", "seal"})
        EXPECT_FALSE(result.contains(name)) << name;
    EXPECT_EQ(6u, result.size());
}

TEST(report, no_seal_is_null_in_json_and_none_in_the_summary) {
    Report report;
    report.seals.emplace();
    EXPECT_EQ(json(), parsed(report).at("seal"));
    EXPECT_NE(std::string::npos, docprep::summary(report, {}).text().find("\nseal          none\n"));
    report.seals->reason = "gray picture";
    EXPECT_EQ(json(), parsed(report).at("seal"));
    EXPECT_NE(std::string::npos,
              docprep::summary(report, {}).text().find("\nseal          none (gray picture)\n"));
}

TEST(report, the_summary_has_no_line_of_a_stage_that_did_not_run) {
    EXPECT_EQ(
        "input          (, 0 x 0)\n"
        "size          0 x 0\n"
        "ms                 0.0  in all\n",
        docprep::summary(Report(), {}).text());
}

TEST(report, json_has_one_line_a_rectangle) {
    const docprep::Bytes bytes = docprep::result_json(sample(), {});
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(std::string::npos, text.find("\n      {\"x\":1,\"y\":2,\"width\":3,\"height\":4},\n")) << text;
    EXPECT_EQ("}\n", text.substr(text.size() - 2));
}

TEST(report, names_that_are_not_utf8_still_give_json) {
    Report report = sample();
    report.source.file = "caf\xe9\n.jpg";
    EXPECT_EQ("caf\xef\xbf\xbd\n.jpg", parsed(report)["input"]["file"]);
}

TEST(report, pages_without_text_give_empty_rows) {
    Report report;
    report.text_rows.emplace();
    EXPECT_EQ(json::array(), parsed(report)["rows"]);
}

TEST(report, the_summary_is_aligned) {
    Report report = sample();
    report.steps = Steps();
    EXPECT_EQ(
        "input         photos/page.jpg (JPEG, 40 x 30, orientation 6)\n"
        "size          30 x 40\n"
        "turned        90 degrees clockwise, 40 x 30, confidence 0.67\n"
        "sharpness     142, sharp\n"
        "binarised     Otsu's threshold 128\n"
        "page          turned 1.50 degrees clockwise, 42 x 33\n"
        "components           7\n"
        "of them text         2\n"
        "rows                 1\n"
        "seals                2\n"
        "seal pixels         77\n"
        "ms                 0.0  in all\n"
        "written       out/a.png\n"
        "              out/b.png\n",
        docprep::summary(report, {"out/a.png", "out/b.png"}).text());
}

TEST(report, the_summary_has_a_line_for_each_step) {
    Report report = sample();
    report.steps.run("rows", [] {});
    const std::string text = docprep::summary(report, {}).text();
    const size_t gray = text.find("  gray\n");
    const size_t rows = text.find("  rows\n");
    ASSERT_NE(std::string::npos, gray) << text;
    ASSERT_NE(std::string::npos, rows) << text;
    EXPECT_LT(gray, rows);
}

TEST(report, names_cannot_break_the_summary_into_more_lines) {
    Report report = sample();
    report.source.file = "a\nb.jpg";
    const std::string text = docprep::summary(report, {"c\nd.png"}).text();
    EXPECT_EQ(0u, text.find("input         a?b.jpg (")) << text;
    EXPECT_NE(std::string::npos, text.find("\nwritten       c?d.png\n")) << text;
}

TEST(report, the_summary_tells_how_print_was_found_and_the_page_made) {
    Report report;
    docprep::Binarisation& how = report.binarisation.emplace();
    how.method = docprep::BinariseMethod::kAdaptive;
    how.block = 81;
    how.contrast = 35.25;
    report.deskew.emplace();
    report.sharpness.emplace();
    EXPECT_EQ(
        "input          (, 0 x 0)\n"
        "size          0 x 0\n"
        "sharpness     0, no text\n"
        "binarised     adaptive, 35.2 below the mean of 81 x 81\n"
        "page          not turned\n"
        "ms                 0.0  in all\n",
        docprep::summary(report, {}).text());
    report.deskew->degrees = 0.5;
    report.deskew->matrix[1] = 0.01f;
    EXPECT_NE(std::string::npos,
              docprep::summary(report, {}).text().find("turned 0.50 degrees anticlockwise"));
    EXPECT_EQ(json({{"method", "adaptive"}, {"block", 81}, {"contrast", 35.25}}), parsed(report)["binarise"]);
}

TEST(report, a_row_without_area_has_no_rectangle_of_least_area) {
    Report report;
    report.text_rows.emplace().emplace_back();
    EXPECT_TRUE(parsed(report)["rows"][0].at("min_area_rect").is_null());
}

TEST(report, steps_are_listed_in_their_order_and_failed_ones_are_not) {
    Steps steps;
    steps.run("one", [] {});
    EXPECT_THROW(steps.run("two", [] { throw std::runtime_error("no"); }), std::runtime_error);
    steps.run("three", [] {});
    ASSERT_EQ(2u, steps.list().size());
    EXPECT_EQ("one", steps.list()[0].name);
    EXPECT_EQ("three", steps.list()[1].name);
    EXPECT_DOUBLE_EQ(steps.list()[0].ms + steps.list()[1].ms, steps.total_ms());
}

TEST(report, a_step_that_runs_again_adds_its_time_and_moves_to_the_end) {
    Steps steps;
    steps.add("draw", 3);
    steps.add("seal", 1);
    steps.add("draw", 4);
    ASSERT_EQ(2u, steps.list().size());
    EXPECT_EQ("seal", steps.list()[0].name);
    EXPECT_EQ("draw", steps.list()[1].name);
    EXPECT_DOUBLE_EQ(7, steps.list()[1].ms);
    EXPECT_DOUBLE_EQ(8, steps.total_ms());
}
