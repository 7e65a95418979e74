// What docprep does before it looks for text: turning, sharpness, binarisation, deskew; and the way back.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "cv_imgproc.h"
#include "encoders.h"
#include "formats/photo.h"

using docprep::Image;
using nlohmann::json;

namespace {

json result_of(const TemporaryFolder& folder) {
    return json::parse(text_of(folder.path("out/result.json")));
}

Image picture_of(const TemporaryFolder& folder, const std::string& name) {
    return docprep::read_photo(folder.path("out/" + name)).pixels;
}

/// The page of squares in the middle of larger paper, its rows falling to the right.
constexpr int kPaperRows = 360;
constexpr int kPaperCols = 420;

int skewed_page(int row, int col, double degrees) {
    const double radians = degrees * 3.14159265358979 / 180;
    const double x = col - kPaperCols / 2;
    const double y = row - kPaperRows / 2;
    const auto page_x = std::lround(x * std::cos(radians) + y * std::sin(radians)) + kPageCols / 2;
    const auto page_y = std::lround(y * std::cos(radians) - x * std::sin(radians)) + kPageRows / 2;
    if (page_x < 0 || page_y < 0 || page_x >= kPageCols || page_y >= kPageRows) return 222;
    return page_of_squares(static_cast<int>(page_y), static_cast<int>(page_x));
}

std::string write_gray(const TemporaryFolder& folder, int rows, int cols, const Samples& samples) {
    PngRequest request;
    request.rows = rows;
    request.cols = cols;
    return folder.write("photo.png", make_png(request, samples));
}

/// The skewed page as a camera held on its side stores it: turned anticlockwise `turns` quarters.
std::string write_lying(const TemporaryFolder& folder, double degrees, int turns) {
    const bool lying = turns % 2 == 1;
    const int rows = lying ? kPaperCols : kPaperRows;
    const int cols = lying ? kPaperRows : kPaperCols;
    return write_gray(folder, rows, cols, [&](int row, int col, int) {
        switch (turns) {
            case 0:
                return skewed_page(row, col, degrees);
            case 1:
                return skewed_page(col, kPaperCols - 1 - row, degrees);
            case 2:
                return skewed_page(kPaperRows - 1 - row, kPaperCols - 1 - col, degrees);
            default:
                return skewed_page(kPaperRows - 1 - col, row, degrees);
        }
    });
}

/// Whether (x, y) lies in a quadrilateral, or no more than `slack` pixels beyond its sides.
bool in_quadrilateral(const json& corners, double x, double y, double slack) {
    for (size_t k = 0; k < 4; ++k) {
        const json& from = corners[k];
        const json& to = corners[(k + 1) % 4];
        const double dx = to[0].get<double>() - from[0].get<double>();
        const double dy = to[1].get<double>() - from[1].get<double>();
        const double side = dx * (y - from[1].get<double>()) - dy * (x - from[0].get<double>());
        if (side < -slack * std::hypot(dx, dy)) return false;  // clockwise on screen: inside is on the right
    }
    return true;
}

bool in_rect(const json& rect, int x, int y) {
    return x >= rect["x"] && y >= rect["y"] && x < rect["x"].get<int>() + rect["width"].get<int>() &&
           y < rect["y"].get<int>() + rect["height"].get<int>();
}

/// How many rows have the pixel in their quadrilateral; each of those has it in its rectangle, too.
int rows_with(const json& rows, int x, int y) {
    int n = 0;
    for (const json& row : rows) {
        if (!in_quadrilateral(row["photo"]["corners"], x, y, 2)) continue;
        EXPECT_TRUE(in_rect(row["photo"]["rect"], x, y) ||
                    !in_quadrilateral(row["photo"]["corners"], x, y, -1))
            << x << ", " << y;
        ++n;
    }
    return n;
}

}  // namespace

// ---- The way back to the photograph ----

TEST(page_command, rows_of_a_turned_and_skewed_page_lie_on_its_marks) {
    for (const int turns : {0, 1, 2, 3})
        for (const double degrees : {6.0, -11.0}) {
            SCOPED_TRACE(std::to_string(turns) + " quarter turns, " + std::to_string(degrees) + " degrees");
            const TemporaryFolder folder;
            const std::string path = write_lying(folder, degrees, turns);
            const Outcome outcome =
                docprep_with({path, "-o", folder.path("out"), "--turn", std::to_string(90 * turns)});
            ASSERT_EQ(0, outcome.exit_code) << outcome.err;
            const json result = result_of(folder);
            EXPECT_NEAR(degrees, result["deskew"]["degrees"], 0.3);
            ASSERT_EQ(4u, result["rows"].size());
            const Image photo = docprep::read_photo(path).pixels;
            EXPECT_EQ(photo.cols, result["width"]);
            EXPECT_EQ(photo.rows, result["height"]);
            int marks = 0;
            int lost = 0;
            for (int y = 0; y < photo.rows; ++y)
                for (int x = 0; x < photo.cols; ++x) {
                    if (photo.data[y * photo.cols + x] > 100) continue;
                    ++marks;
                    lost += rows_with(result["rows"], x, y) != 1;
                }
            EXPECT_GT(marks, 8000);
            EXPECT_EQ(0, lost);
            // And no row is much larger than its marks: 252 x 15.
            for (const json& row : result["rows"]) {
                const json& corners = row["photo"]["corners"];
                const auto length = [&](size_t a, size_t b) {
                    return std::hypot(corners[a][0].get<double>() - corners[b][0].get<double>(),
                                      corners[a][1].get<double>() - corners[b][1].get<double>());
                };
                EXPECT_NEAR(251, length(0, 1), 5);
                EXPECT_NEAR(14, length(1, 2), 5);
            }
        }
}

TEST(page_command, the_matrix_takes_marks_of_the_photo_to_the_page) {
    const TemporaryFolder folder;
    const std::string path = write_lying(folder, 8, 0);
    docprep_with({path, "-o", folder.path("out")});
    const json matrix = result_of(folder)["deskew"]["matrix"];
    const Image photo = docprep::read_photo(path).pixels;
    const Image page = picture_of(folder, "page.png");
    int marks = 0;
    int black = 0;
    for (int y = 0; y < photo.rows; ++y)
        for (int x = 0; x < photo.cols; ++x) {
            if (photo.data[y * photo.cols + x] > 100) continue;
            const auto at = [&](size_t k) { return matrix[k].get<double>(); };
            const auto page_x = std::lround(at(0) * x + at(1) * y + at(2));
            const auto page_y = std::lround(at(3) * x + at(4) * y + at(5));
            ASSERT_TRUE(page_x >= 0 && page_y >= 0 && page_x < page.cols && page_y < page.rows);
            ++marks;
            black += page.data[page_y * page.cols + page_x] == 0;
        }
    EXPECT_GT(black, marks * 9 / 10);
}

// ---- Turn ----

TEST(page_command, a_turn_is_clockwise_and_reported_and_pictures_are_turned) {
    const TemporaryFolder folder;
    const std::string path = write_lying(folder, 0, 1);
    const Outcome outcome = docprep_with({path, "-o", folder.path("out"), "--turn", "90"});
    EXPECT_EQ(json({{"degrees", 90}, {"how", "given"}, {"width", kPaperCols}, {"height", kPaperRows}}),
              result_of(folder)["turn"]);
    EXPECT_NE(std::string::npos, outcome.out.find("\nturned        90 degrees clockwise, 420 x 360\n"))
        << outcome.out;
    for (const char* name : {"binary.png", "page.png", "rows.jpg", "saliency.jpg"}) {
        EXPECT_EQ(kPaperCols, picture_of(folder, name).cols) << name;
        EXPECT_EQ(kPaperRows, picture_of(folder, name).rows) << name;
    }
    EXPECT_EQ(4u, result_of(folder)["rows"].size());
}

TEST(page_command, no_turn_is_a_turn_by_0) {
    const TemporaryFolder folder;
    const std::string path = write_lying(folder, 0, 0);
    const Outcome outcome = docprep_with({path, "-o", folder.path("out"), "--turn", "0"});
    EXPECT_EQ(0, result_of(folder)["turn"]["degrees"]);
    EXPECT_EQ(std::string::npos, outcome.out.find("\nturned")) << outcome.out;
}

// ---- Sharpness ----

TEST(page_command, a_photo_below_the_wanted_sharpness_is_refused_and_nothing_written) {
    const TemporaryFolder folder;
    const std::string path = write_page(folder, "page.jpg");
    ASSERT_EQ(0, docprep_with({path, "-o", folder.path("out"), "--stages", "sharpness"}).exit_code);
    const double sharpness = result_of(folder)["sharpness"]["value"];
    std::filesystem::remove_all(folder.path("out"));

    const std::string above = std::to_string(sharpness + 1);
    const Outcome refused = docprep_with({path, "-o", folder.path("out"), "--min-sharpness", above});
    EXPECT_EQ(docprep::kRefused, refused.exit_code);
    EXPECT_EQ("", refused.out);
    EXPECT_EQ(0u, refused.err.find("docprep: " + path + ": is blurred: sharpness ")) << refused.err;
    EXPECT_NE(std::string::npos, refused.err.find(" is below ")) << refused.err;
    expect_one_line(refused.err);
    EXPECT_EQ(Names{"page.jpg"}, folder.content());

    const std::string below = std::to_string(sharpness - 1);
    EXPECT_EQ(0, docprep_with({path, "-o", folder.path("out"), "--min-sharpness", below}).exit_code);
}

TEST(page_command, a_wanted_sharpness_is_measured_whatever_the_stages) {
    const TemporaryFolder folder;
    const std::string path = write_page(folder, "page.jpg");
    const Names arguments = {path, "-o", folder.path("out"), "--stages", "seal", "--min-sharpness"};
    Names much = arguments;
    much.push_back("1e6");
    EXPECT_EQ(docprep::kRefused, docprep_with(much).exit_code);
    Names little = arguments;
    little.push_back("1");
    EXPECT_EQ(0, docprep_with(little).exit_code);
    EXPECT_TRUE(result_of(folder).contains("sharpness"));
}

TEST(page_command, a_blank_page_is_not_sharp_enough_for_any_limit) {
    const TemporaryFolder folder;
    const std::string path = write_gray(folder, 50, 60, [](int, int, int) { return 230; });
    const Outcome outcome = docprep_with({path, "-o", folder.path("out")});
    EXPECT_NE(std::string::npos, outcome.out.find("\nsharpness     0, no text\n")) << outcome.out;
    expect_failure(docprep_with({path, "-o", folder.path("out"), "--min-sharpness", "0.5"}), path,
                   "is blurred: sharpness 0 is below 0.5", docprep::kRefused);
    EXPECT_NE(std::string::npos, outcome.out.find("\nrows          none: no text was found\n"))
        << outcome.out;
    expect_failure(docprep_with({path, "-o", folder.path("out"), "--require-text"}), path,
                   "no text was found", docprep::kRefused);
}

// ---- Binarisation ----

TEST(page_command, a_binary_page_is_black_on_white_and_the_binary_picture_white_on_black) {
    for (const char* method : {"otsu", "adaptive"}) {
        const TemporaryFolder folder;
        docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out"), "--page", "binary",
                      "--binarize", method});
        const Image page = picture_of(folder, "page.png");
        Image inverse = picture_of(folder, "binary.png");
        ~inverse;
        expect_same_pixels(inverse, page);
        EXPECT_EQ(0, page.data[45 * kPageCols + 45]) << method;
        EXPECT_EQ(255, page.data[5 * kPageCols + 5]) << method;
        EXPECT_EQ(method, result_of(folder)["binarise"]["method"]);
    }
}

TEST(page_command, otsu_reports_the_threshold_of_the_library) {
    const TemporaryFolder folder;
    const std::string path = write_page(folder, "page.jpg");
    docprep_with({path, "-o", folder.path("out"), "--binarise", "otsu"});
    Image gray;
    orvex_cv_991::CImgproc::bgr2gray(docprep::read_photo(path).pixels, gray);
    EXPECT_EQ(orvex_cv_991::CImgproc::otsu(gray), result_of(folder)["binarise"]["threshold"]);
}

TEST(page_command, print_in_a_shadow_is_found_by_default) {
    const TemporaryFolder folder;
    const auto shaded = [](int row, int col, int) {
        const int level = page_of_squares(row, col) < 100 ? 110 : 220;
        return level * (kPageCols + 200 - col) / (kPageCols + 200);
    };
    const std::string path = write_gray(folder, kPageRows, kPageCols, shaded);
    docprep_with({path, "-o", folder.path("out")});
    EXPECT_EQ(52, result_of(folder)["components"]["text"]);
    docprep_with({path, "-o", folder.path("out"), "--page", "binary", "--binarize", "otsu"});
    EXPECT_LT(result_of(folder)["components"]["text"], 52);
}

// ---- Deskew ----

TEST(page_command, without_deskew_the_page_is_as_large_and_as_askew_as_the_photo) {
    const TemporaryFolder folder;
    const std::string path = write_lying(folder, 9, 0);
    const Outcome outcome = docprep_with({path, "-o", folder.path("out"), "--no-deskew"});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    const json result = result_of(folder);
    EXPECT_EQ(0, result["deskew"]["degrees"]);
    EXPECT_EQ(json({1, 0, 0, 0, 1, 0}), result["deskew"]["matrix"]);
    EXPECT_EQ(kPaperCols, picture_of(folder, "page.png").cols);
    EXPECT_EQ(4u, result["rows"].size()) << "rows follow their letters";
    EXPECT_NE(std::string::npos, outcome.out.find("\npage          not turned\n")) << outcome.out;
}

TEST(page_command, a_deskewed_page_holds_the_whole_photo_on_white) {
    const TemporaryFolder folder;
    docprep_with({write_lying(folder, 9, 0), "-o", folder.path("out")});
    const json deskew = result_of(folder)["deskew"];
    const Image page = picture_of(folder, "page.png");
    EXPECT_EQ(page.cols, deskew["width"]);
    EXPECT_EQ(page.rows, deskew["height"]);
    EXPECT_GT(page.cols, kPaperCols + 40);
    EXPECT_GT(page.rows, kPaperRows + 40);
    const ptrdiff_t last = static_cast<ptrdiff_t>(page.rows) * page.cols - 1;
    EXPECT_EQ(255, page.data[0]);
    EXPECT_EQ(255, page.data[last]);
    // 52 squares of 12 x 15.
    EXPECT_NEAR(52 * 12 * 15, static_cast<double>(std::count(page.data, page.data + last, 0)), 1200);
    EXPECT_EQ(page.cols, picture_of(folder, "rows.jpg").cols);
}

TEST(page_command, what_the_border_cuts_stays_out_of_the_rows_of_a_deskewed_page) {
    const TemporaryFolder folder;
    const auto with_desk = [](int row, int col, int) {
        return col < 30 && row > 100 && row % 40 < 20 ? 40 : skewed_page(row, col, 7);
    };
    docprep_with({write_gray(folder, kPaperRows, kPaperCols, with_desk), "-o", folder.path("out")});
    const json result = result_of(folder);
    EXPECT_NEAR(7, result["deskew"]["degrees"], 0.3);
    EXPECT_EQ(52, result["components"]["text"]);
    EXPECT_EQ(4u, result["rows"].size());
}

// ---- Kinds of page ----

TEST(page_command, a_soft_page_has_dark_print_on_white_whatever_the_light) {
    const TemporaryFolder folder;
    const auto shaded = [](int row, int col, int) {
        const int level = page_of_squares(row, col) < 100 ? 110 : 220;
        return level * (kPageCols + 200 - col) / (kPageCols + 200);
    };
    docprep_with({write_gray(folder, kPageRows, kPageCols, shaded), "-o", folder.path("out")});
    const Image page = picture_of(folder, "page.png");
    ASSERT_EQ(kPageRows, page.rows);
    int wrong = 0;
    for (int row = 0; row < kPageRows; ++row)
        for (int col = 0; col < kPageCols; ++col)
            wrong += (page.data[row * kPageCols + col] < 128) != (page_of_squares(row, col) < 100);
    EXPECT_EQ(0, wrong);
    EXPECT_EQ("soft", result_of(folder)["page"]["kind"]);
}

TEST(page_command, a_gray_page_is_the_photograph_where_there_is_paper) {
    const TemporaryFolder folder;
    const std::string path = write_gray(folder, kPaperRows, kPaperCols,
                                        [](int row, int col, int) { return skewed_page(row, col, 0); });
    docprep_with({path, "-o", folder.path("out"), "--page", "gray", "--no-deskew"});
    expect_same_pixels(docprep::read_photo(path).pixels, picture_of(folder, "page.png"));
    EXPECT_EQ("gray", result_of(folder)["page"]["kind"]);
}

/// The page of squares as a bright sheet in the middle of a dark desk.
constexpr int kDesk = 60;
int page_on_desk(int row, int col) {
    const int page_row = row - kDesk, page_col = col - kDesk;
    const bool on_page = page_row >= 0 && page_col >= 0 && page_row < kPageRows && page_col < kPageCols;
    return on_page ? page_of_squares(page_row, page_col) : 60;
}

TEST(page_command, what_is_not_paper_is_white_and_a_crop_leaves_it_out) {
    const TemporaryFolder folder;
    const std::string path = write_gray(folder, kPageRows + 2 * kDesk, kPageCols + 2 * kDesk,
                                        [](int row, int col, int) { return page_on_desk(row, col); });
    docprep_with({path, "-o", folder.path("out")});
    const Image page = picture_of(folder, "page.png");
    EXPECT_EQ(255, page.data[5 * page.cols + 5]);
    EXPECT_EQ(255, page.data[(page.rows - 6) * page.cols + page.cols - 6]);
    const json outline = result_of(folder)["paper"]["outline"];
    ASSERT_GE(outline.size(), 4u);
    for (const json& corner : outline) {
        EXPECT_NEAR(kPageCols / 2.0, std::fabs(corner[0].get<double>() - kDesk - kPageCols / 2.0), 15);
        EXPECT_NEAR(kPageRows / 2.0, std::fabs(corner[1].get<double>() - kDesk - kPageRows / 2.0), 15);
    }

    docprep_with({path, "-o", folder.path("out"), "--crop"});
    EXPECT_NEAR(kPageCols, picture_of(folder, "page.png").cols, 25);
    EXPECT_NEAR(kPageRows, picture_of(folder, "page.png").rows, 25);
    EXPECT_EQ(4u, result_of(folder)["rows"].size());
}

TEST(page_command, the_page_states_its_resolution) {
    const TemporaryFolder folder;
    docprep_with({write_page(folder, "page.jpg"), "-o", folder.path("out")});
    const std::string png = text_of(folder.path("out/page.png"));
    const size_t chunk = png.find("pHYs");
    ASSERT_NE(std::string::npos, chunk);
    int per_metre = 0;
    for (size_t k = 4; k < 8; ++k) per_metre = per_metre * 256 + static_cast<unsigned char>(png[chunk + k]);
    EXPECT_NEAR(result_of(folder)["page"]["dots_per_inch"].get<double>(), per_metre * 0.0254, 0.5);
    EXPECT_EQ(std::string::npos, text_of(folder.path("out/binary.png")).find("pHYs"));
}

// ---- Usage ----

TEST(page_command, wrong_values_are_refused_with_one_line) {
    expect_wrong_usage({"p.jpg", "-o", "out", "--turn", "45"},
                       "--turn: '45' is not one of auto, 0, 90, 180, 270 (");
    expect_wrong_usage({"p.jpg", "-o", "out", "--turn"});
    expect_wrong_usage({"p.jpg", "-o", "out", "--binarize", "sauvola"},
                       "--binarize: 'sauvola' is not one of otsu, adaptive (");
    expect_wrong_usage({"p.jpg", "-o", "out", "--page", "colour"},
                       "--page: 'colour' is not one of soft, binary, gray (");
    for (const char* value : {"", "sharp", "0", "-3", "nan", "inf"})
        expect_wrong_usage({"p.jpg", "-o", "out", "--min-sharpness", value});
    expect_wrong_usage({"p.jpg", "-o", "out", "--no-deskew=maybe"});
}
