// The commands that make one picture from another: docprep warp, resize and morph.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/drawing.h"
#include "commands.h"
#include "cv_imgproc.h"
#include "encoders.h"
#include "formats/photo.h"
#include "pipeline/binarise.h"

using docprep::Bytes;
using docprep::Image;
using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Mat;
using orvex_cv_991::Point32f;
using orvex_cv_991::Size;

namespace {

constexpr int kRgb = 2;

/// A colour picture without symmetry.
int blots(int row, int col, int k) {
    return (row * row * 3 + col * (5 + 2 * k) + row * col / (k + 1)) % 256;
}

std::string write_picture(const TemporaryFolder& folder, const std::string& name, int rows, int cols,
                          const Samples& samples, int colour_type = kRgb) {
    PngRequest request;
    request.colour_type = colour_type;
    request.rows = rows;
    request.cols = cols;
    return folder.write(name, make_png(request, samples));
}

Image pixels_of(const std::string& path) {
    return docprep::read_photo(path).pixels;
}

/// Runs a command that shall succeed on a picture and returns what it wrote, which is one file.
Image written_by(Names command, const TemporaryFolder& folder, const std::string& input) {
    const std::string output = folder.path("out.png");
    command.insert(command.begin() + 1, {input, "-o", output});
    Names files = folder.content();
    const Outcome outcome = docprep_with(command);
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ("", outcome.err);
    files.push_back("out.png");
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    EXPECT_EQ(files, folder.content());
    const docprep::Photo photo = docprep::read_photo(output);
    EXPECT_STREQ("PNG", photo.format);
    return photo.pixels;
}

Image warped(const Image& picture, const Mat<float>& matrix, const Size& size) {
    Image result;
    CImgproc::warpAffine(picture, result, matrix, size, INTERP_LINEAR, nullptr);
    return result;
}

Mat<float> matrix_of(const std::vector<float>& values) {
    Mat<float> matrix;
    matrix.mat_create(2, 3, 1, 0);
    std::copy(values.begin(), values.end(), matrix.data);
    return matrix;
}

/// Blocks of black and white, larger than the windows used here.
int black_and_white(int row, int col, int) {
    return (3 * (row / 5) + (col / 7) * (col / 7)) % 4 < 2 ? 255 : 0;
}

const Names kCommands = {"warp", "resize", "morph"};

/// Arguments with which a command succeeds, to stand after the input and the output.
Names arguments_of(const std::string& command) {
    if (command == "warp") return {"--angle", "7"};
    if (command == "resize") return {"--factor", "0.5"};
    return {"--op", "dilate", "--size", "3x3"};
}

Names command_line(const std::string& command, const std::string& input, const std::string& output) {
    Names all = {command, input, "-o", output};
    const Names arguments = arguments_of(command);
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

void binarise_by_otsu(const Image& gray, Image& binary) {
    docprep::binarise(gray, docprep::measure_for(docprep::BinariseMethod::kOtsu, gray), binary);
}

}  // namespace

// ---- warp ----

TEST(warp_command, an_angle_turns_about_the_centre_as_the_library_does) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    const Image result = written_by({"warp", "--angle", "-7.5", "--scale", "1.25"}, folder, path);
    const Mat<float> matrix = CImgproc::getRotationMatrix2D(Point32f(30, 19.5f), -7.5f, 1.25f);
    expect_same_pixels(warped(pixels_of(path), matrix, Size(61, 40)), result);
}

TEST(warp_command, the_scale_is_1_unless_given) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots, 0);
    const Image result = written_by({"warp", "--angle", "7"}, folder, path);
    const Mat<float> matrix = CImgproc::getRotationMatrix2D(Point32f(30, 19.5f), 7, 1);
    expect_same_pixels(warped(pixels_of(path), matrix, Size(61, 40)), result);
}

TEST(warp_command, a_half_turn_keeps_the_picture_in_place) {
    const TemporaryFolder folder;
    const std::string path =
        write_picture(folder, "p.png", 20, 30, [](int row, int, int) { return row < 10 ? 0 : 255; });
    const Image result = written_by({"warp", "--angle", "180"}, folder, path);
    for (int row = 0; row < 20; ++row)
        EXPECT_NEAR(row < 10 ? 255 : 0, result.data[(row * 30 + 15) * 3], 2) << row;
}

TEST(warp_command, positive_angles_turn_anticlockwise) {
    const TemporaryFolder folder;
    const auto right_is_white = [](int, int col, int) { return col >= 20 ? 255 : 0; };
    const std::string path = write_picture(folder, "p.png", 31, 31, right_is_white);
    const Image result = written_by({"warp", "--angle", "90"}, folder, path);
    EXPECT_NEAR(255, result.data[(5 * 31 + 15) * 3], 2);  // what was at the right is at the top
    EXPECT_EQ(0, result.data[(25 * 31 + 15) * 3]);
}

TEST(warp_command, a_matrix_maps_as_the_library_does) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    const Image result = written_by({"warp", "--matrix", "-0.9,.25,61,1e-1,1.5,-7"}, folder, path);
    const Mat<float> matrix = matrix_of({-0.9f, 0.25f, 61, 0.1f, 1.5f, -7});
    expect_same_pixels(warped(pixels_of(path), matrix, Size(61, 40)), result);
}

TEST(warp_command, fit_cuts_nothing_off_a_quarter_turn) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 20, 31, blots);
    const Image picture = pixels_of(path);
    const Image result = written_by({"warp", "--matrix", "0,1,500,-1,0,-500", "--fit"}, folder, path);
    ASSERT_EQ(31, result.rows);
    ASSERT_EQ(20, result.cols);
    for (int row = 0; row < 31; ++row)
        for (int col = 0; col < 20; ++col)
            for (int k = 0; k < 3; ++k)
                ASSERT_EQ(picture.data[(col * 31 + 30 - row) * 3 + k], result.data[(row * 20 + col) * 3 + k])
                    << row << ", " << col;
}

TEST(warp_command, fit_gives_a_quarter_turn_by_angle_no_row_too_many) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 200, 310, blots);
    const Image result = written_by({"warp", "--angle", "90", "--fit"}, folder, path);
    EXPECT_EQ(310, result.rows);
    EXPECT_EQ(200, result.cols);
}

TEST(warp_command, fit_holds_all_four_corners_and_hardly_more) {
    const TemporaryFolder folder;
    // Dark corners of 4 x 4 on a light picture: each must be there after the turn, near an edge.
    const auto corners = [](int row, int col, int) {
        return (row < 4 || row >= 96) && (col < 4 || col >= 146) ? 0 : 255;
    };
    const std::string path = write_picture(folder, "p.png", 100, 150, corners, 0);
    const Image result = written_by({"warp", "--angle", "30", "--fit"}, folder, path);
    EXPECT_EQ(180, result.cols);  // 150 cos 30 + 100 sin 30 = 179.9
    EXPECT_EQ(162, result.rows);  // 150 sin 30 + 100 cos 30 = 161.6
    const auto darkest_in = [&](int top, int bottom, int left, int right) {
        int darkest = 255;
        for (int row = top; row < bottom; ++row)
            for (int col = left; col < right; ++col)
                darkest = std::min(darkest, int{result.data[row * result.cols + col]});
        return darkest;
    };
    // Corners turn to (0, 75), (130, 0), (50, 162) and (180, 87), in the order of reading.
    EXPECT_EQ(0, darkest_in(65, 85, 0, 8));
    EXPECT_EQ(0, darkest_in(0, 8, 120, 140));
    EXPECT_EQ(0, darkest_in(154, 162, 40, 60));
    EXPECT_EQ(0, darkest_in(77, 97, 172, 180));
}

TEST(warp_command, the_summary_has_a_matrix_that_can_be_given_back) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    const std::string first = folder.path("first.png");
    const Outcome outcome = docprep_with({"warp", path, "-o", first, "--angle", "12.3"});
    const size_t at = outcome.out.find("\nmatrix        ");
    ASSERT_NE(std::string::npos, at) << outcome.out;
    const size_t begin = at + 15;
    const std::string matrix = outcome.out.substr(begin, outcome.out.find('\n', begin) - begin);
    expect_same_pixels(pixels_of(first), written_by({"warp", "--matrix", matrix}, folder, path));
}

TEST(warp_command, results_beyond_the_limit_are_one_line) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 100, 200, blots);
    const std::string out = folder.path("out.png");
    expect_failure(docprep_with({"warp", path, "-o", out, "--angle", "0", "--scale", "1000", "--fit"}), out,
                   "200000 x 100000 pixels are too many (limit 256 Mi)");
    expect_failure(
        docprep_with({"warp", path, "-o", out, "--matrix", "1.2676506e30,0,0,0,1.2676506e30,0", "--fit"}),
        out, "2.5353012e+32 x 1.2676506e+32 pixels are too many (limit 256 Mi)");
    EXPECT_EQ(Names{"p.png"}, folder.content());
}

TEST(warp_command, wrong_usage_is_one_line_and_exit_code_64) {
    const auto expect_wrong = [](Names arguments, const std::string& words) {
        SCOPED_TRACE(words);
        arguments.insert(arguments.begin(), {"warp", "p.png", "-o", "out.png"});
        expect_wrong_usage(arguments, words);
    };
    expect_wrong({}, "--angle or --matrix is required (docprep warp --help shows the usage)");
    expect_wrong({"--fit"}, "--angle or --matrix is required");
    expect_wrong({"--angle", "1", "--matrix", "1,0,0,0,1,0"}, "excludes");
    expect_wrong({"--matrix", "1,0,0,0,1,0", "--scale", "2"}, "--scale requires --angle");
    expect_wrong({"--angle", "seven"}, "--angle");
    expect_wrong({"--angle", "nan"}, "--angle: must be a finite number");
    expect_wrong({"--angle", "1", "--scale", "0"}, "--scale: must be a finite number above 0");
    expect_wrong({"--angle", "1", "--scale", "-2"}, "--scale: must be a finite number above 0");
    expect_wrong({"--angle", "1", "--scale", "inf"}, "--scale: must be a finite number above 0");
    expect_wrong({"--matrix", "1,0,0,0,1"}, "--matrix: '1,0,0,0,1' is not six numbers");
    expect_wrong({"--matrix", "2,4,0,1,2,0"}, "--matrix: '2,4,0,1,2,0' maps everything to a line or a point");
}

// ---- resize ----

TEST(resize_command, a_size_is_reached_as_the_library_does) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    Image expected;
    CImgproc::resize(pixels_of(path), expected, Size(30, 77), INTERP_LINEAR);
    expect_same_pixels(expected, written_by({"resize", "--size", "30x77"}, folder, path));
}

TEST(resize_command, a_factor_scales_as_the_library_does) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots, 0);
    for (const char* factor : {"0.3", "1", "2.7"}) {
        Image expected;
        CImgproc::resize(pixels_of(path), expected, std::stof(factor), INTERP_LINEAR);
        expect_same_pixels(expected, written_by({"resize", "--factor", factor}, folder, path));
    }
}

TEST(resize_command, results_of_no_or_too_many_pixels_are_one_line) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    const std::string out = folder.path("out.png");
    const auto expect_refusal = [&](const std::string& option, const std::string& value,
                                    const std::string& reason) {
        expect_failure(docprep_with({"resize", path, "-o", out, option, value}), out, reason);
    };
    expect_refusal("--factor", "0.02", "would have no pixels");  // 40 * 0.02 < 1 <= 61 * 0.02
    expect_refusal("--factor", "1e-45", "would have no pixels");
    expect_refusal("--factor", "1000", "61000 x 40000 pixels are too many (limit 256 Mi)");
    expect_refusal("--factor", "3e38", "inf x inf pixels are too many (limit 256 Mi)");
    expect_refusal("--size", "2147483647x2147483647",
                   "2147483647 x 2147483647 pixels are too many (limit 256 Mi)");
    EXPECT_EQ(Names{"p.png"}, folder.content());
}

TEST(resize_command, wrong_usage_is_one_line_and_exit_code_64) {
    const auto expect_wrong = [](Names arguments, const std::string& words) {
        SCOPED_TRACE(words);
        arguments.insert(arguments.begin(), {"resize", "p.png", "-o", "out.png"});
        expect_wrong_usage(arguments, words);
    };
    expect_wrong({}, "--size or --factor is required (docprep resize --help shows the usage)");
    expect_wrong({"--size", "3x3", "--factor", "2"}, "excludes");
    expect_wrong({"--size", "3"}, "--size: '3' is not WxH");
    expect_wrong({"--size", "3x0"}, "--size: '3x0' is not WxH");
    expect_wrong({"--size", "3x-3"}, "--size: '3x-3' is not WxH");
    expect_wrong({"--factor", "0"}, "--factor: must be a finite number above 0");
    expect_wrong({"--factor", "-1"}, "--factor: must be a finite number above 0");
    expect_wrong({"--factor", "half"}, "--factor");
}

// ---- morph ----

TEST(morph_command, a_black_and_white_picture_is_taken_as_it_is) {
    const TemporaryFolder folder;
    const std::string gray = write_picture(folder, "g.png", 20, 31, black_and_white, 0);
    const std::string colour = write_picture(folder, "c.png", 20, 31, black_and_white);
    const Size window(4, 3);
    Image expected[4];
    CImgproc::dilateBinary(pixels_of(gray), expected[0], window);
    CImgproc::erodeBinary(pixels_of(gray), expected[1], window);
    CImgproc::openBinary(pixels_of(gray), expected[2], window);
    CImgproc::closeBinary(pixels_of(gray), expected[3], window);
    const char* const names[] = {"dilate", "erode", "open", "close"};
    for (int k = 0; k < 4; ++k) {
        SCOPED_TRACE(names[k]);
        for (const std::string& path : {gray, colour})
            expect_same_pixels(expected[k],
                               written_by({"morph", "--op", names[k], "--size", "4x3"}, folder, path));
    }
}

TEST(morph_command, any_other_picture_is_binarised_first_with_dark_as_foreground) {
    const TemporaryFolder folder;
    const std::string path = write_page(folder, "page.jpg");
    Image binary, expected;
    binarise_by_otsu(pixels_of(path), binary);
    CImgproc::dilateBinary(binary, expected, Size(9, 1));
    const Image result = written_by({"morph", "--op", "dilate", "--size", "9x1"}, folder, path);
    expect_same_pixels(expected, result);
    EXPECT_EQ(255, result.data[45 * kPageCols + 45]);  // within a square
    EXPECT_EQ(255, result.data[45 * kPageCols + 55]);  // and between two
    EXPECT_EQ(0, result.data[5 * kPageCols + 5]);
}

TEST(morph_command, colour_is_binarised_by_way_of_gray) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    Image gray, binary, expected;
    CImgproc::bgr2gray(pixels_of(path), gray);
    binarise_by_otsu(gray, binary);
    CImgproc::erodeBinary(binary, expected, Size(2, 2));
    expect_same_pixels(expected, written_by({"morph", "--op", "erode", "--size", "2x2"}, folder, path));
}

TEST(morph_command, the_summary_says_what_the_foreground_was) {
    const TemporaryFolder folder;
    const auto foreground_of = [&](const std::string& path) {
        const Outcome outcome = docprep_with(command_line("morph", path, folder.path("out.png")));
        const size_t at = outcome.out.find("\nforeground    ");
        return at == std::string::npos ? outcome.out : outcome.out.substr(at + 15, 5);
    };
    EXPECT_EQ("white", foreground_of(write_picture(folder, "b.png", 20, 31, black_and_white)));
    EXPECT_EQ("dark ", foreground_of(write_page(folder, "page.jpg")));
}

TEST(morph_command, a_window_larger_than_the_picture_is_one_line) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 20, 31, black_and_white);
    const std::string out = folder.path("out.png");
    for (const char* window : {"32x1", "1x21"})
        expect_failure(docprep_with({"morph", path, "-o", out, "--op", "open", "--size", window}), path,
                       "is smaller (31 x 20 pixels) than the window " + std::string(window));
    EXPECT_EQ(Names{"p.png"}, folder.content());
    written_by({"morph", "--op", "open", "--size", "31x20"}, folder, path);
}

TEST(morph_command, wrong_usage_is_one_line_and_exit_code_64) {
    const auto expect_wrong = [](Names arguments, const std::string& words) {
        SCOPED_TRACE(words);
        arguments.insert(arguments.begin(), {"morph", "p.png", "-o", "out.png"});
        expect_wrong_usage(arguments, words);
    };
    expect_wrong({"--size", "3x3"}, "--op is required");
    expect_wrong({"--op", "open"}, "--size is required");
    expect_wrong({"--op", "opens", "--size", "3x3"},
                 "--op: 'opens' is not one of dilate, erode, open, close");
    expect_wrong({"--op", "open", "--size", "3,3"}, "--size: '3,3' is not WxH");
    expect_wrong({"--op", "open", "--size", "0x3"}, "--size: '0x3' is not WxH");
}

// ---- All of them ----

TEST(picture_command, the_summary_is_all_that_standard_output_gets) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    for (const std::string& command : kCommands) {
        SCOPED_TRACE(command);
        const Outcome outcome = docprep_with(command_line(command, path, folder.path("out.png")));
        EXPECT_EQ(0, outcome.exit_code);
        EXPECT_EQ("", outcome.err);
        EXPECT_EQ(0u, outcome.out.find("input         " + path + " (PNG, 61 x 40)\nsize          61 x 40\n"))
            << outcome.out;
        const std::string end = "  in all\nwritten       " + folder.path("out.png") + "\n";
        ASSERT_GT(outcome.out.size(), end.size());
        EXPECT_EQ(end, outcome.out.substr(outcome.out.size() - end.size()));
        EXPECT_EQ(std::string::npos, outcome.out.find(".cpp:")) << outcome.out;
        const std::string result =
            command == "resize" ? "\nresult        30 x 20\n" : "\nresult        61 x 40\n";
        EXPECT_NE(std::string::npos, outcome.out.find(result)) << outcome.out;
    }
}

TEST(picture_command, verbose_shows_library_lines_on_standard_error) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    for (const std::string& command : kCommands) {
        Names arguments = command_line(command, path, folder.path("out.png"));
        arguments.push_back("--verbose");
        const Outcome outcome = docprep_with(arguments);
        EXPECT_EQ(0, outcome.exit_code);
        EXPECT_EQ(0u, outcome.err.find("D cv_imgproc.cpp:")) << outcome.err;
        EXPECT_NE(std::string::npos, outcome.err.find("cost time")) << outcome.err;
        EXPECT_EQ(std::string::npos, outcome.out.find("cost time")) << outcome.out;
        EXPECT_EQ((Names{"out.png", "p.png"}), folder.content());
    }
}

TEST(picture_command, camera_frames_and_turned_photos_are_read) {
    const TemporaryFolder folder;
    const std::string frame = folder.write("f.nv21", Bytes(60 * 60, 128));
    JpegRequest request;
    request.rows = 60;
    request.cols = 40;
    request.exif = exif_with_orientation(6);
    const std::string photo = folder.write("p.jpg", make_jpeg(request, blots));
    for (const std::string& command : kCommands) {
        Names arguments = command_line(command, frame, folder.path("out.png"));
        arguments.insert(arguments.end(), {"--nv21", "60x40"});
        Outcome outcome = docprep_with(arguments);
        EXPECT_NE(std::string::npos, outcome.out.find("(NV21, 60 x 40)\n")) << outcome.err;
        outcome = docprep_with(command_line(command, photo, folder.path("out.png")));
        EXPECT_NE(std::string::npos,
                  outcome.out.find("(JPEG, 40 x 60, orientation 6)\nsize          60 x 40\n"))
            << outcome.out;
    }
}

TEST(picture_command, the_output_may_lie_in_the_current_or_in_a_new_folder) {
    const TemporaryFolder folder;
    write_picture(folder, "p.png", 40, 61, blots);
    for (const std::string& command : kCommands) {
        const std::string output = command + "/new/out.png";
        const Outcome outcome =
            docprep_after("cd '" + folder.path("") + "';", command_line(command, "p.png", output));
        EXPECT_EQ(0, outcome.exit_code) << outcome.err;
        EXPECT_NE(std::string::npos, outcome.out.find("\nwritten       " + output + "\n")) << outcome.out;
        EXPECT_TRUE(std::filesystem::exists(folder.path(output)));
    }
    const Outcome here =
        docprep_after("cd '" + folder.path("") + "';", command_line("warp", "p.png", "out.png"));
    EXPECT_EQ(0, here.exit_code) << here.err;
    EXPECT_TRUE(std::filesystem::exists(folder.path("out.png")));
}

TEST(picture_command, an_earlier_output_is_replaced) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    folder.write("out.png", "older");
    written_by({"resize", "--factor", "2"}, folder, path);
}

TEST(picture_command, the_input_is_not_replaced) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    const std::string before = text_of(path);
    for (const std::string& command : kCommands) {
        expect_failure(docprep_with(command_line(command, path, path)), path,
                       "is the input and would be replaced");
        EXPECT_EQ(before, text_of(path));
        EXPECT_EQ(Names{"p.png"}, folder.content());
    }
}

TEST(picture_command, failures_are_one_line_and_leave_nothing) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 61, blots);
    const std::string letter = folder.write("letter.txt", "Dear friends");
    std::filesystem::create_directory(folder.path("folder.png"));
    const Names before = folder.content();
    for (const std::string& command : kCommands) {
        SCOPED_TRACE(command);
        const std::string out = folder.path("new/out.png");
        expect_failure(docprep_with(command_line(command, "no.jpg", out)), "no.jpg",
                       "No such file or directory");
        expect_failure(docprep_with(command_line(command, letter, out)), letter,
                       "is none of JPEG, PNG, PNM, TIFF and WebP");
        expect_failure(docprep_with(command_line(command, path, letter + "/out.png")), letter,
                       "is not a folder");
        expect_failure(docprep_with(command_line(command, path, folder.path("folder.png"))),
                       folder.path("folder.png"), "is a folder");
        EXPECT_EQ(before, folder.content());
    }
}

TEST(picture_command, a_full_disk_is_one_line_and_leaves_the_earlier_output_alone) {
    if (DOCPREP_COVERAGE) GTEST_SKIP() << "counters cannot be stored either, and say so";
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 100, 150, blots);
    const std::string out = folder.write("out.png", "older");
    const Outcome outcome = docprep_after("ulimit -f 1;", command_line("warp", path, out));
    expect_failure(outcome, out, "File too large");
    EXPECT_EQ("older", text_of(out));
    EXPECT_EQ((Names{"out.png", "p.png"}), folder.content());
}

TEST(picture_command, wrong_usage_is_one_line_and_exit_code_64) {
    for (const std::string& command : kCommands) {
        expect_wrong_usage({command}, "(docprep " + command + " --help shows the usage)");
        expect_wrong_usage({command, "p.png"}, "--output is required");
        Names arguments = command_line(command, "p.png", "out/");
        expect_wrong_usage(arguments, "--output: 'out/' does not name a file");
        arguments = command_line(command, "p.png", "");
        expect_wrong_usage(arguments, "--output: '' does not name a file");
        arguments = command_line(command, "p.png", "out.png");
        arguments.push_back("second.png");
        expect_wrong_usage(arguments, "second.png");
        arguments.back() = "--stages";
        expect_wrong_usage(arguments, "--stages");
    }
    expect_wrong_usage({"WARP", "p.png", "-o", "out.png", "--angle", "7"});
}

TEST(picture_command, help_succeeds_and_lists_the_options) {
    const Outcome all = docprep_with({"--help"});
    for (const std::string& command : kCommands) {
        EXPECT_NE(std::string::npos, all.out.find("\n  " + command + " ")) << all.out;
        const Outcome help = docprep_with({command, "--help"});
        EXPECT_EQ(0, help.exit_code);
        EXPECT_EQ("", help.err);
        EXPECT_NE(std::string::npos, help.out.find("Usage: docprep " + command)) << help.out;
        for (const std::string& option : {arguments_of(command)[0], std::string("--output"),
                                          std::string("--nv21"), std::string("--verbose")})
            EXPECT_NE(std::string::npos, help.out.find(option)) << help.out;
    }
}

TEST(picture_command, the_ending_of_the_output_decides_its_format) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 60, blots);
    for (const std::string& command : kCommands) {
        const std::string reference = folder.path("reference.png");
        EXPECT_EQ(0, docprep_with(command_line(command, path, reference)).exit_code);
        for (const auto& [name, format] :
             std::vector<std::pair<std::string, std::string>>{{"r.PNG", "PNG"},
                                                              {"r.jpg", "JPEG"},
                                                              {"r.ppm", "PNM"},
                                                              {"r.tiff", "TIFF"},
                                                              {"r.webp", "WebP"}}) {
            SCOPED_TRACE(command + " to " + name);
            const Outcome outcome = docprep_with(command_line(command, path, folder.path(name)));
            ASSERT_EQ(0, outcome.exit_code) << outcome.err;
            const docprep::Photo photo = docprep::read_photo(folder.path(name));
            EXPECT_EQ(format, photo.format);
            if (format == "JPEG") continue;
            const Image expected = pixels_of(reference);
            expect_same_pixels(format == "WebP" ? docprep::in_colour(expected) : expected, photo.pixels);
        }
    }
}

TEST(picture_command, another_ending_is_wrong_usage_with_the_known_ones) {
    const TemporaryFolder folder;
    const std::string path = write_picture(folder, "p.png", 40, 60, blots);
    for (const std::string& command : kCommands)
        for (const char* name : {"r.gif", "r", "r.png.gz"})
            expect_wrong_usage(command_line(command, path, folder.path(name)),
                               "' does not end in .png, .jpg, .jpeg, .tif, .tiff, .webp, .pgm, .ppm, .pnm");
    EXPECT_EQ(Names{"p.png"}, folder.content());
}
