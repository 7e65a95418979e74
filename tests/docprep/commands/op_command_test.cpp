// docprep op: every operation gives from the command line what a direct call of the library gives.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "commands/operations.h"
#include "cv_imgproc.h"
#include "encoders.h"
#include "formats/file_bytes.h"
#include "formats/nv21_file.h"
#include "formats/png_file.h"

using docprep::Bytes;
using docprep::Image;
using docprep::Operand;
using docprep::Operation;
using nlohmann::json;
using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;

namespace {

const std::string kFrame = std::string(DOCPREP_SAMPLES) + "/frame_1280x720.nv21.gz";

// ---- Pictures ----

/// The sample page, small enough for all operations.
const Image& colour() {
    static const Image picture = [] {
        Image small;
        const Image page = docprep::read_photo(std::string(DOCPREP_SAMPLES) + "/page.jpg").pixels;
        CImgproc::resize(page, small, 0.2f, INTERP_LINEAR);
        return small;
    }();
    return picture;
}

const Image& gray() {
    static const Image picture = [] {
        Image gray;
        CImgproc::bgr2gray(colour(), gray);
        return gray;
    }();
    return picture;
}

/// Its dark print, white.
const Image& binary() {
    static const Image picture = [] {
        Image binary;
        CImgproc::threshold(gray(), binary, 0, 255, 8 | 1, Image());
        return binary;
    }();
    return picture;
}

/// 0 in the left half.
const Image& half() {
    static const Image picture = [] {
        Image half;
        half.mat_create(gray().rows, gray().cols, 1, 0);
        for (int row = 0; row < half.rows; ++row)
            for (int col = half.cols / 2; col < half.cols; ++col) half.at(row, col) = 255;
        return half;
    }();
    return picture;
}

// ---- Numbers ----

json plain(unsigned char value) {
    return int{value};
}
json plain(float value) {
    return double{value};
}
json plain(const Point& point) {
    return {point.x, point.y};
}
json plain(const Point32f& point) {
    return {double{point.x}, double{point.y}};
}
json plain(const Rect& rect) {
    return {{"x", rect.x}, {"y", rect.y}, {"width", rect.width}, {"height", rect.height}};
}
template <class T>
json plain(const orvex_991::vector<T>& values) {
    json list = json::array();
    for (int k = 0; k < values.size; ++k) list.push_back(plain(values[k]));
    return list;
}

// ---- Direct calls ----

struct Direct {
    Names arguments;
    std::function<void(Image&, json&)> call;  ///< fills in what the operation leaves
};

Mat<float> matrix_of(const std::vector<float>& values) {
    Mat<float> matrix;
    matrix.mat_create(2, 3, 1, 0);
    std::copy(values.begin(), values.end(), matrix.data);
    return matrix;
}

const Names kWindow = {"--size", "5x3"};
const Size kWindowSize(5, 3);
const std::string kMatrixText = "0.9,0.1,5,-0.1,0.9,-7.5";
const Mat<float> kMatrix = matrix_of({0.9f, 0.1f, 5, -0.1f, 0.9f, -7.5f});

/// By the operation's name, and a mark where it has several forms. MASK stands for the file of half().
std::map<std::string, Direct> direct_calls() {
    using Calls = std::map<std::string, Direct>;
    Calls colours = {
        {"bgr2gray", {{}, [](Image& out, json&) { CImgproc::bgr2gray(colour(), out); }}},
        {"yuv2bgr",
         {{"--nv21", "1280x720"},
          [](Image& out, json&) {
              const Bytes frame = docprep::decode_nv21(docprep::read_file(kFrame), kFrame, {1280, 720});
              CImgproc::yuv2bgr(frame.data(), 720, 1280, out);
          }}},
        {"bgr2hsv", {{}, [](Image& out, json&) { CImgproc::bgr2hsv(colour(), out); }}},
        {"redColorDetect", {{}, [](Image& out, json&) { CImgproc::redColorDetect(colour(), out, false); }}},
        {"redColorDetect relaxed",
         {{"--relaxed"}, [](Image& out, json&) { CImgproc::redColorDetect(colour(), out, true); }}},
    };
    Calls statistics = {
        {"equalizeHist", {{}, [](Image& out, json&) { CImgproc::equalizeHist(gray(), out); }}},
        {"hist",
         {{},
          [](Image&, json& values) {
              orvex_991::vector<float> shares;
              CImgproc::hist(gray(), shares);
              values = {{"hist", plain(shares)}};
          }}},
        {"meanStdDev",
         {{},
          [](Image&, json& values) {
              float mean = 0, stddev = 0;
              CImgproc::meanStdDev(gray(), mean, stddev);
              values = {{"mean", plain(mean)}, {"stddev", plain(stddev)}};
          }}},
        {"minVal",
         {{},
          [](Image&, json& v) {
              v = {{"level", plain(CImgproc::minVal(gray()))}};
          }}},
        {"maxVal",
         {{},
          [](Image&, json& v) {
              v = {{"level", plain(CImgproc::maxVal(gray()))}};
          }}},
        {"countNonZero",
         {{},
          [](Image&, json& v) {
              v = {{"count", CImgproc::countNonZero(binary())}};
          }}},
        {"countNonZeroRate",
         {{},
          [](Image&, json& v) {
              v = {{"rate", plain(CImgproc::countNonZeroRate(binary()))}};
          }}},
        {"getSharpness",
         {{},
          [](Image&, json& v) {
              v = {{"sharpness", plain(CImgproc::getSharpness(colour()))}};
          }}},
        {"getSharpness mask",
         {{"--mask", "MASK"},
          [](Image&, json& v) {
              v = {{"sharpness", plain(CImgproc::getSharpness(gray(), half()))}};
          }}},
    };
    Calls thresholds = {
        {"otsu",
         {{},
          [](Image&, json& v) {
              v = {{"threshold", CImgproc::otsu(gray())}};
          }}},
        {"otsu mask",
         {{"--mask", "MASK"},
          [](Image&, json& v) {
              v = {{"threshold", CImgproc::otsu(gray(), half())}};
          }}},
        {"thresholdSeg",
         {{"--threshold", "99"}, [](Image& out, json&) { CImgproc::thresholdSeg(gray(), out, 99); }}},
        {"threshold",
         {{},
          [](Image& out, json& v) {
              v = {{"threshold", CImgproc::threshold(gray(), out, 0, 255, 8, Image())}};
          }}},
        {"threshold inverse",
         {{"--type", "9", "--mask", "MASK"},
          [](Image& out, json& v) {
              out.mat_create(gray().rows, gray().cols, 1, 0);
              v = {{"threshold", CImgproc::threshold(gray(), out, 0, 255, 9, half())}};
          }}},
        {"adaptiveThreshold",
         {{"--block-size", "15", "--std-ratio", "-0.2", "--inverse"},
          [](Image& out, json&) { CImgproc::adaptiveThreshold(gray(), out, 15, -0.2, true); }}},
        {"adaptiveThreshold plain",
         {{"--block-size", "31"},
          [](Image& out, json&) { CImgproc::adaptiveThreshold(gray(), out, 31, 0, false); }}},
        {"saliencyDetect",
         {{"--mask", "MASK"},
          [](Image& out, json& v) {
              orvex_991::vector<unsigned char> levels;
              CImgproc::saliencyDetect(gray(), out, half(), levels);
              v = {{"level_saliency", plain(levels)}};
          }}},
    };
    const Names turned = {"--size", "320x240", "--n", "3"};
    const Names point = {"--point", "7,-9"};
    const Names area = {"--rect", "1,2,30,40"};
    const auto with = [](Names first, const Names& second) {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    };
    const Size kTurned(320, 240);
    Calls turns = {
        {"rot90ClockWise",
         {{"--n", "3"}, [](Image& out, json&) { CImgproc::rot90ClockWise(colour(), out, 3); }}},
        {"rot90AntiClockWise",
         {{}, [](Image& out, json&) { CImgproc::rot90AntiClockWise(colour(), out, 1); }}},
        {"flipLR", {{}, [](Image& out, json&) { CImgproc::flipLR(colour(), out); }}},
        {"rot90ClockWise_FlipLR",
         {{"--n", "-2", "--f", "3"},
          [](Image& out, json&) { CImgproc::rot90ClockWise_FlipLR(colour(), out, -2, 3); }}},
        {"rot90ClockWise-point",
         {with(turned, point),
          [=](Image&, json& v) {
              v = {{"point", plain(CImgproc::rot90ClockWise(Point(7, -9), kTurned, 3))}};
          }}},
        {"rot90AntiClockWise-point",
         {with(turned, point),
          [=](Image&, json& v) {
              v = {{"point", plain(CImgproc::rot90AntiClockWise(Point(7, -9), kTurned, 3))}};
          }}},
        {"rot90ClockWise-rect",
         {with(turned, area),
          [=](Image&, json& v) {
              v = {{"rect", plain(CImgproc::rot90ClockWise(Rect(1, 2, 30, 40), kTurned, 3))}};
          }}},
        {"rot90AntiClockWise-rect",
         {with(turned, area),
          [=](Image&, json& v) {
              v = {{"rect", plain(CImgproc::rot90AntiClockWise(Rect(1, 2, 30, 40), kTurned, 3))}};
          }}},
    };
    Calls geometry = {
        {"resize",
         {{"--out-size", "123x77"},
          [](Image& out, json&) { CImgproc::resize(colour(), out, Size(123, 77), INTERP_LINEAR); }}},
        {"resize-scale",
         {{"--scale", "1.37"},
          [](Image& out, json&) { CImgproc::resize(colour(), out, 1.37f, INTERP_LINEAR); }}},
        {"getRotationMatrix2D",
         {{"--center", "10.5,-3", "--angle", "-7.25", "--scale", "2"},
          [](Image&, json& v) {
              const Mat<float> matrix = CImgproc::getRotationMatrix2D(Point32f(10.5f, -3), -7.25f, 2);
              json list = json::array();
              for (int k = 0; k < 6; ++k) list.push_back(plain(matrix.data[k]));
              v = {{"matrix", list}};
          }}},
        {"warpAffine",
         {{"--matrix", kMatrixText},
          [](Image& out, json&) {
              CImgproc::warpAffine(colour(), out, kMatrix, Size(colour().cols, colour().rows), INTERP_LINEAR,
                                   nullptr);
          }}},
        {"warpAffine interpolated",
         {{"--matrix", kMatrixText, "--out-size", "50x60", "--interpolated"},
          [](Image& out, json&) {
              Image warped;
              out.mat_create(60, 50, 1, 0);
              CImgproc::warpAffine(colour(), warped, kMatrix, Size(50, 60), INTERP_LINEAR, &out);
          }}},
        {"pointAffine",
         {with(point, {"--matrix", kMatrixText, "--scale", "1.5", "--origin", "3,4"}),
          [](Image&, json& v) {
              v = {{"point", plain(CImgproc::pointAffine(Point(7, -9), kMatrix, 1.5f, Point(3, 4)))}};
          }}},
        {"rectAffine",
         {with(area, {"--matrix", kMatrixText}),
          [](Image&, json& v) {
              v = {{"rect", plain(CImgproc::rectAffine(Rect(1, 2, 30, 40), kMatrix))}};
          }}},
        {"checkRectInMat",
         {with(area, {"--size", "20x10"}),
          [](Image&, json& v) {
              v = {{"rect", plain(CImgproc::checkRectInMat(Size(20, 10), Rect(1, 2, 30, 40)))}};
          }}},
        {"calcLineDegree",
         {{"--p1", "0,0", "--p2", "2.5,-1"},
          [](Image&, json& v) {
              v = {{"degrees", plain(CImgproc::calcLineDegree(Point32f(0, 0), Point32f(2.5f, -1)))}};
          }}},
        {"dilateRect",
         {with(area, {"--size", "2x3"}),
          [](Image&, json& v) {
              Rect grown;
              CImgproc::dilateRect(Rect(1, 2, 30, 40), grown, Size(2, 3));
              v = {{"rect", plain(grown)}};
          }}},
    };
    Calls windows = {
        {"dilateBinary",
         {kWindow, [](Image& out, json&) { CImgproc::dilateBinary(binary(), out, kWindowSize); }}},
        {"erodeBinary",
         {kWindow, [](Image& out, json&) { CImgproc::erodeBinary(binary(), out, kWindowSize); }}},
        {"openBinary",
         {kWindow, [](Image& out, json&) { CImgproc::openBinary(binary(), out, kWindowSize); }}},
        {"closeBinary",
         {kWindow, [](Image& out, json&) { CImgproc::closeBinary(binary(), out, kWindowSize); }}},
        {"morphologyBinary",
         {with(kWindow, {"--type", "close"}),
          [](Image& out, json&) { CImgproc::closeBinary(binary(), out, kWindowSize); }}},
        {"dilateGray", {kWindow, [](Image& out, json&) { CImgproc::dilateGray(gray(), out, kWindowSize); }}},
        {"erodeGray", {kWindow, [](Image& out, json&) { CImgproc::erodeGray(gray(), out, kWindowSize); }}},
        {"morphGradient",
         {kWindow, [](Image& out, json&) { CImgproc::morphGradient(gray(), out, kWindowSize); }}},
    };
    Calls components = {
        {"bwlabel",
         {{"--labels"},
          [](Image&, json& v) {
              Mat<int> labels;
              int count = 0;
              CImgproc::bwlabel(binary(), labels, count);
              json rows = json::array();
              for (int row = 0; row < labels.rows; ++row) {
                  const int* line = labels.data + static_cast<ptrdiff_t>(row) * labels.cols;
                  rows.push_back(std::vector<int>(line, line + labels.cols));
              }
              v = {{"num", count}, {"labels", rows}};
          }}},
        {"connectdComponent",
         {{},
          [](Image&, json& v) {
              orvex_991::vector<Rect> rects;
              CImgproc::connectdComponent(binary(), rects, nullptr);
              v = {{"rects", plain(rects)}};
          }}},
        {"connectdComponent points",
         {{"--points"},
          [](Image&, json& v) {
              orvex_991::vector<Rect> rects;
              orvex_991::vector<orvex_991::vector<Point>> points;
              CImgproc::connectdComponent(binary(), rects, &points);
              v = {{"rects", plain(rects)}, {"points", plain(points)}};
          }}},
        {"divideComponentsToRows",
         {{},
          [](Image&, json& v) {
              orvex_991::vector<Rect> rects;
              orvex_991::vector<orvex_991::vector<Rect>> groups;
              CImgproc::connectdComponent(binary(), rects, nullptr);
              CImgproc::divideComponentsToRows(rects, groups);
              v = {{"row_groups", plain(groups)}};
          }}},
        {"convexHull",
         {{},
          [](Image&, json& v) {
              orvex_991::vector<Point> points, hull;
              for (int row = 0; row < binary().rows; ++row)
                  for (int col = 0; col < binary().cols; ++col)
                      if (binary().at(row, col) != 0) points.push_back(Point(col, row));
              CImgproc::convexHull(points, hull);
              v = {{"hull", plain(hull)}};
          }}},
        {"minAreaRect",
         {{},
          [](Image&, json& v) {
              const RotatedRect least = CImgproc::minAreaRect(binary());
              v = {{"pts", plain(least.pts)},
                   {"center", plain(least.center)},
                   {"width", least.width},
                   {"height", least.height},
                   {"angle", plain(least.angle)}};
          }}},
        {"getRotatedRectAngle",
         {{},
          [](Image&, json& v) {
              v = {{"angle", plain(CImgproc::getRotatedRectAngle(CImgproc::minAreaRect(binary())))}};
          }}},
    };
    Calls all = std::move(colours);
    for (Calls* calls : {&statistics, &thresholds, &turns, &geometry, &windows, &components})
        all.merge(*calls);
    return all;
}

/// The files that operations read.
class Pictures {
 public:
    Pictures()
        : colour_(folder_.write("colour.png", docprep::encode_png(colour()))),
          binary_(folder_.write("binary.png", docprep::encode_png(binary()))),
          mask_(folder_.write("mask.png", docprep::encode_png(half()))) {}

    /// "op NAME IN OUT ARGUMENT...", as far as the operation has them.
    Names command_line(const Operation& operation, Names arguments) const {
        Names all = {"op", operation.name};
        if (operation.operand == Operand::kFrame)
            all.push_back(kFrame);
        else if (operation.operand != Operand::kNone)
            all.push_back(operation.operand == Operand::kBinary ? binary_ : colour_);
        if (operation.makes_picture) all.push_back(output());
        for (std::string& argument : arguments) all.push_back(argument == "MASK" ? mask_ : argument);
        return all;
    }

    std::string output() const { return folder_.path("out.png"); }
    const TemporaryFolder& folder() const { return folder_; }
    const std::string& colour_file() const { return colour_; }

 private:
    TemporaryFolder folder_;
    std::string colour_, binary_, mask_;
};

/// The values in a summary; an empty object when it has none.
json values_in(const std::string& summary) {
    const std::string name = "\nvalues        ";
    const size_t at = summary.find(name);
    if (at == std::string::npos) return json::object();
    const size_t begin = at + name.size();
    return json::parse(summary.substr(begin, summary.find('\n', begin) - begin));
}

}  // namespace

TEST(op_command, every_operation_gives_what_a_direct_call_gives) {
    const Pictures pictures;
    for (const auto& [mark, direct] : direct_calls()) {
        SCOPED_TRACE(mark);
        const Operation* operation = docprep::find_operation(mark.substr(0, mark.find(' ')));
        ASSERT_NE(nullptr, operation);
        Image picture;
        json values = json::object();
        direct.call(picture, values);
        const Outcome outcome = docprep_with(pictures.command_line(*operation, direct.arguments));
        ASSERT_EQ(0, outcome.exit_code) << outcome.err;
        EXPECT_EQ("", outcome.err);
        if (operation->makes_picture) {
            expect_same_pixels(picture, docprep::read_photo(pictures.output()).pixels);
            EXPECT_EQ(values, values_in(outcome.out));
            std::filesystem::remove(pictures.output());
        } else {
            expect_one_line(outcome.out);
            EXPECT_EQ(values, json::parse(outcome.out));
        }
    }
}

TEST(op_command, no_operation_is_left_out_of_these_tests) {
    std::map<std::string, int> tried;
    for (const auto& [mark, direct] : direct_calls()) ++tried[mark.substr(0, mark.find(' '))];
    for (const Operation& operation : docprep::operations())
        EXPECT_GT(tried[operation.name], 0) << operation.name;
}

TEST(op_command, saliency_is_over_the_whole_picture_without_a_mask) {
    const Pictures pictures;
    Image everywhere, saliency;
    everywhere.mat_create(gray().rows, gray().cols, 1, 255);
    orvex_991::vector<unsigned char> levels;
    CImgproc::saliencyDetect(gray(), saliency, everywhere, levels);
    EXPECT_EQ(0, docprep_with({"op", "saliencyDetect", pictures.colour_file(), pictures.output()}).exit_code);
    expect_same_pixels(saliency, docprep::read_photo(pictures.output()).pixels);
}

TEST(op_command, a_black_and_white_picture_in_colour_keeps_its_255) {
    const TemporaryFolder folder;
    PngRequest request;
    request.colour_type = 2;
    const std::string path =
        folder.write("p.png", make_png(request, [](int row, int, int) { return row == 0 ? 255 : 0; }));
    // Only exactly 255 counts at the first pixel.
    EXPECT_EQ("{\"num\":1}\n", docprep_with({"op", "bwlabel", path}).out);
    EXPECT_EQ("{\"count\":7}\n", docprep_with({"op", "countNonZero", path}).out);
}

TEST(op_command, the_output_may_be_named_as_an_option) {
    const Pictures pictures;
    EXPECT_EQ(0, docprep_with({"op", "flipLR", pictures.colour_file(), "-o", pictures.output()}).exit_code);
    Image mirrored;
    CImgproc::flipLR(colour(), mirrored);
    expect_same_pixels(mirrored, docprep::read_photo(pictures.output()).pixels);
}

TEST(op_command, the_library_s_lines_are_shown_on_request) {
    const Pictures pictures;
    for (const Names& arguments : std::vector<Names>{
             {"op", "thresholdSeg", pictures.colour_file(), pictures.output(), "--threshold", "7"},
             {"op", "bwlabel", pictures.colour_file()}}) {
        const Outcome quiet = docprep_with(arguments);
        EXPECT_EQ("", quiet.err);
        EXPECT_EQ(std::string::npos, quiet.out.find("cost time"));
        Names more = arguments;
        more.push_back("--verbose");
        const Outcome shown = docprep_with(more);
        EXPECT_NE(std::string::npos, shown.err.find("cost time")) << shown.err;
        EXPECT_EQ(std::string::npos, shown.out.find("cost time"));
    }
}

TEST(op_command, wrong_parameters_are_one_line_and_exit_code_64) {
    const std::string usage = "(docprep op thresholdSeg --help shows the usage)";
    const Names command = {"op", "thresholdSeg", "in.png", "out.png"};
    const auto with = [&](const Names& arguments) {
        Names all = command;
        all.insert(all.end(), arguments.begin(), arguments.end());
        return all;
    };
    expect_wrong_usage(with({"--threshold", "256"}),
                       "--threshold: '256' is not a whole number, 0 .. 255 " + usage);
    expect_wrong_usage(with({"--threshold", "7.5"}), "is not a whole number");
    expect_wrong_usage(with({}), "--threshold is required " + usage);
    expect_wrong_usage(with({"--threshhold", "7"}), "did you mean '--threshold'?");
    expect_wrong_usage(with({"--threshold", "7", "third.png"}), "third.png");
    expect_wrong_usage({"op", "resize", "in.png", "out.png", "--out-size", "7"}, "'7' is not WxH");
    expect_wrong_usage({"op", "warpAffine", "in.png", "out.png", "--matrix", "1,2"},
                       "'1,2' is not a,b,c,d,e,f");
    expect_wrong_usage({"op", "calcLineDegree", "--p1", "1", "--p2", "2,3"}, "'1' is not x,y");
    expect_wrong_usage({"op", "morphologyBinary", "in.png", "out.png", "--size", "3x3", "--type", "opne"},
                       "--type: 'opne' is not one of dilate, erode, open, close");
    expect_wrong_usage({"op", "flipLR", "in.png"}, "--output is required");
    expect_wrong_usage({"op", "otsu"}, "photo is required");
    expect_wrong_usage({"op", "otsu", "in.png", "out.png"}, "out.png");
    expect_wrong_usage({"op", "yuv2bgr", "frame.nv21", "out.png"}, "--nv21 is required");
}

TEST(op_command, an_unknown_operation_is_met_with_the_one_that_was_meant) {
    expect_wrong_usage({"op"}, "An operation's name is required (docprep op --help shows the usage)");
    expect_wrong_usage({"op", "otso", "in.png"},
                       "'otso' is not an operation; docprep list shows them; did you mean 'otsu'? (");
    expect_wrong_usage({"op", "gaussianBlur", "in.png"}, "'gaussianBlur' is not an operation");
    expect_wrong_usage({"op", "in.png", "otsu"});
}

TEST(op_command, what_the_library_refuses_is_one_line_and_leaves_nothing) {
    const Pictures pictures;
    const std::string& in = pictures.colour_file();
    const Names before = pictures.folder().content();
    for (const Names& arguments :
         std::vector<Names>{{"dilateGray", in, pictures.output(), "--size", "9999x1"},
                            {"threshold", in, pictures.output(), "--type", "0"},
                            {"resize", in, pictures.output(), "--out-size", "100000x100000"},
                            {"resize-scale", in, pictures.output(), "--scale", "1e30"},
                            {"resize-scale", in, pictures.output(), "--scale", "1e-30"},
                            {"otsu", "no.png"},
                            {"otsu", in, "--mask", "no.png"},
                            {"flipLR", in, in}}) {
        SCOPED_TRACE(arguments[0]);
        Names all = {"op"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Outcome outcome = docprep_with(all);
        EXPECT_EQ(2, outcome.exit_code);
        EXPECT_EQ("", outcome.out);
        expect_one_line(outcome.err);
        EXPECT_EQ(before, pictures.folder().content());
    }
}

TEST(op_command, a_failed_check_of_the_library_can_be_shown) {
    const Pictures pictures;
    Names arguments = {"op", "dilateGray", pictures.colour_file(), pictures.output(), "--size", "9999x1"};
    expect_failure(docprep_with(arguments), pictures.colour_file(),
                   "library error 1 (an input check failed; --verbose shows which)");
    arguments.push_back("--verbose");
    const Outcome outcome = docprep_with(arguments);
    EXPECT_NE(std::string::npos, outcome.err.find("src.cols >= size.width")) << outcome.err;
}

TEST(op_command, numbers_that_standard_output_does_not_take_are_a_failure) {
    const Outcome outcome =
        docprep_after("", {"op", "calcLineDegree", "--p1", "0,0", "--p2", "1,1"}, ">/dev/full");
    expect_failure(outcome, "standard output", "No space left on device");
}

TEST(op_command, help_lists_operations_and_tells_about_each) {
    const Outcome all = docprep_with({"op", "--help"});
    EXPECT_EQ(0, all.exit_code);
    for (const Operation& operation : docprep::operations()) {
        EXPECT_NE(std::string::npos, all.out.find("\n  " + operation.name + " ")) << operation.name;
        const Outcome help = docprep_with({"op", operation.name, "--help"});
        EXPECT_EQ(0, help.exit_code);
        EXPECT_NE(std::string::npos, help.out.find("Usage: docprep op " + operation.name)) << help.out;
        for (const docprep::Parameter& parameter : operation.parameters)
            EXPECT_NE(std::string::npos, help.out.find("--" + parameter.name)) << help.out;
    }
}
