// One table: the bad inputs of every operation, what the warning shows and names, the code that arrives.
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
    std::function<void()> run;
    const char* text;
    const char* reported_by = nullptr;  // where the warning names another function
    int code = 1;
};

struct Operation {
    const char* function;
    std::vector<Check> checks;
    const char* file = "cv_imgproc.cpp";
    const char* announcement = nullptr;  // printed before anything is checked
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

const std::vector<Operation>& operations() {
    static const std::vector<Operation> table = {
        {"otsu",
         {
             {[] { CImgproc::otsu(colour); }, "1 == src.channels"},
             {[] { CImgproc::otsu(colour, gray); }, "1 == src.channels"},
             {[] { CImgproc::otsu(gray, empty_rows); }, "src.rows == mask.rows"},
             {[] { CImgproc::otsu(gray, empty_cols); }, "src.cols == mask.cols"},
         }},
        {"thresholdSeg",
         {
             {[] { CImgproc::thresholdSeg(empty_rows, out, 5); }, "!src.empty()"},
             {[] { CImgproc::thresholdSeg(empty_cols, out, 5); }, "!src.empty()"},
             {[] { CImgproc::thresholdSeg(colour, out, -1); }, "1 == src.channels"},
             {[] { CImgproc::thresholdSeg(gray, out, -1); }, "threshold >= 0 && threshold < 256"},
             {[] { CImgproc::thresholdSeg(gray, out, 256); }, "threshold >= 0 && threshold < 256"},
         }},
        {"threshold",
         {
             {[] { CImgproc::threshold(colour, out, 0, 255, 8, U8()); }, "1 == src.channels", "otsu"},
             {[] { CImgproc::threshold(empty_rows, out, 0, 255, 8, U8()); }, "!src.empty()", "thresholdSeg"},
         }},
        {"bwlabel",
         {
             {[] { CImgproc::bwlabel(empty_rows, labels, num); }, "!src.empty()"},
             {[] { CImgproc::bwlabel(empty_cols, labels, num); }, "!src.empty()"},
             {[] { CImgproc::bwlabel(colour, labels, num); }, "1 == src.channels"},
         }},
        {"connectdComponent",
         {
             {[] { CImgproc::connectdComponent(empty_rows, rects, nullptr); }, "!src.empty()"},
             {[] { CImgproc::connectdComponent(colour, rects, nullptr); }, "1 == src.channels", "bwlabel", 2},
         }},
        {"resize",
         {
             {[] { CImgproc::resize(empty_rows, out, Size(0, 0), kLinear); }, "!src.empty()"},
             {[] { CImgproc::resize(gray, out, Size(0, 0), kLinear); }, "out_size.width > 0"},
             {[] { CImgproc::resize(gray, out, Size(1, -1), kLinear); }, "out_size.height > 0"},
             {[] { CImgproc::resize(empty_cols, out, 0.f, kLinear); }, "!src.empty()"},
             {[] { CImgproc::resize(gray, out, 0.f, kLinear); }, "scale > 0.f"},
             {[] { CImgproc::resize(gray, out, 0.2f, kLinear); }, "src.rows * scale >= 1"},
             {[] { CImgproc::resize(filled(9, 4, 1, 0), out, 0.2f, kLinear); }, "src.cols * scale >= 1"},
         }},
        {"getRotationMatrix2D",
         {
             {[] { CImgproc::getRotationMatrix2D(Point32f(), 1, 0); }, "scale > 0"},
         }},
        {"warpAffine",
         {
             {[] { warp(empty_rows, Mat<float>()); }, "!src.empty()"},
             {[] { warp(gray, Mat<float>()); }, "!trans_matrix.empty()"},
             {[] { warp(gray, matrix(3, 2)); }, "2 == trans_matrix.rows"},
             {[] { warp(gray, matrix(2, 2)); }, "3 == trans_matrix.cols"},
         }},
        {"pointAffine",
         {
             {[] { CImgproc::pointAffine(Point(), matrix(3, 2), 1, Point()); },
              "trans_mat.rows == 2 && trans_mat.cols == 3"},
         }},
        {"rectAffine",
         {
             {[] { CImgproc::rectAffine(Rect(), matrix(2, 2)); },
              "trans_mat.rows == 2 && trans_mat.cols == 3", "pointAffine"},
         }},
        {"dilateBinary",
         {
             {[] { CImgproc::dilateBinary(empty_rows, out, Size()); }, "!src.empty()"},
             {[] { CImgproc::dilateBinary(gray, out, Size(0, 0)); }, "size.width > 0"},
             {[] { CImgproc::dilateBinary(gray, out, Size(9, 0)); }, "size.height > 0"},
             {[] { CImgproc::dilateBinary(gray, out, Size(5, 4)); }, "src.rows >= size.height"},
             {[] { CImgproc::dilateBinary(gray, out, Size(5, 3)); }, "src.cols >= size.width"},
         }},
        {"erodeBinary",
         {
             {[] { CImgproc::erodeBinary(empty_cols, out, Size()); }, "!src.empty()"},
             {[] { CImgproc::erodeBinary(colour, out, Size()); }, "1 == src.channels"},
             {[] { CImgproc::erodeBinary(gray, out, Size(0, 0)); }, "size.width > 0"},
             {[] { CImgproc::erodeBinary(gray, out, Size(9, 0)); }, "size.height > 0"},
             {[] { CImgproc::erodeBinary(gray, out, Size(5, 4)); }, "src.rows >= size.height"},
             {[] { CImgproc::erodeBinary(gray, out, Size(5, 3)); }, "src.cols >= size.width"},
         }},
        {"openBinary",
         {
             {[] { CImgproc::openBinary(colour, out, Size(1, 1)); }, "1 == src.channels", "erodeBinary"},
         }},
        {"closeBinary",
         {
             {[] { CImgproc::closeBinary(gray, out, Size(5, 3)); }, "src.cols >= size.width", "dilateBinary"},
         }},
        {"morphologyBinary",
         {
             {[] { CImgproc::morphologyBinary(empty_rows, out, Size(), orvex_cv_991::MORPH_OPEN); },
              "!src.empty()"},
             {[] { CImgproc::morphologyBinary(colour, out, Size(), orvex_cv_991::MORPH_OPEN); },
              "1 == src.channels"},
         }},
        {"saliencyDetect",
         {
             {[] { CImgproc::saliencyDetect(empty_rows, out, empty_rows, levels); }, "!src.empty()"},
             {[] { CImgproc::saliencyDetect(gray, out, empty_rows, levels); }, "!mask.empty()"},
         }},
        {"redColorDetect",
         {
             {[] { CImgproc::redColorDetect(empty_rows, out, true); }, "!src.empty()"},
             {[] { CImgproc::redColorDetect(gray, out, true); }, "3 == src.channels"},
         },
         "cv_imgproc.cpp",
         "begin to red color detection"},
        {"equalizeHist",
         {
             {[] { CImgproc::equalizeHist(empty_rows, out); }, "!src.empty()"},
             {[] { CImgproc::equalizeHist(colour, out); }, "1 == src.channels"},
         }},
        {"hist",
         {
             {[] { CImgproc::hist(empty_rows, shares); }, "!src.empty()"},
             {[] { CImgproc::hist(colour, shares); }, "1 == src.channels"},
         }},
        {"minVal",
         {
             {[] { CImgproc::minVal(empty_cols); }, "!src.empty()"},
             {[] { CImgproc::minVal(colour); }, "1 == src.channels"},
         }},
        {"maxVal",
         {
             {[] { CImgproc::maxVal(empty_cols); }, "!src.empty()"},
             {[] { CImgproc::maxVal(colour); }, "1 == src.channels"},
         }},
        {"adaptiveThreshold",
         {
             {[] { CImgproc::adaptiveThreshold(empty_cols, out, 3, 0, false); }, "!src.empty()"},
             {[] { CImgproc::adaptiveThreshold(colour, out, 3, 0, false); }, "1 == src.channels"},
         }},
        {"rot90ClockWise",
         {
             {[] { CImgproc::rot90ClockWise(Rect(0, 0, 5, 9), Size(4, 3), 1); },
              "img_size.width >= src.x + src.width"},
         }},
        {"rot90AntiClockWise",
         {
             {[] { CImgproc::rot90AntiClockWise(Rect(0, 1, 4, 3), Size(4, 3), 1); },
              "img_size.height >= src.y + src.height", "rot90ClockWise"},
         }},
        {"dilateGray",
         {
             {[] { CImgproc::dilateGray(empty_cols, out, Size()); }, "!src.empty()"},
             {[] { CImgproc::dilateGray(colour, out, Size()); }, "1 == src.channels"},
             {[] { CImgproc::dilateGray(gray, out, Size(0, 0)); }, "size.width > 0"},
             {[] { CImgproc::dilateGray(gray, out, Size(9, 0)); }, "size.height > 0"},
             {[] { CImgproc::dilateGray(gray, out, Size(5, 4)); }, "src.rows >= size.height"},
             {[] { CImgproc::dilateGray(gray, out, Size(5, 3)); }, "src.cols >= size.width"},
         }},
        {"erodeGray",
         {
             {[] { CImgproc::erodeGray(empty_cols, out, Size()); }, "!src.empty()"},
             {[] { CImgproc::erodeGray(colour, out, Size()); }, "1 == src.channels"},
             {[] { CImgproc::erodeGray(gray, out, Size(0, 0)); }, "size.width > 0"},
             {[] { CImgproc::erodeGray(gray, out, Size(9, 0)); }, "size.height > 0"},
             {[] { CImgproc::erodeGray(gray, out, Size(5, 4)); }, "src.rows >= size.height"},
             {[] { CImgproc::erodeGray(gray, out, Size(5, 3)); }, "src.cols >= size.width"},
         }},
        {"morphGradient",
         {
             {[] { CImgproc::morphGradient(empty_cols, out, Size()); }, "!src.empty()"},
             {[] { CImgproc::morphGradient(colour, out, Size()); }, "1 == src.channels"},
         }},
        {"minAreaRect",
         {
             {[] { CImgproc::minAreaRect(empty_cols); }, "!mat.empty()"},
         }},
        {"getRotatedRectAngle",
         {
             {[] { CImgproc::getRotatedRectAngle(orvex_cv_991::RotatedRect()); },
              "4 == rotate_rect.pts.size()"},
         }},
        {"getSharpness",
         {
             {[] { CImgproc::getSharpness(empty_cols); }, "!src.empty()"},
             {[] { CImgproc::getSharpness(filled(2, 2, 2, 0)); }, "1 == src.channels || 3 == src.channels"},
             {[] { CImgproc::getSharpness(empty_cols, gray); }, "!src.empty()"},
             {[] { CImgproc::getSharpness(colour, empty_rows); }, "1 == src.channels"},
             {[] { CImgproc::getSharpness(gray, empty_rows); }, "!mask.empty()"},
             {[] { CImgproc::getSharpness(gray, colour); }, "1 == mask.channels"},
             {[] { CImgproc::getSharpness(gray, filled(2, 5, 1, 0)); }, "src.rows == mask.rows"},
             {[] { CImgproc::getSharpness(gray, filled(3, 5, 1, 0)); }, "src.cols == mask.cols"},
         }},
        {"at",
         {
             {[] { gray.at(3, 0); }, "row < rows && col < cols && 1 == channels"},
             {[] { gray.at(0, 4); }, "row < rows && col < cols && 1 == channels"},
             {[] { colour.at(0, 0); }, "row < rows && col < cols && 1 == channels"},
         },
         "cv_mat.h"},
        {"operator=",
         {
             {[] { colour.clone() = static_cast<unsigned char>(1); }, "1 == channels"},
         },
         "cv_mat.cpp"},
        {"operator~",
         {
             {[] { ~colour.clone(); }, "1 == channels"},
         },
         "cv_mat.cpp"},
        {"vector",
         {
             {[] { vector<int> v(-1); }, "size >= 0"},
             {[] { vector<int> v(-1, 2); }, "size >= 0"},
         },
         "util_vector.h"},
        {"ForestJoin",
         {
             {[] { orvex_cv_991::ForestJoin forest(-1); }, "size >= 0", "vector"},
         },
         "util_vector.h"},
    };
    return table;
}

void expect_refused(const Operation& operation, const Check& check) {
    out = filled(2, 2, 2, 5);
    labels.mat_create(1, 2, 1, 5);
    rects = vector<Rect>(3);
    num = -3;
    const Result result = result_of(check.run);
    EXPECT_EQ(result.code, check.code);
    EXPECT_EQ(result.message, "");
    const std::string file = operation.file;
    std::string text = normalised(result.printed);
    if (operation.announcement) {
        const std::string start = "D " + file + ":#] " + operation.announcement + "\n";
        ASSERT_EQ(text.compare(0, start.size(), start), 0);
        text.erase(0, start.size());
    }
    EXPECT_EQ(text, "D " + file + ":#] [warn] input error " + check.text + " \n[warn]file: jni/orvex_991/" +
                        file + ", line: #, function: " +
                        (check.reported_by ? check.reported_by : operation.function) + "\n\n");
    // The prefix and the warning name the same line: that of the statement that reports.
    const std::string& printed = result.printed;
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

TEST(Contract, every_check_prints_its_text_and_throws_its_code) {
    for (const Operation& operation : operations()) {
        int row = 0;
        for (const Check& check : operation.checks) {
            SCOPED_TRACE(std::string(operation.function) + ", row " + std::to_string(++row) + ": " +
                         check.text);
            expect_refused(operation, check);
        }
    }
}

// The warning of each check is another statement, so each names another line.
TEST(Contract, checks_of_one_operation_report_different_lines) {
    std::vector<std::string> lines;
    for (const Operation& operation : operations()) {
        if (std::string(operation.function) != "thresholdSeg") continue;
        for (const Check& check : operation.checks) {
            const std::string printed = result_of(check.run).printed;
            lines.push_back(printed.substr(0, printed.find(']')));
        }
    }
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], lines[1]);
    EXPECT_NE(lines[1], lines[2]);
    EXPECT_NE(lines[2], lines[3]);
    EXPECT_EQ(lines[3], lines[4]);
}

}  // namespace
}  // namespace testing_support
