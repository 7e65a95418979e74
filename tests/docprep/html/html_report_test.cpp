#include "html/html_report.h"

#include <gtest/gtest.h>

#include "drawn.h"
#include "html/report_charts.h"
#include "run/library_log.h"

using docprep::Picture;
using docprep::Report;
using docprep::ReportPictures;
using orvex_cv_991::Point;

namespace {

std::string page_of(const Report& report, const ReportPictures& pictures, const docprep::Facts& options = {},
                    const std::vector<std::string>& files = {}) {
    const docprep::Bytes bytes = docprep::html_report(report, pictures, options, files);
    return std::string(bytes.begin(), bytes.end());
}

std::string page_of(const Report& report) {
    return page_of(report, ReportPictures(report));
}

int count(const std::string& text, const std::string& part) {
    int n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(html_report, of_stages_that_did_not_run_there_is_nothing) {
    const std::string page = page_of(Report());
    EXPECT_EQ(3, count(page, "<section ")) << "photograph, times, facts";
    EXPECT_EQ(0, count(page, "<img "));
}

TEST(html_report, every_picture_taken_is_shown_once) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    Report report;
    report.turn.degrees = 90;
    report.binarisation.emplace();
    report.deskew.emplace();
    report.paper.emplace().push_back(Point(1, 2));
    report.page.emplace();
    report.print.emplace();
    report.text_rows.emplace().emplace_back();
    report.seals.emplace();
    ReportPictures pictures(report);
    int taken = 0;
    for (const Picture kind : {Picture::kPage, Picture::kBinary, Picture::kRows, Picture::kSeal,
                               Picture::kSaliency, Picture::kPhoto, Picture::kUpright, Picture::kGray,
                               Picture::kLight, Picture::kPaper, Picture::kComponents, Picture::kLines}) {
        pictures.take(kind, gray_picture(4, 6, 128), 0);
        ++taken;
    }
    const std::string page = page_of(report, pictures);
    EXPECT_EQ(taken, count(page, "src=\"data:image/jpeg;base64,/9j/"));
    EXPECT_EQ(15, count(page, "<section "));
}

TEST(html_report, names_options_and_files_are_escaped) {
    Report report;
    report.source.file = "a/<b>&\"c'.jpg";
    report.source.format = "<t1>";
    report.seals.emplace().reason = "<t2>";
    report.steps.add("<t3>", 1);
    const std::string page = page_of(report, ReportPictures(report), {{"<t4>", "<t5>"}}, {"<t6>"});
    EXPECT_FALSE(holds(page, "<b>"));
    for (const char* digit : {"1", "2", "3", "4", "5", "6"})
        EXPECT_FALSE(holds(page, "<t" + std::string(digit)));
    for (const char* name : {"t1", "t2", "t3", "t4", "t5", "t6"})
        EXPECT_TRUE(holds(page, "&lt;" + std::string(name) + "&gt;")) << name;
    EXPECT_TRUE(holds(page, "<h1><bdi>&lt;b&gt;&amp;&quot;c&#39;.jpg</bdi></h1>"));
    EXPECT_TRUE(holds(page, "<title>&lt;b&gt;&amp;&quot;c&#39;.jpg</title>"));
}

TEST(html_report, browsers_are_told_to_load_and_run_nothing) {
    const std::string page = page_of(Report());
    EXPECT_TRUE(holds(page, "content=\"default-src 'none'; img-src data:; style-src 'unsafe-inline'; "));
    EXPECT_FALSE(holds(page, "<script"));
    EXPECT_FALSE(holds(page, "http:"));
    EXPECT_FALSE(holds(page, "https:"));
}

TEST(html_report, steps_have_bars_as_long_as_their_share_of_the_longest) {
    Report report;
    report.steps.add("gray", 2);
    report.steps.add("page", 8);
    const std::string page = page_of(report);
    EXPECT_TRUE(holds(page,
                      "gray</th><td class=\"bar\"><i style=\"--share:0.2500\"></i></td><td "
                      "class=\"amount\">2.0 ms</td>"));
    EXPECT_TRUE(holds(page, "--share:1.0000\"></i></td><td class=\"amount\">8.0 ms</td>"));
    EXPECT_TRUE(holds(page,
                      "in all</th><td class=\"bar\"><i style=\"--share:0.0000\"></i></td><td "
                      "class=\"amount\">10.0 ms</td>"));
}

TEST(html_report, sharpness_is_told_with_its_verdict) {
    Report report;
    report.sharpness = docprep::Sharpness{72.4f, true};
    const std::string page = page_of(report);
    EXPECT_TRUE(holds(page, "<dt>sharpness</dt><dd><bdi>72, blurred</bdi></dd>"));
    EXPECT_TRUE(holds(page, "sharp from 110"));
}

TEST(html_report, of_more_rows_than_a_browser_likes_the_first_are_drawn) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    Report report;
    report.deskew.emplace();
    report.text_rows.emplace().resize(docprep::kMostOverlaid + 1);
    ReportPictures pictures(report);
    pictures.take(Picture::kLines, gray_picture(4, 6, 128), 0);
    const std::string page = page_of(report, pictures);
    EXPECT_EQ(static_cast<int>(docprep::kMostOverlaid), count(page, "<polyline "));
    EXPECT_TRUE(holds(page, "the first 400 rows"));
}

TEST(html_report, the_histogram_is_parted_at_the_threshold) {
    docprep::Histogram levels;
    for (int k = 0; k < 4; ++k) levels.add(200);
    levels.add(63);
    docprep::Binarisation how;
    how.threshold = 63;
    const std::string chart = docprep::level_chart(levels, how);
    // Of 256 levels 64 are print; the last of them has a quarter of the most, which is half as high.
    EXPECT_TRUE(holds(chart, "V100.0h1V50.0h1V100Z\"/><path class=\"paper\" d=\"M64 100V100.0h1")) << chart;
    EXPECT_TRUE(holds(chart, "--at:25.00%\"><span>threshold 63"));
}

TEST(html_report, the_histogram_of_an_adaptive_threshold_marks_its_contrast) {
    docprep::Histogram levels;
    levels.add(0);
    docprep::Binarisation how;
    how.method = docprep::BinariseMethod::kAdaptive;
    how.contrast = 32;
    const std::string chart = docprep::level_chart(levels, how);
    // From -48 to 48.
    EXPECT_TRUE(holds(chart, "viewBox=\"0 0 97 100\"")) << chart;
    EXPECT_TRUE(holds(chart, "--at:16.49%\"><span>32.0 darker")) << chart;
    EXPECT_TRUE(holds(chart, "d=\"M16 100V100.0h1")) << "-32 is paper";
}
