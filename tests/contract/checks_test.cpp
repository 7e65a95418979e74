// One table: operation, bad input, the text and function that the warning names, the code that arrives.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "capture.h"
#include "images.h"

namespace testing_support {
namespace {

using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

struct Check {
    const char* operation;
    std::function<void()> run;
    const char* text;
    const char* function;
    const char* file = "cv_imgproc.cpp";
    int code = 1;
};

const U8 empty_rows = filled(0, 3, 1, 0);
const U8 empty_cols = filled(3, 0, 1, 0);
const U8 gray = filled(3, 4, 1, 9);
const U8 colour = filled(3, 4, 3, 9);

U8 out;
Mat<int> labels;
vector<Rect> rects;
vector<unsigned char> levels;
vector<float> shares;
int num;

constexpr orvex_cv_991::INTERP_TYPE kLinear = orvex_cv_991::INTERP_LINEAR;

Mat<float> matrix(int rows, int cols) {
    Mat<float> m;
    m.mat_create(rows, cols, 1, 0);
    return m;
}

void warp(const U8& src, const Mat<float>& trans_matrix) {
    CImgproc::warpAffine(src, out, trans_matrix, Size(2, 2), kLinear, nullptr);
}

const std::vector<Check>& checks() {
    static const std::vector<Check> table = {
        {"otsu", [] { CImgproc::otsu(colour); }, "1 == src.channels", "otsu"},
        {"otsu masked", [] { CImgproc::otsu(colour, gray); }, "1 == src.channels", "otsu"},
        {"otsu masked", [] { CImgproc::otsu(gray, empty_rows); }, "src.rows == mask.rows", "otsu"},
        {"otsu masked", [] { CImgproc::otsu(gray, empty_cols); }, "src.cols == mask.cols", "otsu"},
        {"thresholdSeg", [] { CImgproc::thresholdSeg(empty_rows, out, 5); }, "!src.empty()", "thresholdSeg"},
        {"thresholdSeg", [] { CImgproc::thresholdSeg(empty_cols, out, 5); }, "!src.empty()", "thresholdSeg"},
        {"thresholdSeg", [] { CImgproc::thresholdSeg(colour, out, -1); }, "1 == src.channels",
         "thresholdSeg"},
        {"thresholdSeg", [] { CImgproc::thresholdSeg(gray, out, -1); }, "threshold >= 0 && threshold < 256",
         "thresholdSeg"},
        {"thresholdSeg", [] { CImgproc::thresholdSeg(gray, out, 256); }, "threshold >= 0 && threshold < 256",
         "thresholdSeg"},
        {"threshold", [] { CImgproc::threshold(colour, out, 0, 255, 8, U8()); }, "1 == src.channels", "otsu"},
        {"threshold", [] { CImgproc::threshold(empty_rows, out, 0, 255, 8, U8()); }, "!src.empty()",
         "thresholdSeg"},
        {"bwlabel", [] { CImgproc::bwlabel(empty_rows, labels, num); }, "!src.empty()", "bwlabel"},
        {"bwlabel", [] { CImgproc::bwlabel(empty_cols, labels, num); }, "!src.empty()", "bwlabel"},
        {"bwlabel", [] { CImgproc::bwlabel(colour, labels, num); }, "1 == src.channels", "bwlabel"},
        {"connectdComponent", [] { CImgproc::connectdComponent(empty_rows, rects, nullptr); }, "!src.empty()",
         "connectdComponent"},
        {"connectdComponent", [] { CImgproc::connectdComponent(colour, rects, nullptr); },
         "1 == src.channels", "bwlabel", "cv_imgproc.cpp", 2},
        {"resize", [] { CImgproc::resize(empty_rows, out, Size(0, 0), kLinear); }, "!src.empty()", "resize"},
        {"resize", [] { CImgproc::resize(gray, out, Size(0, 0), kLinear); }, "out_size.width > 0", "resize"},
        {"resize", [] { CImgproc::resize(gray, out, Size(1, -1), kLinear); }, "out_size.height > 0",
         "resize"},
        {"resize by", [] { CImgproc::resize(empty_cols, out, 0.f, kLinear); }, "!src.empty()", "resize"},
        {"resize by", [] { CImgproc::resize(gray, out, 0.f, kLinear); }, "scale > 0.f", "resize"},
        {"resize by", [] { CImgproc::resize(gray, out, 0.2f, kLinear); }, "src.rows * scale >= 1", "resize"},
        {"resize by", [] { CImgproc::resize(filled(9, 4, 1, 0), out, 0.2f, kLinear); },
         "src.cols * scale >= 1", "resize"},
        {"getRotationMatrix2D", [] { CImgproc::getRotationMatrix2D(Point32f(), 1, 0); }, "scale > 0",
         "getRotationMatrix2D"},
        {"warpAffine", [] { warp(empty_rows, Mat<float>()); }, "!src.empty()", "warpAffine"},
        {"warpAffine", [] { warp(gray, Mat<float>()); }, "!trans_matrix.empty()", "warpAffine"},
        {"warpAffine", [] { warp(gray, matrix(3, 2)); }, "2 == trans_matrix.rows", "warpAffine"},
        {"warpAffine", [] { warp(gray, matrix(2, 2)); }, "3 == trans_matrix.cols", "warpAffine"},
        {"pointAffine", [] { CImgproc::pointAffine(Point(), matrix(3, 2), 1, Point()); },
         "trans_mat.rows == 2 && trans_mat.cols == 3", "pointAffine"},
        {"rectAffine", [] { CImgproc::rectAffine(Rect(), matrix(2, 2)); },
         "trans_mat.rows == 2 && trans_mat.cols == 3", "pointAffine"},
        {"dilateBinary", [] { CImgproc::dilateBinary(empty_rows, out, Size()); }, "!src.empty()",
         "dilateBinary"},
        {"dilateBinary", [] { CImgproc::dilateBinary(gray, out, Size(0, 0)); }, "size.width > 0",
         "dilateBinary"},
        {"dilateBinary", [] { CImgproc::dilateBinary(gray, out, Size(9, 0)); }, "size.height > 0",
         "dilateBinary"},
        {"dilateBinary", [] { CImgproc::dilateBinary(gray, out, Size(5, 4)); }, "src.rows >= size.height",
         "dilateBinary"},
        {"dilateBinary", [] { CImgproc::dilateBinary(gray, out, Size(5, 3)); }, "src.cols >= size.width",
         "dilateBinary"},
        {"erodeBinary", [] { CImgproc::erodeBinary(empty_cols, out, Size()); }, "!src.empty()",
         "erodeBinary"},
        {"erodeBinary", [] { CImgproc::erodeBinary(colour, out, Size()); }, "1 == src.channels",
         "erodeBinary"},
        {"erodeBinary", [] { CImgproc::erodeBinary(gray, out, Size(0, 0)); }, "size.width > 0",
         "erodeBinary"},
        {"erodeBinary", [] { CImgproc::erodeBinary(gray, out, Size(9, 0)); }, "size.height > 0",
         "erodeBinary"},
        {"erodeBinary", [] { CImgproc::erodeBinary(gray, out, Size(5, 4)); }, "src.rows >= size.height",
         "erodeBinary"},
        {"erodeBinary", [] { CImgproc::erodeBinary(gray, out, Size(5, 3)); }, "src.cols >= size.width",
         "erodeBinary"},
        {"openBinary", [] { CImgproc::openBinary(colour, out, Size(1, 1)); }, "1 == src.channels",
         "erodeBinary"},
        {"closeBinary", [] { CImgproc::closeBinary(gray, out, Size(5, 3)); }, "src.cols >= size.width",
         "dilateBinary"},
        {"morphologyBinary",
         [] { CImgproc::morphologyBinary(empty_rows, out, Size(), orvex_cv_991::MORPH_OPEN); },
         "!src.empty()", "morphologyBinary"},
        {"morphologyBinary",
         [] { CImgproc::morphologyBinary(colour, out, Size(), orvex_cv_991::MORPH_OPEN); },
         "1 == src.channels", "morphologyBinary"},
        {"saliencyDetect", [] { CImgproc::saliencyDetect(empty_rows, out, empty_rows, levels); },
         "!src.empty()", "saliencyDetect"},
        {"saliencyDetect", [] { CImgproc::saliencyDetect(gray, out, empty_rows, levels); }, "!mask.empty()",
         "saliencyDetect"},
        {"redColorDetect", [] { CImgproc::redColorDetect(empty_rows, out, true); }, "!src.empty()",
         "redColorDetect"},
        {"redColorDetect", [] { CImgproc::redColorDetect(gray, out, true); }, "3 == src.channels",
         "redColorDetect"},
        {"equalizeHist", [] { CImgproc::equalizeHist(empty_rows, out); }, "!src.empty()", "equalizeHist"},
        {"equalizeHist", [] { CImgproc::equalizeHist(colour, out); }, "1 == src.channels", "equalizeHist"},
        {"hist", [] { CImgproc::hist(empty_rows, shares); }, "!src.empty()", "hist"},
        {"hist", [] { CImgproc::hist(colour, shares); }, "1 == src.channels", "hist"},
        {"minVal", [] { CImgproc::minVal(empty_cols); }, "!src.empty()", "minVal"},
        {"minVal", [] { CImgproc::minVal(colour); }, "1 == src.channels", "minVal"},
        {"maxVal", [] { CImgproc::maxVal(empty_cols); }, "!src.empty()", "maxVal"},
        {"maxVal", [] { CImgproc::maxVal(colour); }, "1 == src.channels", "maxVal"},
        {"adaptiveThreshold", [] { CImgproc::adaptiveThreshold(empty_cols, out, 3, 0, false); },
         "!src.empty()", "adaptiveThreshold"},
        {"adaptiveThreshold", [] { CImgproc::adaptiveThreshold(colour, out, 3, 0, false); },
         "1 == src.channels", "adaptiveThreshold"},
        {"rot90ClockWise", [] { CImgproc::rot90ClockWise(Rect(0, 0, 5, 9), Size(4, 3), 1); },
         "img_size.width >= src.x + src.width", "rot90ClockWise"},
        {"rot90AntiClockWise", [] { CImgproc::rot90AntiClockWise(Rect(0, 1, 4, 3), Size(4, 3), 1); },
         "img_size.height >= src.y + src.height", "rot90ClockWise"},
        {"dilateGray", [] { CImgproc::dilateGray(empty_cols, out, Size()); }, "!src.empty()", "dilateGray"},
        {"dilateGray", [] { CImgproc::dilateGray(colour, out, Size()); }, "1 == src.channels", "dilateGray"},
        {"dilateGray", [] { CImgproc::dilateGray(gray, out, Size(0, 0)); }, "size.width > 0", "dilateGray"},
        {"dilateGray", [] { CImgproc::dilateGray(gray, out, Size(9, 0)); }, "size.height > 0", "dilateGray"},
        {"dilateGray", [] { CImgproc::dilateGray(gray, out, Size(5, 4)); }, "src.rows >= size.height",
         "dilateGray"},
        {"dilateGray", [] { CImgproc::dilateGray(gray, out, Size(5, 3)); }, "src.cols >= size.width",
         "dilateGray"},
        {"erodeGray", [] { CImgproc::erodeGray(empty_cols, out, Size()); }, "!src.empty()", "erodeGray"},
        {"erodeGray", [] { CImgproc::erodeGray(colour, out, Size()); }, "1 == src.channels", "erodeGray"},
        {"erodeGray", [] { CImgproc::erodeGray(gray, out, Size(0, 0)); }, "size.width > 0", "erodeGray"},
        {"erodeGray", [] { CImgproc::erodeGray(gray, out, Size(9, 0)); }, "size.height > 0", "erodeGray"},
        {"erodeGray", [] { CImgproc::erodeGray(gray, out, Size(5, 4)); }, "src.rows >= size.height",
         "erodeGray"},
        {"erodeGray", [] { CImgproc::erodeGray(gray, out, Size(5, 3)); }, "src.cols >= size.width",
         "erodeGray"},
        {"morphGradient", [] { CImgproc::morphGradient(empty_cols, out, Size()); }, "!src.empty()",
         "morphGradient"},
        {"morphGradient", [] { CImgproc::morphGradient(colour, out, Size()); }, "1 == src.channels",
         "morphGradient"},
        {"minAreaRect", [] { CImgproc::minAreaRect(empty_cols); }, "!mat.empty()", "minAreaRect"},
        {"getRotatedRectAngle", [] { CImgproc::getRotatedRectAngle(orvex_cv_991::RotatedRect()); },
         "4 == rotate_rect.pts.size()", "getRotatedRectAngle"},
        {"getSharpness", [] { CImgproc::getSharpness(empty_cols); }, "!src.empty()", "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(filled(2, 2, 2, 0)); },
         "1 == src.channels || 3 == src.channels", "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(empty_cols, gray); }, "!src.empty()", "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(colour, empty_rows); }, "1 == src.channels",
         "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(gray, empty_rows); }, "!mask.empty()", "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(gray, colour); }, "1 == mask.channels", "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(gray, filled(2, 5, 1, 0)); }, "src.rows == mask.rows",
         "getSharpness"},
        {"getSharpness", [] { CImgproc::getSharpness(gray, filled(3, 5, 1, 0)); }, "src.cols == mask.cols",
         "getSharpness"},
        {"Mat::at", [] { gray.at(3, 0); }, "row < rows && col < cols && 1 == channels", "at", "cv_mat.h"},
        {"Mat::at", [] { gray.at(0, 4); }, "row < rows && col < cols && 1 == channels", "at", "cv_mat.h"},
        {"Mat::at", [] { colour.at(0, 0); }, "row < rows && col < cols && 1 == channels", "at", "cv_mat.h"},
        {"Mat fill", [] { colour.clone() = static_cast<unsigned char>(1); }, "1 == channels",
         "operator=", "cv_mat.cpp"},
        {"Mat complement", [] { ~colour.clone(); }, "1 == channels", "operator~", "cv_mat.cpp"},
        {"vector", [] { vector<int> v(-1); }, "size >= 0", "vector", "util_vector.h"},
        {"vector of a value", [] { vector<int> v(-1, 2); }, "size >= 0", "vector", "util_vector.h"},
        {"ForestJoin", [] { orvex_cv_991::ForestJoin forest(-1); }, "size >= 0", "vector", "util_vector.h"},
    };
    return table;
}

TEST(Contract, every_check_prints_its_text_and_throws_its_code) {
    for (const Check& check : checks()) {
        SCOPED_TRACE(std::string(check.operation) + " / " + check.text);
        out = filled(2, 2, 2, 5);
        labels.mat_create(1, 2, 1, 5);
        rects = vector<Rect>(3);
        num = -3;
        const Result result = result_of(check.run);
        EXPECT_EQ(result.code, check.code);
        EXPECT_EQ(result.message, "");
        const std::string file = check.file;
        const std::string& printed = result.printed;
        std::string text = normalised(printed);
        // The one operation that announces itself before it checks.
        const std::string start = "D cv_imgproc.cpp:#] begin to red color detection\n";
        if (std::string(check.operation) == "redColorDetect") {
            ASSERT_EQ(text.compare(0, start.size(), start), 0);
            text.erase(0, start.size());
        }
        EXPECT_EQ(text, "D " + file + ":#] [warn] input error " + check.text +
                            " \n[warn]file: jni/orvex_991/" + file +
                            ", line: #, function: " + check.function + "\n\n");
        // The prefix and the warning name the same line: that of the statement that reports.
        const size_t end = printed.find("] [warn]");
        const size_t line = printed.rfind(':', end) + 1;
        const std::string number = printed.substr(line, end - line);
        EXPECT_NE(printed.find(", line: " + number + ", function"), std::string::npos) << printed;
        EXPECT_GT(std::stoi(number), 0);
        // No output is touched by a failed check, except rects by the one inside the labelling.
        EXPECT_TRUE(out.rows == 2 && out.channels == 2 && out.data[7] == 5);
        EXPECT_TRUE(labels.cols == 2 && labels.data[1] == 5);
        EXPECT_EQ(num, -3);
        EXPECT_EQ(rects.size, check.code == 2 ? 0 : 3);
    }
}

// The warning of each check is another statement, so each names another line.
TEST(Contract, checks_of_one_operation_report_different_lines) {
    std::vector<std::string> lines;
    for (const Check& check : checks()) {
        if (std::string(check.operation) != "thresholdSeg") continue;
        const std::string printed = result_of(check.run).printed;
        lines.push_back(printed.substr(0, printed.find(']')));
    }
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], lines[1]);
    EXPECT_NE(lines[1], lines[2]);
    EXPECT_NE(lines[2], lines[3]);
    EXPECT_EQ(lines[3], lines[4]);
}

}  // namespace
}  // namespace testing_support
