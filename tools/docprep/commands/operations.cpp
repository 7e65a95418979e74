#include "commands/operations.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>

#include "base/drawing.h"
#include "base/geometry_json.h"
#include "commands/morph.h"
#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::MORPH_TYPE;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;

namespace {

// ---- Parameters ----

constexpr Range kAnyInt = {INT_MIN, INT_MAX};
constexpr Range kAnyFloat = {-double{FLT_MAX}, double{FLT_MAX}};
constexpr Range kAboveZero = {double{FLT_TRUE_MIN}, double{FLT_MAX}};

Parameter required(Parameter parameter) {
    parameter.required = true;
    return parameter;
}

Parameter whole(const char* name, const char* unless_given, const char* meaning, Range range = kAnyInt) {
    return {name, ParameterKind::kWhole, meaning, range, {}, false, unless_given};
}

Parameter number(const char* name, const char* unless_given, const char* meaning, Range range = kAnyFloat) {
    return {name, ParameterKind::kNumber, meaning, range, {}, false, unless_given};
}

Parameter extents(const char* name, const char* meaning) {
    return {name, ParameterKind::kExtents, meaning};
}

Parameter point(const char* name, const char* unless_given, const char* meaning) {
    return {name, ParameterKind::kPoint, meaning, kAnyInt, {}, false, unless_given};
}

Parameter place(const char* name, const char* meaning) {
    return {name, ParameterKind::kPlace, meaning, kAnyFloat};
}

Parameter rect(const char* meaning) {
    return required({"rect", ParameterKind::kRect, meaning, kAnyInt});
}

Parameter matrix() {
    return required({"matrix", ParameterKind::kMatrix,
                     "takes (x, y) to (a x + b y + c, d x + e y + f), as the result of getRotationMatrix2D",
                     kAnyFloat});
}

Parameter flag(const char* name, const char* meaning) {
    return {name, ParameterKind::kFlag, meaning};
}

Parameter mask(const char* meaning) {
    return {"mask", ParameterKind::kPicture, meaning};
}

Parameter window() {
    return required(extents("size", "the window, W columns by H rows, no larger than the picture"));
}

Parameter interpolation() {
    return whole("interp", "0", "0 is linear; anything else gives zeros");
}

Parameter turns() {
    return whole("n", "1", "number of quarter turns");
}

Parameter turned_size() {
    return required(extents("size", "of the turned picture"));
}

// ---- Calls ----

INTERP_TYPE interpolation_of(const Arguments& arguments) {
    return static_cast<INTERP_TYPE>(arguments.whole("interp"));
}

template <void (*filter)(const Image&, Image&)>
Result filtered(const Image& picture, const Arguments&) {
    Result result;
    filter(picture, result.picture);
    return result;
}

/// Through a window.
template <void (*filter)(const Image&, Image&, const Size&)>
Result windowed(const Image& picture, const Arguments& arguments) {
    Result result;
    filter(picture, result.picture, arguments.size("size"));
    return result;
}

template <void (*turn)(const Image&, Image&, int)>
Result turned(const Image& picture, const Arguments& arguments) {
    Result result;
    turn(picture, result.picture, arguments.whole("n"));
    return result;
}

template <Point (*turn)(const Point&, const Size&, int)>
Result turned_point(const Image&, const Arguments& arguments) {
    const Point point = turn(arguments.point("point"), arguments.size("size"), arguments.whole("n"));
    return {{}, {{"point", as_json(point)}}};
}

template <Rect (*turn)(const Rect&, const Size&, int)>
Result turned_rect(const Image&, const Arguments& arguments) {
    const Rect rect = turn(arguments.rect("rect"), arguments.size("size"), arguments.whole("n"));
    return {{}, {{"rect", as_json(rect)}}};
}

template <unsigned char (*value)(const Image&)>
Result level(const Image& picture, const Arguments&) {
    return {{}, {{"level", int{value(picture)}}}};
}

Result frame(const Image& picture, const Arguments&) {
    return {picture};  // reading a frame is the conversion
}

Result hist(const Image& picture, const Arguments&) {
    orvex_991::vector<float> shares;
    CImgproc::hist(picture, shares);
    return {{}, {{"hist", as_json(shares)}}};
}

Result mean_std_dev(const Image& picture, const Arguments&) {
    float mean = 0;
    float deviation = 0;
    CImgproc::meanStdDev(picture, mean, deviation);
    return {{}, {{"mean", as_json(mean)}, {"stddev", as_json(deviation)}}};
}

Result count_non_zero(const Image& picture, const Arguments&) {
    return {{}, {{"count", CImgproc::countNonZero(picture)}}};
}

Result count_non_zero_rate(const Image& picture, const Arguments&) {
    return {{}, {{"rate", as_json(CImgproc::countNonZeroRate(picture))}}};
}

Result otsu(const Image& picture, const Arguments& arguments) {
    const int threshold = arguments.given("mask") ? CImgproc::otsu(picture, arguments.picture("mask"))
                                                  : CImgproc::otsu(picture);
    return {{}, {{"threshold", threshold}}};
}

Result threshold_seg(const Image& picture, const Arguments& arguments) {
    Result result;
    CImgproc::thresholdSeg(picture, result.picture, arguments.whole("threshold"));
    return result;
}

Result threshold(const Image& picture, const Arguments& arguments) {
    Result result;
    result.picture.mat_create(picture.rows, picture.cols, 1, 0);  // the form with a mask needs the room
    result.values.add("threshold", CImgproc::threshold(picture, result.picture, arguments.whole("low-th"),
                                                       arguments.whole("high-th"), arguments.whole("type"),
                                                       arguments.picture("mask")));
    return result;
}

Result adaptive_threshold(const Image& picture, const Arguments& arguments) {
    Result result;
    CImgproc::adaptiveThreshold(picture, result.picture, arguments.whole("block-size"),
                                arguments.number("std-ratio"), arguments.given("inverse"));
    return result;
}

Result turned_and_mirrored(const Image& picture, const Arguments& arguments) {
    Result result;
    CImgproc::rot90ClockWise_FlipLR(picture, result.picture, arguments.whole("n"), arguments.whole("f"));
    return result;
}

constexpr const char* kResult = "result";  // what a refusal of its size is about

Result resize(const Image& picture, const Arguments& arguments) {
    const Size size = arguments.size("out-size");
    require_size(kResult, size.height, size.width);
    Result result;
    CImgproc::resize(picture, result.picture, size, interpolation_of(arguments));
    return result;
}

Result resize_by_scale(const Image& picture, const Arguments& arguments) {
    const float scale = arguments.single("scale");
    // In single precision, as the operation computes them. Smaller ones than a pixel it refuses itself.
    const auto scaled = [&](int extent) {
        return std::max<int64_t>(1, static_cast<int64_t>(std::min(static_cast<float>(extent) * scale, 1e9f)));
    };
    require_size(kResult, scaled(picture.rows), scaled(picture.cols));
    Result result;
    CImgproc::resize(picture, result.picture, scale, interpolation_of(arguments));
    return result;
}

Result rotation_matrix(const Image&, const Arguments& arguments) {
    const Mat<float> matrix = CImgproc::getRotationMatrix2D(
        arguments.place("center"), arguments.single("angle"), arguments.single("scale"));
    Json list = Json::array();
    for (int k = 0; k < 6; ++k) list.push_back(as_json(matrix.data[k]));
    return {{}, {{"matrix", list}}};
}

Result warp_affine(const Image& picture, const Arguments& arguments) {
    const Size size = arguments.given("out-size") ? arguments.size("out-size")  //
                                                  : Size(picture.cols, picture.rows);
    require_size(kResult, size.height, size.width);
    Result result;
    Image interpolated;
    if (arguments.given("interpolated")) interpolated.mat_create(size.height, size.width, 1, 0);
    CImgproc::warpAffine(picture, result.picture, arguments.matrix("matrix"), size,
                         interpolation_of(arguments), interpolated.empty() ? nullptr : &interpolated);
    if (!interpolated.empty()) result.picture = interpolated;
    return result;
}

Result point_affine(const Image&, const Arguments& arguments) {
    const Point point = CImgproc::pointAffine(arguments.point("point"), arguments.matrix("matrix"),
                                              arguments.single("scale"), arguments.point("origin"));
    return {{}, {{"point", as_json(point)}}};
}

Result rect_affine(const Image&, const Arguments& arguments) {
    const Rect rect = CImgproc::rectAffine(arguments.rect("rect"), arguments.matrix("matrix"));
    return {{}, {{"rect", as_json(rect)}}};
}

Result rect_in_mat(const Image&, const Arguments& arguments) {
    const Rect rect = CImgproc::checkRectInMat(arguments.size("size"), arguments.rect("rect"));
    return {{}, {{"rect", as_json(rect)}}};
}

Result morphology(const Image& picture, const Arguments& arguments) {
    Result result;
    CImgproc::morphologyBinary(picture, result.picture, arguments.size("size"),
                               static_cast<MORPH_TYPE>(arguments.whole("type")));
    return result;
}

Result dilate_rect(const Image&, const Arguments& arguments) {
    Rect rect;
    CImgproc::dilateRect(arguments.rect("rect"), rect, arguments.size("size"));
    return {{}, {{"rect", as_json(rect)}}};
}

Result labels(const Image& picture, const Arguments& arguments) {
    Mat<int> labels;
    int count = 0;
    CImgproc::bwlabel(picture, labels, count);
    Result result;
    result.values.add("num", count);
    if (!arguments.given("labels")) return result;
    Json rows = Json::array();
    for (int row = 0; row < labels.rows; ++row) {
        Json line = Json::array();
        for (int col = 0; col < labels.cols; ++col) line.push_back(labels.at(row, col));
        rows.push_back(line);
    }
    result.values.add("labels", rows);
    return result;
}

Result components(const Image& picture, const Arguments& arguments) {
    orvex_991::vector<Rect> rects;
    orvex_991::vector<orvex_991::vector<Point>> points;
    const bool with_points = arguments.given("points");
    CImgproc::connectdComponent(picture, rects, with_points ? &points : nullptr);
    Result result;
    result.values.add("rects", as_json(rects));
    if (with_points) result.values.add("points", as_json(points));
    return result;
}

Result rows(const Image& picture, const Arguments&) {
    orvex_991::vector<Rect> rects;
    orvex_991::vector<orvex_991::vector<Rect>> groups;
    CImgproc::connectdComponent(picture, rects, nullptr);
    CImgproc::divideComponentsToRows(rects, groups);
    return {{}, {{"row_groups", as_json(groups)}}};
}

Result hull(const Image& picture, const Arguments&) {
    orvex_991::vector<Point> points;
    for (int row = 0; row < picture.rows; ++row)
        for (int col = 0; col < picture.cols; ++col)
            if (picture.at(row, col) != 0) points.push_back(Point(col, row));
    orvex_991::vector<Point> hull;
    CImgproc::convexHull(points, hull);
    return {{}, {{"hull", as_json(hull)}}};
}

Result least_rect(const Image& picture, const Arguments&) {
    const RotatedRect rect = CImgproc::minAreaRect(picture);
    return {{},
            {{"pts", as_json(rect.pts)},
             {"center", as_json(rect.center)},
             {"width", rect.width},
             {"height", rect.height},
             {"angle", as_json(rect.angle)}}};
}

Result least_rect_angle(const Image& picture, const Arguments&) {
    return {{}, {{"angle", as_json(CImgproc::getRotatedRectAngle(CImgproc::minAreaRect(picture)))}}};
}

Result line_degree(const Image&, const Arguments& arguments) {
    const float degrees = CImgproc::calcLineDegree(arguments.place("p1"), arguments.place("p2"));
    return {{}, {{"degrees", as_json(degrees)}}};
}

Result sharpness(const Image& picture, const Arguments& arguments) {
    const float value = arguments.given("mask")
                            ? CImgproc::getSharpness(as_operand(Operand::kGray, picture),  //
                                                     arguments.picture("mask"))
                            : CImgproc::getSharpness(picture);
    return {{}, {{"sharpness", as_json(value)}}};
}

Result saliency(const Image& picture, const Arguments& arguments) {
    Image mask = arguments.picture("mask");
    if (!arguments.given("mask")) mask.mat_create(picture.rows, picture.cols, 1, 255);
    Result result;
    orvex_991::vector<unsigned char> levels;
    CImgproc::saliencyDetect(picture, result.picture, mask, levels);
    result.values.add("level_saliency", as_json(levels));
    return result;
}

Result red(const Image& picture, const Arguments& arguments) {
    Result result;
    CImgproc::redColorDetect(picture, result.picture, arguments.given("relaxed"));
    return result;
}

// ---- The table ----

std::vector<Operation> table() {
    constexpr bool kPicture = true;
    constexpr bool kNumbers = false;
    using In = Operand;
    return {
        {"bgr2gray", "Gray levels of a colour picture", In::kAny, kPicture, {}, filtered<CImgproc::bgr2gray>},
        {"yuv2bgr", "The colour picture of an NV21 camera frame", In::kFrame, kPicture, {}, frame},
        {"bgr2hsv",
         "Hue (0 .. 180), saturation and value in place of blue, green and red",
         In::kColour,
         kPicture,
         {},
         filtered<CImgproc::bgr2hsv>},

        {"equalizeHist",
         "Spreads the gray levels by their cumulative share",
         In::kGray,
         kPicture,
         {},
         filtered<CImgproc::equalizeHist>},
        {"hist", "Shares of the 256 gray levels", In::kGray, kNumbers, {}, hist},
        {"meanStdDev",
         "Mean and standard deviation of the gray levels; null when it is not a number",
         In::kGray,
         kNumbers,
         {},
         mean_std_dev},
        {"minVal", "The level of the first pixel", In::kGray, kNumbers, {}, level<CImgproc::minVal>},
        {"maxVal", "255, whatever the picture holds", In::kGray, kNumbers, {}, level<CImgproc::maxVal>},
        {"countNonZero", "Number of pixels that are not 0", In::kBinary, kNumbers, {}, count_non_zero},
        {"countNonZeroRate",
         "Share of pixels that are not 0",
         In::kBinary,
         kNumbers,
         {},
         count_non_zero_rate},

        {"otsu",
         "The gray level that best parts dark and bright",
         In::kGray,
         kNumbers,
         {mask("picture of the same size; only pixels that are not 0 in it count")},
         otsu},
        {"thresholdSeg",
         "0 below the threshold, else 255",
         In::kGray,
         kPicture,
         {required(whole("threshold", "", "the lowest gray level that becomes 255", {0, 255}))},
         threshold_seg},
        {"threshold",
         "Otsu's threshold and its application",
         In::kGray,
         kPicture,
         {whole("low-th", "0", "must be 0"), whole("high-th", "255", "must be 255"),
          whole("type", "8", "8 for Otsu, which is all there is; 9 swaps 0 and 255"),
          mask("picture of the same size; pixels that are 0 in it do not count, and become 0")},
         threshold},
        {"adaptiveThreshold",
         "255 above the mean of the window plus a share of the standard deviation, else 0",
         In::kGray,
         kPicture,
         {required(whole("block-size", "", "the window's width and height")),
          number("std-ratio", "0", "share of the picture's standard deviation"),
          flag("inverse", "swaps 0 and 255")},
         adaptive_threshold},

        {"rot90ClockWise",
         "Quarter turns clockwise",
         In::kAny,
         kPicture,
         {turns()},
         turned<CImgproc::rot90ClockWise>},
        {"rot90AntiClockWise",
         "Quarter turns anticlockwise",
         In::kAny,
         kPicture,
         {turns()},
         turned<CImgproc::rot90AntiClockWise>},
        {"flipLR", "Mirrors left and right", In::kAny, kPicture, {}, filtered<CImgproc::flipLR>},
        {"rot90ClockWise_FlipLR",
         "Mirrors left and right, then turns clockwise",
         In::kAny,
         kPicture,
         {turns(), whole("f", "1", "mirrors when odd")},
         turned_and_mirrored},
        {"rot90ClockWise-point",
         "Where a pixel of a picture turned clockwise lay before",
         In::kNone,
         kNumbers,
         {required(point("point", "", "on the turned picture")), turned_size(), turns()},
         turned_point<CImgproc::rot90ClockWise>},
        {"rot90AntiClockWise-point",
         "The same as rot90ClockWise-point",
         In::kNone,
         kNumbers,
         {required(point("point", "", "on the turned picture")), turned_size(), turns()},
         turned_point<CImgproc::rot90AntiClockWise>},
        {"rot90ClockWise-rect",
         "Where a rectangle on a picture turned clockwise lay before",
         In::kNone,
         kNumbers,
         {rect("on the turned picture"), turned_size(), turns()},
         turned_rect<CImgproc::rot90ClockWise>},
        {"rot90AntiClockWise-rect",
         "The same as rot90ClockWise-rect",
         In::kNone,
         kNumbers,
         {rect("on the turned picture"), turned_size(), turns()},
         turned_rect<CImgproc::rot90AntiClockWise>},

        {"resize",
         "Makes a picture larger or smaller",
         In::kAny,
         kPicture,
         {required(extents("out-size", "of the result")), interpolation()},
         resize},
        {"resize-scale",
         "Scales both sides by one factor",
         In::kAny,
         kPicture,
         {required(number("scale", "", "factor; fractions of a pixel are dropped", kAboveZero)),
          interpolation()},
         resize_by_scale},
        {"getRotationMatrix2D",
         "The matrix that turns and scales about a point",
         In::kNone,
         kNumbers,
         {required(place("center", "the point that stays where it is")),
          required(number("angle", "", "degrees anticlockwise")), number("scale", "1", "factor", kAboveZero)},
         rotation_matrix},
        {"warpAffine",
         "Maps a picture by a matrix",
         In::kAny,
         kPicture,
         {matrix(), extents("out-size", "of the result; the picture's by default"), interpolation(),
          flag("interpolated", "the result says instead which pixels are interpolated (1) or copied (0)")},
         warp_affine},
        {"pointAffine",
         "Maps a point by a matrix, scales it and adds the origin",
         In::kNone,
         kNumbers,
         {required(point("point", "", "the point")), matrix(), number("scale", "1", "factor"),
          point("origin", "0,0", "what is added")},
         point_affine},
        {"rectAffine",
         "The rectangle between the mapped corners of one",
         In::kNone,
         kNumbers,
         {rect("the rectangle"), matrix()},
         rect_affine},
        {"checkRectInMat",
         "Clips a rectangle into a picture",
         In::kNone,
         kNumbers,
         {rect("the rectangle"), required(extents("size", "of the picture"))},
         rect_in_mat},

        {"dilateBinary",
         "255 where the window has a pixel that is not 0",
         In::kBinary,
         kPicture,
         {window()},
         windowed<CImgproc::dilateBinary>},
        {"erodeBinary",
         "0 where the window has a pixel below 128, else 255",
         In::kBinary,
         kPicture,
         {window()},
         windowed<CImgproc::erodeBinary>},
        {"openBinary",
         "Erosion, then dilation",
         In::kBinary,
         kPicture,
         {window()},
         windowed<CImgproc::openBinary>},
        {"closeBinary",
         "Dilation, then erosion",
         In::kBinary,
         kPicture,
         {window()},
         windowed<CImgproc::closeBinary>},
        {"morphologyBinary",
         "One of the four by its name",
         In::kBinary,
         kPicture,
         {window(),
          required({"type", ParameterKind::kChoice, "which", {}, {"dilate", "erode", "open", "close"}})},
         morphology},
        {"dilateRect",
         "A rectangle grown to the left and right, up and down",
         In::kNone,
         kNumbers,
         {rect("the rectangle"), required(extents("size", "how much it grows to each side"))},
         dilate_rect},
        {"dilateGray",
         "The largest level of the window",
         In::kGray,
         kPicture,
         {window()},
         windowed<CImgproc::dilateGray>},
        {"erodeGray",
         "The smallest level of the window",
         In::kGray,
         kPicture,
         {window()},
         windowed<CImgproc::erodeGray>},
        {"morphGradient",
         "Edges: dilateGray less erodeGray, parted by Otsu's threshold",
         In::kGray,
         kPicture,
         {window()},
         windowed<CImgproc::morphGradient>},

        {"bwlabel",
         "Number of 4-connected components of what is not 0",
         In::kBinary,
         kNumbers,
         {flag("labels", "prints the component's number of each pixel as well, a list a row")},
         labels},
        {"connectdComponent",
         "Rectangles round the 4-connected components, larger ones first",
         In::kBinary,
         kNumbers,
         {flag("points", "prints the pixels of each component as well")},
         components},
        {"divideComponentsToRows",
         "The rectangles of connectdComponent in rows of text",
         In::kBinary,
         kNumbers,
         {},
         rows},
        {"convexHull", "Corners of the convex hull of what is not 0", In::kBinary, kNumbers, {}, hull},
        {"minAreaRect",
         "The rotated rectangle of least area round what is not 0",
         In::kBinary,
         kNumbers,
         {},
         least_rect},
        {"getRotatedRectAngle",
         "Angle of the longer side of minAreaRect, radians from the vertical",
         In::kBinary,
         kNumbers,
         {},
         least_rect_angle},
        {"calcLineDegree",
         "Angle of the line through two points, degrees in 0 .. 180, anticlockwise",
         In::kNone,
         kNumbers,
         {required(place("p1", "a point")), required(place("p2", "another point"))},
         line_degree},

        {"getSharpness",
         "How sharp a picture is; higher is sharper",
         In::kAny,
         kNumbers,
         {mask("picture of the same size; only where it is not 0, and of gray levels")},
         sharpness},
        {"saliencyDetect",
         "How far each pixel's gray level is from the others",
         In::kGray,
         kPicture,
         {mask("picture of the same size; only pixels that are not 0 in it are the others")},
         saliency},
        {"redColorDetect",
         "Red seals: 255 on them, else 0",
         In::kColour,
         kPicture,
         {flag("relaxed", "of any size and aspect")},
         red},
    };
}

}  // namespace

const std::vector<Operation>& operations() {
    static const std::vector<Operation> all = table();
    return all;
}

const Operation* find_operation(const std::string& name) {
    for (const Operation& operation : operations())
        if (operation.name == name) return &operation;
    return nullptr;
}

std::vector<std::string> operation_names() {
    std::vector<std::string> names;
    for (const Operation& operation : operations()) names.push_back(operation.name);
    return names;
}

std::string described(Operand operand) {
    switch (operand) {
        case Operand::kAny:
            return "Works on a picture, gray or in colour.";
        case Operand::kGray:
            return "Works on a gray picture; one in colour goes through bgr2gray first.";
        case Operand::kBinary:
            return "Works on a picture of 0 and 255 as it is: what is white counts. One in colour that is "
                   "not "
                   "black and white goes through bgr2gray first.";
        case Operand::kColour:
            return "Works on a picture in colour; of a gray one, blue, green and red are the gray level.";
        case Operand::kFrame:
            return "Works on an NV21 frame.";
        case Operand::kNone:
            break;
    }
    return "Needs no picture.";
}

Image as_operand(Operand operand, Image picture) {
    if (operand == Operand::kColour) return in_colour(std::move(picture));
    if (picture.channels == 1 || (operand != Operand::kGray && operand != Operand::kBinary)) return picture;
    // Not by way of gray, where white is 253.
    if (operand == Operand::kBinary && is_black_and_white(picture)) return first_channel(picture);
    Image gray;
    CImgproc::bgr2gray(picture, gray);
    return gray;
}

}  // namespace docprep
