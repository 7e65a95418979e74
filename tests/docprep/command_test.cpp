// docprep as a user meets it: exit codes, lines, files.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "commands.h"
#include "cv_imgproc.h"
#include "encoders.h"
#include "formats/photo.h"
#include "formats/png_file.h"

using docprep::Bytes;
using docprep::Image;
using nlohmann::json;

namespace {

const std::string kSample = std::string(DOCPREP_SAMPLES) + "/page.jpg";
const Names kResults = {"binary.png", "page.png", "result.json", "rows.jpg", "saliency.jpg"};

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitizer = true;
#elif defined(__has_feature)
constexpr bool kAddressSanitizer = __has_feature(address_sanitizer);
#else
constexpr bool kAddressSanitizer = false;
#endif

constexpr bool kCoverage = DOCPREP_COVERAGE;

json result_of(const TemporaryFolder& folder) {
    return json::parse(text_of(folder.path("out/result.json")));
}

}  // namespace

// ---- Success ----

TEST(command, the_sample_gives_its_rows) {
    const TemporaryFolder folder;
    const Outcome outcome = docprep_with({kSample, "-o", folder.path("out")});
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_EQ("", outcome.err);
    const json result = result_of(folder);
    EXPECT_EQ(1600, result["width"]);
    EXPECT_EQ(1200, result["height"]);
    // 17 lines of text. The limits leave room for another JPEG decoder's rounding.
    EXPECT_GE(result["rows"].size(), 16u);
    EXPECT_LE(result["rows"].size(), 18u);
    EXPECT_GT(result["components"]["text"], 800);
    for (const json& row : result["rows"]) EXPECT_LT(row["rect"]["height"], 120);
}

TEST(command, exactly_the_results_are_written) {
    const TemporaryFolder folder;
    const Outcome outcome = docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    EXPECT_EQ(0, outcome.exit_code);
    Names expected = {"out"};
    for (const std::string& name : kResults) expected.push_back("out/" + name);
    expected.push_back("page.jpg");
    EXPECT_EQ(expected, folder.content());
}

TEST(command, counts_of_components_add_up) {
    const TemporaryFolder folder;
    docprep_with({kSample, "-o", folder.path("out")});
    const json result = result_of(folder);
    const json& components = result["components"];
    int sum = components["text"];
    for (const json& dropped : components["dropped"]) sum += dropped.get<int>();
    EXPECT_EQ(components["found"], sum);
    size_t in_rows = 0;
    for (const json& row : result["rows"]) in_rows += row["components"].size();
    EXPECT_EQ(components["text"], in_rows);
}

TEST(command, squares_in_rows_are_found_where_they_were_drawn) {
    const TemporaryFolder folder;
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    const json rows = result_of(folder)["rows"];
    ASSERT_EQ(4u, rows.size());  // at 40, 80, 120 and 160
    for (size_t k = 0; k < 4; ++k) {
        EXPECT_EQ(13u, rows[k]["components"].size());
        EXPECT_NEAR(40.0 * static_cast<double>(k + 1), rows[k]["rect"]["y"], 1);
        EXPECT_NEAR(15, rows[k]["rect"]["height"], 2);
    }
}

TEST(command, the_pictures_have_the_size_of_the_photo) {
    const TemporaryFolder folder;
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    const docprep::Photo binary = docprep::read_photo(folder.path("out/binary.png"));
    const docprep::Photo rows = docprep::read_photo(folder.path("out/rows.jpg"));
    EXPECT_EQ(1, binary.pixels.channels);
    EXPECT_EQ(3, rows.pixels.channels);
    for (const docprep::Photo* photo : {&binary, &rows}) {
        EXPECT_EQ(200, photo->pixels.rows);
        EXPECT_EQ(300, photo->pixels.cols);
    }
}

TEST(command, dark_text_is_white_in_the_binary_picture) {
    const TemporaryFolder folder;
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    const docprep::Image binary = docprep::read_photo(folder.path("out/binary.png")).pixels;
    EXPECT_EQ(255, binary.data[45 * 300 + 45]);
    EXPECT_EQ(0, binary.data[5 * 300 + 5]);
}

TEST(command, a_black_and_white_scan_keeps_its_text) {
    const TemporaryFolder folder;
    PngRequest request;
    request.depth = 1;
    request.rows = 200;
    request.cols = 300;
    const Bytes png =
        make_png(request, [](int row, int col, int) { return page_of_squares(row, col) > 128; });
    EXPECT_EQ(0, docprep_with({folder.write("scan.png", png), "-o", folder.path("out")}).exit_code);
    EXPECT_EQ(4u, result_of(folder)["rows"].size());
    EXPECT_EQ(52, result_of(folder)["components"]["text"]);
}

TEST(command, blank_pictures_have_no_text) {
    const TemporaryFolder folder;
    for (const int level : {0, 255}) {
        const Bytes png = make_png({}, [&](int, int, int) { return level; });
        EXPECT_EQ(0, docprep_with({folder.write("blank.png", png), "-o", folder.path("out")}).exit_code);
        EXPECT_EQ(0u, result_of(folder)["rows"].size());
    }
}

TEST(command, the_exif_orientation_is_applied_and_reported) {
    const TemporaryFolder folder;
    JpegRequest request;
    request.kind = JpegKind::kGray;
    request.rows = 300;
    request.cols = 200;
    request.exif = exif_with_orientation(6);  // to be turned clockwise
    // Turned counterclockwise: column 299 - row of the upright page is the row here.
    const auto lying = [](int row, int col, int) { return page_of_squares(col, 299 - row); };
    const Outcome outcome =
        docprep_with({folder.write("p.jpg", make_jpeg(request, lying)), "-o", folder.path("out")});
    EXPECT_NE(std::string::npos, outcome.out.find("(JPEG, 200 x 300, orientation 6)\n")) << outcome.out;
    const json result = result_of(folder);
    EXPECT_EQ(6, result["input"]["orientation"]);
    EXPECT_EQ(200, result["input"]["width"]);
    EXPECT_EQ(300, result["width"]);
    EXPECT_EQ(4u, result["rows"].size());
}

TEST(command, camera_frames_are_read_raw_and_gzipped) {
    const TemporaryFolder folder;
    Bytes frame;
    for (int row = 0; row < 200; ++row)
        for (int col = 0; col < 300; ++col)
            frame.push_back(static_cast<unsigned char>(page_of_squares(row, col)));
    frame.resize(frame.size() * 3 / 2, 128);
    for (const std::string& path : {folder.write("f.nv21", frame), folder.write("f.nv21.gz", gzip(frame))}) {
        const Outcome outcome =
            docprep_with({"--nv21", "300x200", path, "--timings", "-o", folder.path("out")});
        EXPECT_EQ(0, outcome.exit_code) << outcome.err;
        const json result = result_of(folder);
        EXPECT_EQ("NV21", result["input"]["format"]);
        EXPECT_EQ(4u, result["rows"].size());
        EXPECT_TRUE(json::parse(text_of(folder.path("out/timings.json"))).contains("colour"));
    }
}

TEST(command, a_frame_with_an_odd_number_of_rows_is_read) {
    const TemporaryFolder folder;
    const std::string path = folder.write("f.nv21", Bytes(20 * (11 + 6), 128));
    EXPECT_EQ(0, docprep_with({"--nv21", "20x11", path, "-o", folder.path("out")}).exit_code);
    EXPECT_EQ(11, result_of(folder)["height"]);
}

// ---- Stages ----

TEST(command, only_chosen_pictures_are_written_and_only_computed_members_reported) {
    struct Case {
        std::string stages;
        Names pictures;
        Names members;  // beside those that every result has
    };
    const std::vector<Case> cases = {
        {"sharpness", {}, {"binarise", "sharpness"}},
        {"binarise", {"binary.png"}, {"binarise"}},
        {"page", {"page.png"}, {"binarise", "deskew", "page", "paper"}},
        {"components", {}, {"binarise", "components", "deskew", "page", "paper"}},
        {"rows", {"rows.jpg"}, {"binarise", "components", "deskew", "page", "paper", "rows"}},
        {"seal", {"seal.jpg"}, {"binarise", "seal"}},
        {"saliency", {"saliency.jpg"}, {"binarise"}},  // print tells which way up the photograph lies
        {"saliency,binarise", {"binary.png", "saliency.jpg"}, {"binarise"}},
        {"seal,rows,seal",
         {"rows.jpg", "seal.jpg"},
         {"binarise", "components", "deskew", "page", "paper", "rows", "seal"}},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.stages);
        const TemporaryFolder folder;
        const std::string page = write_sealed_page(folder, "page.png");
        const Outcome outcome = docprep_with({page, "-o", folder.path("out"), "--stages", expected.stages});
        EXPECT_EQ(0, outcome.exit_code) << outcome.err;
        Names files = {"out", "out/result.json", "page.png"};
        for (const std::string& picture : expected.pictures) files.push_back("out/" + picture);
        std::sort(files.begin(), files.end());
        EXPECT_EQ(files, folder.content());
        Names members = {"docprep", "files", "height", "input", "turn", "width"};
        members.insert(members.end(), expected.members.begin(), expected.members.end());
        std::sort(members.begin(), members.end());
        Names found;
        const json result = result_of(folder);
        for (const auto& member : result.items()) found.push_back(member.key());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(members, found);
        for (const char* name : {"sharpness", "components", "rows"})
            EXPECT_EQ(result.contains(name), outcome.out.find(std::string("\n") + name) != std::string::npos)
                << outcome.out;
    }
}

TEST(command, a_stage_gives_alone_what_it_gives_among_all) {
    const TemporaryFolder folder;
    const std::string page = write_sealed_page(folder, "page.png");
    docprep_with({page, "-o", folder.path("out")});
    const json all = result_of(folder);
    for (const char* stage : {"sharpness", "binarise", "page", "components", "rows", "seal", "saliency"}) {
        const TemporaryFolder alone;
        docprep_with({page, "-o", alone.path("out"), "--stages", stage});
        const json result = result_of(alone);
        for (const char* name :
             {"sharpness", "binarise", "deskew", "page", "paper", "components", "rows", "seal"}) {
            if (!result.contains(name)) continue;
            EXPECT_EQ(all[name], result[name]) << stage;
        }
        for (const char* picture :
             {"out/binary.png", "out/page.png", "out/rows.jpg", "out/seal.jpg", "out/saliency.jpg"}) {
            if (!std::filesystem::exists(alone.path(picture))) continue;
            EXPECT_EQ(text_of(folder.path(picture)), text_of(alone.path(picture))) << stage;
        }
    }
}

TEST(command, a_folder_keeps_nothing_of_the_photograph_before) {
    const TemporaryFolder folder;
    const std::string sealed = write_sealed_page(folder, "sealed.png");
    ASSERT_EQ(0,
              docprep_with({sealed, "-o", folder.path("out"), "--log", "--timings", "--report"}).exit_code);
    ASSERT_TRUE(std::filesystem::exists(folder.path("out/report.html")));
    folder.write("out/notes.txt", "mine");
    folder.write("out/rows.png", "mine, too: the run before wrote rows.jpg");
    ASSERT_EQ(0, docprep_with({sealed, "-o", folder.path("out"), "--stages", "binarise"}).exit_code);
    EXPECT_EQ(
        (Names{"out", "out/binary.png", "out/notes.txt", "out/result.json", "out/rows.png", "sealed.png"}),
        folder.content());
}

TEST(command, a_report_leaves_the_other_files_as_they_are_without_it) {
    const TemporaryFolder folder;
    const std::string sealed = write_sealed_page(folder, "sealed.png");
    ASSERT_EQ(0, docprep_with({sealed, "-o", folder.path("out")}).exit_code);
    ASSERT_EQ(0, docprep_with({sealed, "-o", folder.path("told"), "--report"}).exit_code);
    for (const char* name : {"binary.png", "page.png", "rows.jpg", "saliency.jpg", "seal.jpg"})
        EXPECT_EQ(text_of(folder.path("out/") + name), text_of(folder.path("told/") + name)) << name;
    const json files = json::parse(text_of(folder.path("told/result.json")))["files"];
    EXPECT_EQ("report.html", files.back());
    EXPECT_EQ(6u, files.size());
}

TEST(command, a_report_has_its_pictures_when_no_others_are_written) {
    const TemporaryFolder folder;
    const std::string sealed = write_sealed_page(folder, "sealed.png");
    ASSERT_EQ(0,
              docprep_with({sealed, "-o", folder.path("out"), "--report", "--pictures", "none"}).exit_code);
    EXPECT_EQ((Names{"out", "out/page.png", "out/report.html", "out/result.json", "sealed.png"}),
              folder.content());
    const std::string page = text_of(folder.path("out/report.html"));
    for (const char* section : {"rows", "seals", "saliency"})
        EXPECT_NE(std::string::npos, page.find("id=\"view-" + std::string(section) + "\"")) << section;
}

TEST(command, a_report_needs_a_folder) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    expect_wrong_usage({page, "-o", folder.path("page.png"), "--report"},
                       "log, timings and report need a folder");
    expect_wrong_usage({page, "-o", "-", "--report"}, "log, timings and report need a folder");
}

TEST(command, two_runs_give_the_same_bytes) {
    const TemporaryFolder folder;
    const std::string sealed = write_sealed_page(folder, "sealed.png");
    ASSERT_EQ(0, docprep_with({sealed, "-o", folder.path("out")}).exit_code);
    ASSERT_EQ(0, docprep_with({sealed, "-o", folder.path("again")}).exit_code);
    for (const char* name : {"binary.png", "page.png", "result.json", "rows.jpg", "saliency.jpg", "seal.jpg"})
        EXPECT_EQ(text_of(folder.path("out/") + name), text_of(folder.path("again/") + name)) << name;
}

TEST(command, pictures_are_written_as_asked) {
    const TemporaryFolder folder;
    const std::string sealed = write_sealed_page(folder, "sealed.png");
    const Names all = {sealed, "-o", folder.path("out"), "--pictures"};
    const auto run = [&](const char* kind) {
        Names arguments = all;
        arguments.emplace_back(kind);
        EXPECT_EQ(0, docprep_with(arguments).exit_code);
        return folder.content();
    };
    EXPECT_EQ((Names{"out", "out/binary.png", "out/page.png", "out/result.json", "out/rows.png",
                     "out/saliency.png", "out/seal.png", "sealed.png"}),
              run("png"));
    EXPECT_EQ((Names{"out", "out/page.png", "out/result.json", "sealed.png"}), run("none"));
    EXPECT_EQ((Names{"out", "out/binary.png", "out/page.png", "out/result.json", "out/rows.jpg",
                     "out/saliency.jpg", "out/seal.jpg", "sealed.png"}),
              run("jpeg"));
    EXPECT_EQ("JPEG", std::string(docprep::read_photo(folder.path("out/rows.jpg")).format));
}

TEST(command, saliency_is_that_of_the_library_over_the_whole_gray_photo) {
    const TemporaryFolder folder;
    const std::string page = write_sealed_page(folder, "page.png");
    docprep_with({page, "-o", folder.path("out"), "--stages", "saliency", "--pictures", "png"});
    Image gray, saliency, everywhere;
    orvex_991::vector<unsigned char> levels;
    orvex_cv_991::CImgproc::bgr2gray(docprep::read_photo(page).pixels, gray);
    everywhere.mat_create(gray.rows, gray.cols, 1, 255);
    orvex_cv_991::CImgproc::saliencyDetect(gray, saliency, everywhere, levels);
    expect_same_pixels(saliency, docprep::read_photo(folder.path("out/saliency.png")).pixels);
}

// ---- Seals ----

TEST(command, a_seal_is_reported_and_drawn_where_it_is) {
    const TemporaryFolder folder;
    const Outcome outcome =
        docprep_with({write_sealed_page(folder, "page.png"), "-o", folder.path("out"), "--pictures", "png"});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    const json seal = result_of(folder)["seal"];
    ASSERT_GE(seal["rects"].size(), 1u);
    const json& rect = seal["rects"][0];
    EXPECT_NEAR(kSealX - 50, rect["x"], 3);
    EXPECT_NEAR(kSealY - 50, rect["y"], 3);
    EXPECT_NEAR(100, rect["width"], 4);
    EXPECT_NEAR(100, rect["height"], 4);
    EXPECT_NE(std::string::npos, outcome.out.find("\nseals ")) << outcome.out;
    EXPECT_NE(std::string::npos, outcome.out.find("\nseal pixels ")) << outcome.out;
    const Image picture = docprep::read_photo(folder.path("out/seal.png")).pixels;
    const auto pixel = [&](int x, int y) { return picture.data + (y * kPageCols + x) * 3; };
    EXPECT_EQ(200, pixel(kSealX, kSealY)[2]);       // the ink's own red
    EXPECT_EQ(pixel(20, 20)[0], pixel(20, 20)[2]);  // grey paper
}

TEST(command, the_marks_of_seals_are_those_of_the_library) {
    const TemporaryFolder folder;
    const std::string page = write_sealed_page(folder, "page.png");
    docprep_with({page, "-o", folder.path("out"), "--stages", "seal"});
    Image mask;
    orvex_991::vector<orvex_cv_991::Rect> rects;
    orvex_cv_991::CImgproc::redColorDetect(docprep::read_photo(page).pixels, mask, false);
    orvex_cv_991::CImgproc::connectdComponent(mask, rects, nullptr);
    const json seal = result_of(folder)["seal"]["marks"];
    EXPECT_EQ(std::count(mask.data, mask.data + kPageRows * kPageCols, 255), seal["pixels"]);
    ASSERT_EQ(static_cast<size_t>(rects.size()), seal["rects"].size());
    for (int k = 0; k < rects.size; ++k)
        EXPECT_EQ(json({{"x", rects[k].x},
                        {"y", rects[k].y},
                        {"width", rects[k].width},
                        {"height", rects[k].height}}),
                  seal["rects"][static_cast<size_t>(k)]);
}

TEST(command, pictures_without_a_seal_say_none_and_have_no_seal_picture) {
    const TemporaryFolder folder;
    constexpr int kRgb = 2;
    const auto picture = [&](int rows, int cols, const Samples& samples) {
        PngRequest request;
        request.colour_type = kRgb;
        request.rows = rows;
        request.cols = cols;
        return folder.write("photo.png", make_png(request, samples));
    };
    const auto white = [](int, int, int) { return 255; };
    const auto speckled = [](int row, int col, int k) { return row % 7 + col % 9 == 0 && k > 0 ? 30 : 250; };
    const auto checkered = [](int row, int col, int k) { return (row + col) % 2 == 0 && k > 0 ? 30 : 250; };
    const auto half_red = [](int row, int col, int k) { return row + col < 200 && k > 0 ? 30 : 250; };
    struct Case {
        int rows, cols;
        Samples samples;
        std::string line;
    };
    for (const Case& page :
         {Case{200, 300, white, "seal          none\n"}, Case{200, 300, speckled, "seal          none\n"},
          Case{5, 3000, half_red, "seal          none (too narrow)\n"},
          Case{3000, 5, half_red, "seal          none (too narrow)\n"},
          Case{2, 2, checkered, "seal          none (too narrow)\n"}}) {
        SCOPED_TRACE(std::to_string(page.cols) + " x " + std::to_string(page.rows));
        const std::string path = picture(page.rows, page.cols, page.samples);
        const Outcome outcome = docprep_with({path, "-o", folder.path("out"), "--stages", "seal"});
        EXPECT_EQ(0, outcome.exit_code) << outcome.err;
        EXPECT_EQ("", outcome.err);
        EXPECT_NE(std::string::npos, outcome.out.find("\n" + page.line)) << outcome.out;
        const json result = result_of(folder);
        EXPECT_TRUE(result.contains("seal") && result["seal"].is_null()) << result;
        EXPECT_FALSE(std::filesystem::exists(folder.path("out/seal.jpg")));
    }
}

TEST(command, a_gray_picture_has_no_seal_and_says_why) {
    const TemporaryFolder folder;
    const Outcome outcome = docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.out.find("\nseal          none (gray picture)\n")) << outcome.out;
    EXPECT_TRUE(result_of(folder)["seal"].is_null());
}

TEST(command, the_seal_picture_of_an_earlier_photo_is_removed) {
    const TemporaryFolder folder;
    docprep_with({write_sealed_page(folder, "sealed.png"), "-o", folder.path("out")});
    ASSERT_TRUE(std::filesystem::exists(folder.path("out/seal.jpg")));
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    EXPECT_FALSE(std::filesystem::exists(folder.path("out/seal.jpg")));
    EXPECT_TRUE(result_of(folder)["seal"].is_null());
}

TEST(command, a_photo_in_the_place_of_an_earlier_picture_is_not_removed) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, docprep_with({write_sealed_page(folder, "sealed.png"), "-o", folder.path("out")}).exit_code);
    const std::string page = write_page(folder, "out/seal.jpg");
    const Names before = folder.content();
    expect_failure(docprep_with({page, "-o", folder.path("out")}), page, "is the input and would be removed");
    EXPECT_EQ(before, folder.content());
}

// ---- Streams ----

TEST(command, the_summary_is_free_of_library_lines) {
    const TemporaryFolder folder;
    const Outcome outcome = docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    EXPECT_EQ(std::string::npos, outcome.out.find("cost time")) << outcome.out;
    EXPECT_EQ(std::string::npos, outcome.out.find(".cpp:")) << outcome.out;
    const Names names = {"input",        "size", "turned", "sharpness", "binarised", "page", "components",
                         "of them text", "rows", "seal",   "ms",        "written",   ""};
    std::istringstream lines(outcome.out);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        std::string name = line.substr(0, 14);
        name.erase(name.find_last_not_of(' ') + 1);
        EXPECT_EQ(1, std::count(names.begin(), names.end(), name)) << line;
    }
    EXPECT_GT(count, 12);
    for (const std::string& name : kResults)
        EXPECT_NE(std::string::npos, outcome.out.find(folder.path("out/" + name))) << name;
}

TEST(command, the_log_holds_the_library_lines_and_nothing_else) {
    const TemporaryFolder folder;
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out"), "--log"});
    const std::string log = text_of(folder.path("out/library.log"));
    for (const char* operation : {"bgr2gray cost time", "sharpness: ", "bwlabel cost time"})
        EXPECT_NE(std::string::npos, log.find(operation)) << log;
    std::istringstream lines(log);
    for (std::string text; std::getline(lines, text);) EXPECT_EQ(0u, text.find("D cv_imgproc.cpp:")) << text;
}

TEST(command, verbose_shows_library_lines_on_standard_error) {
    const TemporaryFolder folder;
    const Outcome outcome =
        docprep_with({write_page(folder, "page.jpg"), "--verbose", "-o", folder.path("out")});
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_NE(std::string::npos, outcome.err.find("bwlabel cost time")) << outcome.err;
    EXPECT_EQ(std::string::npos, outcome.out.find("cost time")) << outcome.out;
    expect_wrong_usage({"page.jpg", "--verbose", "--log", "-o", folder.path("out")}, "--log");
}

TEST(command, timings_name_every_step) {
    const TemporaryFolder folder;
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out"), "--timings"});
    const json timings = json::parse(text_of(folder.path("out/timings.json")));
    for (const char* step : {"read", "gray", "binarise", "page", "rows", "draw", "encode"})
        EXPECT_TRUE(timings.contains(step) && timings[step].get<double>() >= 0) << timings;
}

TEST(command, the_result_goes_to_standard_output_as_json) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    const Outcome outcome = docprep_with({page, "-o", folder.path("out"), "--json"});
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_EQ(text_of(folder.path("out/result.json")), outcome.out);

    json alone = json::parse(docprep_with({page, "--json"}).out);
    json written = result_of(folder);
    EXPECT_EQ(json::array(), alone["files"]);
    alone.erase("files");
    written.erase("files");
    EXPECT_EQ(written, alone);
}

TEST(command, a_quiet_run_prints_nothing) {
    const TemporaryFolder folder;
    for (const char* option : {"-q", "--quiet"}) {
        const Outcome outcome =
            docprep_with({write_page(folder, "page.jpg"), option, "-o", folder.path("out")});
        EXPECT_EQ(0, outcome.exit_code);
        EXPECT_EQ("", outcome.out + outcome.err);
    }
}

TEST(command, the_page_alone_goes_to_a_file_or_to_standard_output) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    ASSERT_EQ(0, docprep_with({page, "-o", folder.path("out")}).exit_code);
    const std::string expected = text_of(folder.path("out/page.png"));

    EXPECT_EQ(0, docprep_with({page, "-o", folder.path("new/alone.png")}).exit_code);
    EXPECT_EQ(expected, text_of(folder.path("new/alone.png")));

    const Outcome streamed = docprep_with({page, "-o", "-"});
    EXPECT_EQ(expected, streamed.out);
    EXPECT_EQ("", streamed.err);

    EXPECT_EQ(0, docprep_with({page, "-o", folder.path("alone.jpg")}).exit_code);
    EXPECT_EQ("JPEG", std::string(docprep::read_photo(folder.path("alone.jpg")).format));
    EXPECT_EQ((Names{"alone.jpg", "new", "new/alone.png", "out", "out/binary.png", "out/page.png",
                     "out/result.json", "out/rows.jpg", "out/saliency.jpg", "page.jpg"}),
              folder.content());
}

TEST(command, a_picture_of_a_kind_that_is_not_written_is_wrong_usage) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    for (const char* name : {"page.heic", "page.GIF", "page.pdf"})
        expect_wrong_usage({page, "-o", folder.path(name)},
                           "would be a picture of a kind that is not written");
    EXPECT_EQ(Names{"page.jpg"}, folder.content());
}

TEST(command, a_folder_named_like_a_picture_is_a_folder) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("out.png"));
    const std::string page = write_page(folder, "page.jpg");
    EXPECT_EQ(0, docprep_with({page, "-o", folder.path("out.png"), "--pictures", "none"}).exit_code);
    EXPECT_EQ(0, docprep_with({page, "-o", folder.path("new.png/"), "--pictures", "none"}).exit_code);
    EXPECT_EQ((Names{"new.png", "new.png/page.png", "new.png/result.json", "out.png", "out.png/page.png",
                     "out.png/result.json", "page.jpg"}),
              folder.content());
}

TEST(command, devices_and_pipes_take_the_page_and_stay_what_they_are) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    EXPECT_EQ(0, docprep_with({page, "-o", "/dev/null"}).exit_code);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    expect_failure(docprep_with({page, "-o", "/dev/full"}), "/dev/full", "No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    expect_failure(docprep_after("", {page, "-o", "-"}, ">/dev/full"), "standard output",
                   "No space left on device");

    const Outcome piped = run_program(
        {"sh", "-c", "mkfifo \"$1/pipe\"; cat \"$1/pipe\" & \"$2\" \"$3\" -q -o \"$1/pipe\"; wait", "sh",
         folder.path(""), DOCPREP_PROGRAM, page});
    EXPECT_EQ(0u, piped.out.find("\x89PNG")) << piped.err;
    EXPECT_TRUE(std::filesystem::is_fifo(folder.path("pipe")));
}

TEST(command, a_reader_that_has_gone_is_one_line) {
    const TemporaryFolder folder;
    const std::string after_the_reader =
        "(until [ -e \"$3\" ]; do sleep 0.01; done; \"$1\" \"$2\" -o - ; echo $? >&2) |"
        " (exec <&-; : > \"$3\")";
    const Outcome outcome = run_program({"sh", "-c", after_the_reader, "sh", DOCPREP_PROGRAM,
                                         write_page(folder, "page.jpg"), folder.path("gone")});
    EXPECT_EQ("docprep: standard output: Broken pipe\n2\n", outcome.err);
}

TEST(command, closed_standard_streams_do_no_harm) {
    const TemporaryFolder folder;
    const Outcome outcome =
        docprep_after("", {write_page(folder, "page.jpg"), "-o", folder.path("out")}, "<&- >&- 2>&-");
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_EQ(200, docprep::read_photo(folder.path("out/binary.png")).pixels.rows);
    EXPECT_EQ(4u, result_of(folder)["rows"].size());
}

TEST(command, a_summary_that_cannot_be_written_is_a_failure) {
    const TemporaryFolder folder;
    const Outcome outcome =
        docprep_after("", {write_page(folder, "page.jpg"), "-o", folder.path("out")}, ">/dev/full");
    expect_failure(outcome, "standard output", "No space left on device");
}

// ---- Failures ----

TEST(command, a_missing_file_is_refused_with_one_line) {
    const TemporaryFolder folder;
    expect_failure(docprep_with({folder.path("no.jpg"), "-o", folder.path("out")}), folder.path("no.jpg"),
                   "No such file or directory");
    EXPECT_EQ(Names{}, folder.content());
}

TEST(command, unreadable_inputs_are_refused_with_one_line_and_leave_nothing) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    std::string cut = text_of(page);
    cut.resize(cut.size() / 2);
    Bytes oversized = make_jpeg({}, [](int, int, int) { return 0; });
    patch_jpeg_size(oversized, 65000, 65000);
    const std::vector<std::pair<std::string, std::string>> inputs = {
        {folder.write("empty.jpg", ""), "is empty"},
        {folder.write("letter.txt", "Dear friends"), "is none of JPEG, PNG, PNM, TIFF and WebP"},
        {folder.write("cut.jpg", cut), "truncated JPEG (Premature end of JPEG file)"},
        {folder.write("huge.jpg", oversized), "65000 x 65000 pixels are too many (limit 256 Mi)"},
        {folder.path(""), "is a folder"},
        {"/dev/null", "is a device"},
    };
    const Names before = folder.content();
    for (const auto& [path, reason] : inputs) {
        expect_failure(docprep_with({path, "-o", folder.path("out")}), path, reason);
        EXPECT_EQ(before, folder.content()) << path;
    }
}

TEST(command, a_frame_shorter_than_its_size_is_refused_with_one_line) {
    const TemporaryFolder folder;
    const std::string path = folder.write("f.nv21", Bytes(100));
    expect_failure(docprep_with({"--nv21", "20x11", path, "-o", folder.path("out")}), path,
                   "is shorter than the 340 bytes of an NV21 frame of 20x11");
    EXPECT_EQ(Names{"f.nv21"}, folder.content());
}

TEST(command, a_line_feed_in_a_name_does_not_make_a_second_line) {
    const Outcome outcome = docprep_with({"no\nsuch.jpg", "-o", "out"});
    expect_failure(outcome, "no?such.jpg", "No such file or directory");
}

TEST(command, a_library_error_is_one_line_with_its_code) {
    if (kAddressSanitizer) GTEST_SKIP() << "the sanitizer's own reservations exceed every limit";
    const TemporaryFolder folder;
    PngRequest request;
    request.rows = request.cols = 12000;
    const std::string path = folder.write("white.png", make_png(request, [](int, int, int) { return 255; }));
    const Outcome outcome = docprep_after("ulimit -v 200000;", {path, "-o", folder.path("out")});
    expect_failure(outcome, path, "library error 3 (no memory for pixels)");
    EXPECT_EQ(Names{"white.png"}, folder.content());
}

TEST(command, too_little_memory_for_the_file_is_one_line) {
    if (kAddressSanitizer) GTEST_SKIP() << "the sanitizer's own reservations exceed every limit";
    const TemporaryFolder folder;
    const std::string path = folder.write("big.jpg", "x");
    std::filesystem::resize_file(path, 500 << 20);
    expect_failure(docprep_after("ulimit -v 200000;", {path, "-o", folder.path("out")}), path,
                   "out of memory");
}

TEST(command, noise_that_would_take_too_much_memory_is_refused_with_one_line) {
    const TemporaryFolder folder;
    PngRequest request;
    request.depth = 1;
    request.rows = 4097;
    request.cols = 8192;  // every other pixel dark, in every row
    const std::string path =
        folder.write("noise.png", make_png(request, [](int, int col, int) { return col % 2; }));
    expect_failure(docprep_with({path, "-o", folder.path("out")}), path,
                   "is noise: 16781312 dark runs are too many");
    EXPECT_EQ(Names{"noise.png"}, folder.content());
}

TEST(command, an_unwritable_output_folder_is_refused_with_one_line) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    const std::string file = folder.write("file", "mine");
    expect_failure(docprep_with({page, "-o", file}), file, "is not a folder");
    expect_failure(docprep_with({page, "-o", file + "/out"}), file, "is not a folder");
    const Outcome outcome = docprep_with({page, "-o", "/proc/docprep/out"});
    EXPECT_EQ(2, outcome.exit_code);
    EXPECT_EQ(0u, outcome.err.find("docprep: /proc/docprep: cannot be created: ")) << outcome.err;
    expect_one_line(outcome.err);
    EXPECT_EQ((Names{"file", "page.jpg"}), folder.content());
    EXPECT_EQ("mine", text_of(file));
}

TEST(command, a_full_disk_is_one_line_and_leaves_earlier_results_alone) {
    if (kCoverage) GTEST_SKIP() << "counters cannot be stored either, and say so";
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("out"));
    folder.write("out/binary.png", "older");
    const Outcome outcome = docprep_after("ulimit -f 1;", {kSample, "-o", folder.path("out")});
    EXPECT_EQ(2, outcome.exit_code);
    EXPECT_EQ("", outcome.out);
    EXPECT_EQ("docprep: " + folder.path("out/binary.png") + ": File too large\n", outcome.err);
    EXPECT_EQ((Names{"out", "out/binary.png"}), folder.content());
    EXPECT_EQ("older", text_of(folder.path("out/binary.png")));
}

TEST(command, a_log_that_cannot_be_stored_is_one_line_and_reaches_no_stream) {
    if (kCoverage) GTEST_SKIP() << "counters cannot be stored either, and say so";
    const TemporaryFolder folder;
    // Both streams are a pipe, to which the limit does not apply.
    const Outcome outcome = docprep_after(
        "(ulimit -f 0;", {write_page(folder, "page.jpg"), "--log", "-o", folder.path("out")}, "2>&1) | cat");
    EXPECT_EQ("docprep: library.log: File too large\n", outcome.out);
    EXPECT_EQ(Names{"page.jpg"}, folder.content());
}

TEST(command, the_input_is_not_replaced_by_a_result) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.png");  // a JPEG all the same
    const std::string before = text_of(page);
    expect_failure(docprep_with({page, "-o", folder.path("")}), page, "is the input and would be replaced");
    EXPECT_EQ(before, text_of(page));
    EXPECT_EQ(Names{"page.png"}, folder.content());
}

// ---- Usage ----

TEST(command, wrong_usage_is_one_line_and_exit_code_64) {
    const TemporaryFolder folder;
    const std::string out = folder.path("out");
    for (const Names& arguments : std::vector<Names>{{},
                                                     {"page.jpg"},
                                                     {"-o", out},
                                                     {"page.jpg", "-o"},
                                                     {"page.jpg", "-o", ""},
                                                     {"page.jpg", "-o", out, "-o", out},
                                                     {"page.jpg", "second.jpg", "-o", out},
                                                     {"page.jpg", "-o", out, "--no-such-option"},
                                                     {"page.jpg", "-o", out, "--bad\noption"},
                                                     {"page.jpg", "-o", out, "--nv21"},
                                                     {"page.jpg", "-o", out, "--nv21", "1280"},
                                                     {"page.jpg", "-o", out, "--nv21", "0x720"},
                                                     {"page.jpg", "-o", out, "--stages"},
                                                     {"page.jpg", "-o", out, "--stages", ""},
                                                     {"page.jpg", "-o", out, "--stages", "rows,"},
                                                     {"page.jpg", "-o", out, "--stages", "ROWS"},
                                                     {"page.jpg", "-o", out, "--verbose=maybe"}}) {
        SCOPED_TRACE(arguments.empty() ? "no arguments" : arguments.back());
        expect_wrong_usage(arguments);
    }
    EXPECT_EQ(Names{}, folder.content());
}

TEST(command, an_unknown_stage_is_refused_with_the_names_of_all) {
    expect_wrong_usage(
        {"page.jpg", "-o", "out", "--stages", "rows,sea"},
        "--stages: 'sea' is not one of sharpness, binarise, page, components, rows, seal, saliency (");
}

TEST(command, a_list_of_stages_may_have_spaces_and_either_spelling) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    const Outcome outcome =
        docprep_with({page, "-o", folder.path("out"), "--stages", " binarize , page", "--binarise", "otsu"});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ((Names{"out", "out/binary.png", "out/page.png", "out/result.json", "page.jpg"}),
              folder.content());
}

TEST(command, a_file_that_begins_with_a_dash_is_explained) {
    const TemporaryFolder folder;
    const std::string there = "cd '" + folder.path("") + "';";
    const std::string words =
        "docprep: '-dash.png' begins with a dash and is taken for an option; a file of that name is "
        "'./-dash.png', or stands after '--'\n";
    const Names direct = {"-dash.png", "-o", "out"};
    EXPECT_EQ(words, docprep_after(there, direct).err);  // there is no such file
    write_page(folder, "-dash.png");
    for (const Names& arguments :
         std::vector<Names>{direct, {"op", "otsu", "-dash.png"}, {"resize", "-dash.png", "-o", "out.png"}}) {
        const Outcome outcome = docprep_after(there, arguments);
        EXPECT_EQ(64, outcome.exit_code);
        EXPECT_EQ(words, outcome.err);
    }
    for (const Names& arguments :
         std::vector<Names>{{"./-dash.png", "-o", "out"}, {"-o", "out", "--", "-dash.png"}})
        EXPECT_EQ(0, docprep_after(there, arguments).exit_code);
}

TEST(command, a_mistyped_option_is_met_with_the_one_that_was_meant) {
    expect_wrong_usage(
        {"page.jpg", "-o", "out", "--stagse", "rows"},
        "'--stagse' is not an option; did you mean '--stages'? (docprep --help shows the usage)");
    expect_wrong_usage({"page.jpg", "--ouput=out"}, "'--ouput' is not an option; did you mean '--output'?");
    expect_wrong_usage({"resize", "p.png", "-o", "out.png", "--fctor", "2"},
                       "did you mean '--factor'? (docprep resize --help shows the usage)");
}

TEST(command, a_photo_named_like_a_command_is_read_by_its_path) {
    const TemporaryFolder folder;
    write_page(folder, "warp");
    for (const Names& arguments : std::vector<Names>{{"./warp", "-o", "out"}, {"-o", "out", "warp"}}) {
        const Outcome outcome = docprep_after("cd '" + folder.path("") + "';", arguments);
        EXPECT_EQ(0, outcome.exit_code) << outcome.err;
        EXPECT_EQ(4u, result_of(folder)["rows"].size());
        std::filesystem::remove_all(folder.path("out"));
    }
}

TEST(command, help_and_version_succeed) {
    const Outcome help = docprep_with({"--help"});
    EXPECT_EQ(0, help.exit_code);
    EXPECT_EQ("", help.err);
    for (const char* option : {"--output", "--nv21", "--stages", "--turn", "--min-sharpness", "--binarize",
                               "--no-deskew", "--verbose", "--version"})
        EXPECT_NE(std::string::npos, help.out.find(option)) << help.out;
    const Outcome version = docprep_with({"--version"});
    EXPECT_EQ(0, version.exit_code);
    for (const Names& arguments : std::vector<Names>{{"-V"},
                                                     {"warp", "-V"},
                                                     {"op", "--version"},
                                                     {"op", "otsu", "-V"},
                                                     {"list", "-V"},
                                                     {"man", "-V"}})
        EXPECT_EQ(version.out, docprep_with(arguments).out) << arguments[0];
    EXPECT_EQ(0u, version.out.find("docprep ")) << version.out;
    EXPECT_EQ(2, std::count(version.out.begin(), version.out.end(), '.')) << version.out;
    expect_one_line(version.out);
}
