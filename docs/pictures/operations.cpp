// What the pictures of docs/operations.md show, as PGM and PPM files; scripts/pictures puts them side by side.
// usage: operations PHOTO.ppm FRAME.nv21 FOLDER     the project's sample page and frame
//
// NAME.1.pnm is what an operation takes, NAME.2.pnm and so on what it gives. The numbers of those that give numbers,
// and the places of those that give points and rectangles, go to values.json.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "../../examples/pnm.h"

using namespace orvex_cv_991;

namespace {

const Size kPanel(240, 180);
const Rect kLetters(222, 270, 120, 90);  // of the sample page: two lines of a few letters
const Rect kLines(160, 200, 480, 360);   // beginnings of lines

class Pictures {
 public:
    explicit Pictures(const std::string& folder) : folder_(folder), values_(folder + "/values.json") {
        values_ << "{";
    }
    ~Pictures() { values_ << "\n}\n"; }

    void add(const std::string& name, const std::vector<Image>& panels) const {
        for (size_t i = 0; i < panels.size(); ++i)
            write_pnm(folder_ + "/" + name + "." + std::to_string(i + 1) + ".pnm", panels[i]);
    }
    void value(const std::string& name, const std::vector<double>& numbers) {
        values_ << separator_ << "\n\"" << name << "\": [";
        for (size_t i = 0; i < numbers.size(); ++i) values_ << (i > 0 ? ", " : "") << numbers[i];
        values_ << "]";
        separator_ = ",";
    }

 private:
    const std::string folder_;
    std::ofstream values_;
    const char* separator_ = "";
};

Image cut(const Image& image, const Rect& rect) {
    Image part;
    part.mat_create(rect.height, rect.width, image.channels, 0);
    for (int y = 0; y < rect.height; ++y)
        std::copy_n(image.data + ((rect.y + y) * image.cols + rect.x) * image.channels, part.step,
                    part.data + y * part.step);
    return part;
}

Image plane(const Image& image, int channel) {
    Image out;
    out.mat_create(image.rows, image.cols, 1, 0);
    for (int i = 0; i < image.rows * image.cols; ++i) out.data[i] = image.data[image.channels * i + channel];
    return out;
}

Image resized(const Image& image, const Size& size) {
    Image out;
    CImgproc::resize(image, out, size, INTERP_LINEAR);
    return out;
}

Image dark(const Image& gray) {
    Image out;
    CImgproc::threshold(gray, out, 0, 255, 8 | 1, Image());
    return out;
}

std::vector<double> numbers(const Rect& r) {
    return {1. * r.x, 1. * r.y, 1. * r.width, 1. * r.height};
}

template <class Points>
std::vector<double> numbers_of(const Points& points) {
    std::vector<double> out;
    for (int i = 0; i < points.size(); ++i) out.insert(out.end(), {1. * points[i].x, 1. * points[i].y});
    return out;
}

void colour(Pictures& pictures, const Image& photo, const std::vector<unsigned char>& frame) {
    Image gray, bgr, hsv, planes;
    CImgproc::bgr2gray(photo, gray);
    pictures.add("bgr2gray", {photo, gray});
    CImgproc::bgr2hsv(photo, hsv);
    pictures.add("bgr2hsv", {photo, plane(hsv, 0), plane(hsv, 1), plane(hsv, 2)});
    planes.mat_create(1080, 1280, 1, 0);
    std::copy(frame.begin(), frame.end(), planes.data);
    CImgproc::yuv2bgr(frame.data(), 720, 1280, bgr);
    pictures.add("yuv2bgr", {resized(planes, Size(240, 202)), resized(bgr, Size(320, 180))});
}

void statistics(Pictures& pictures, const Image& gray, const Image& letters) {
    Image dim = gray, out;
    for (int i = 0; i < dim.rows * dim.cols; ++i) dim.data[i] = static_cast<unsigned char>(dim.data[i] / 3);
    CImgproc::equalizeHist(dim, out);
    pictures.add("equalizeHist", {dim, out});
    pictures.add("hist", {gray});
    orvex_991::vector<float> shares;
    CImgproc::hist(gray, shares);
    std::vector<double> bars;
    for (int i = 0; i < shares.size(); ++i) bars.push_back(static_cast<double>(shares[i]));
    pictures.value("hist", bars);
    float mean = 0, deviation = 0;
    CImgproc::meanStdDev(gray, mean, deviation);
    pictures.add("meanStdDev", {gray});
    pictures.value("meanStdDev", {mean - deviation, mean, mean + deviation});
    pictures.add("minVal", {cut(gray, Rect(0, 0, 24, 18))});
    const Image print = dark(letters);
    pictures.add("countNonZero", {print});
    pictures.value("countNonZero", {static_cast<double>(CImgproc::countNonZeroRate(print))});
}

void thresholds(Pictures& pictures, const Image& gray, const Image& lines) {
    Image left;
    left.mat_create(gray.rows, gray.cols, 1, 0);
    for (int y = 15; y < 165; ++y)
        for (int x = 25; x < 140; ++x) left.at(y, x) = 1;
    pictures.add("otsu", {gray});
    pictures.value("otsu", {1. * CImgproc::otsu(gray)});
    Image out, masked;
    CImgproc::thresholdSeg(lines, out, 160);
    pictures.add("thresholdSeg", {lines, out});
    CImgproc::threshold(gray, out, 0, 255, 8 | 1, Image());
    masked.mat_create(gray.rows, gray.cols, 1, 0);
    CImgproc::threshold(gray, masked, 0, 255, 8 | 1, left);
    pictures.add("threshold", {gray, out, masked});
    CImgproc::adaptiveThreshold(gray, out, 15, -0.3, true);
    pictures.add("adaptiveThreshold", {gray, out});
}

void turns(Pictures& pictures, const Image& photo) {
    Image out, right;
    CImgproc::rot90ClockWise_FlipLR(photo, out, 1, 1);
    pictures.add("rot90ClockWise_FlipLR", {photo, out});
    CImgproc::flipLR(photo, out);
    pictures.add("flipLR", {photo, out});
    CImgproc::rot90ClockWise(photo, right, 1);
    pictures.add("rot90ClockWise", {photo, right});
    CImgproc::rot90AntiClockWise(photo, out, 1);
    pictures.add("rot90AntiClockWise", {photo, out});
    const Size turned(right.cols, right.rows);
    const Point pt(120, 20);
    const Rect rect(30, 60, 40, 110);
    pictures.add("rot90_places", {right, photo});
    pictures.value("rot90_places.1", numbers(rect));
    pictures.value("rot90_places.2", numbers(CImgproc::rot90ClockWise(rect, turned, 1)));
    const Point back = CImgproc::rot90ClockWise(pt, turned, 1);
    pictures.value("rot90_points", {1. * pt.x, 1. * pt.y, 1. * back.x, 1. * back.y});
}

void transforms(Pictures& pictures, const Image& photo, const Image& letters) {
    pictures.add("resize", {letters, resized(letters, kPanel)});
    const Point32f center(120, 90);
    const Mat<float> matrix = CImgproc::getRotationMatrix2D(center, 20, 0.8f);
    Image out, mask;
    mask.mat_create(kPanel.height, kPanel.width, 1, 0);
    CImgproc::warpAffine(photo, out, matrix, kPanel, INTERP_LINEAR, &mask);
    for (int i = 0; i < mask.rows * mask.cols; ++i) mask.data[i] = mask.data[i] ? 255 : 0;
    pictures.add("getRotationMatrix2D", {photo, out});
    pictures.add("warpAffine", {photo, out, mask});
    const Point pt(60, 100);
    const Point mapped = CImgproc::pointAffine(pt, matrix, 1, Point(0, 0));
    pictures.add("pointAffine", {photo, out});
    pictures.value("pointAffine", {1. * pt.x, 1. * pt.y, 1. * mapped.x, 1. * mapped.y});
    const Rect rect(30, 30, 180, 95);
    pictures.add("rectAffine", {photo, out});
    pictures.value("rectAffine.1", numbers(rect));
    pictures.value("rectAffine.2", numbers(CImgproc::rectAffine(rect, matrix)));
    pictures.value("checkRectInMat.1", numbers(Rect(-40, 60, 160, 170)));
    pictures.value("checkRectInMat.2", numbers(CImgproc::checkRectInMat(kPanel, Rect(-40, 60, 160, 170))));
    pictures.add("checkRectInMat", {photo});
    Rect grown;
    CImgproc::dilateRect(Rect(70, 60, 80, 60), grown, Size(30, 15));
    pictures.value("dilateRect.1", numbers(Rect(70, 60, 80, 60)));
    pictures.value("dilateRect.2", numbers(grown));
    pictures.add("dilateRect", {photo});
}

void morphology(Pictures& pictures, const Image& letters) {
    const Image print = dark(letters);
    std::vector<Image> all = {print};
    const char* const names[] = {"dilateBinary", "erodeBinary", "openBinary", "closeBinary"};
    for (const MORPH_TYPE type : {MORPH_DILATE, MORPH_ERODE, MORPH_OPEN, MORPH_CLOSE}) {
        const Size window = type == MORPH_CLOSE || type == MORPH_DILATE ? Size(5, 5) : Size(3, 3);
        Image out;
        CImgproc::morphologyBinary(print, out, window, type);
        pictures.add(names[type], {print, out});
        CImgproc::morphologyBinary(print, out, Size(3, 3), type);
        all.push_back(out);
    }
    pictures.add("morphologyBinary", all);
    Image out;
    CImgproc::dilateGray(letters, out, Size(5, 5));
    pictures.add("dilateGray", {letters, out});
    CImgproc::erodeGray(letters, out, Size(5, 5));
    pictures.add("erodeGray", {letters, out});
    CImgproc::morphGradient(letters, out, Size(3, 3));
    pictures.add("morphGradient", {letters, out});
}

void components(Pictures& pictures, const Image& letters, const Image& lines) {
    const Image print = dark(letters);
    Mat<int> labels;
    int count = 0;
    CImgproc::bwlabel(print, labels, count);
    Image numbered;
    numbered.mat_create(print.rows, print.cols, 1, 0);
    for (int i = 0; i < print.rows * print.cols; ++i)
        numbered.data[i] = static_cast<unsigned char>(labels.data[i]);
    pictures.add("bwlabel", {print, numbered});
    orvex_991::vector<Rect> rects, inside;
    CImgproc::connectdComponent(print, rects, nullptr);
    pictures.add("connectdComponent", {print, print});
    for (int i = 0; i < rects.size(); ++i)
        pictures.value("connectdComponent." + std::to_string(i), numbers(rects[i]));
    CImgproc::connectdComponent(dark(lines), rects, nullptr);
    for (int i = 0; i < rects.size(); ++i)
        if (rects[i].height < lines.rows / 4) inside.push_back(rects[i]);
    orvex_991::vector<orvex_991::vector<Rect>> rows;
    CImgproc::divideComponentsToRows(inside, rows);
    pictures.add("divideComponentsToRows", {lines, lines});
    for (int row = 0; row < rows.size(); ++row)
        for (int i = 0; i < rows[row].size(); ++i)
            pictures.value("divideComponentsToRows." + std::to_string(row) + "." + std::to_string(i),
                           numbers(rows[row][i]));
}

/// An L of which every corner is a right one, turned by 25 degrees.
Image shape() {
    Image out, turned;
    out.mat_create(kPanel.height, kPanel.width, 1, 0);
    for (int y = 50; y < 130; ++y)
        for (int x = 60; x < 180; ++x) out.at(y, x) = x < 100 || y >= 100 ? 255 : 0;
    CImgproc::warpAffine(out, turned, CImgproc::getRotationMatrix2D(Point32f(120, 90), 25, 1), kPanel,
                         INTERP_LINEAR, nullptr);
    CImgproc::thresholdSeg(turned, turned, 128);
    return turned;
}

void shapes(Pictures& pictures) {
    const Image mask = shape();
    orvex_991::vector<Point> points, hull;
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            if (mask.at(y, x) != 0) points.push_back(Point(x, y));
    CImgproc::convexHull(points, hull);
    pictures.add("convexHull", {mask});
    pictures.value("convexHull", numbers_of(hull));
    const RotatedRect box = CImgproc::minAreaRect(mask);
    pictures.add("minAreaRect", {mask});
    pictures.value("minAreaRect", numbers_of(box.pts));
    pictures.add("getRotatedRectAngle", {mask});
    pictures.value("getRotatedRectAngle", {static_cast<double>(CImgproc::getRotatedRectAngle(box))});
    pictures.value("calcLineDegree",
                   {static_cast<double>(CImgproc::calcLineDegree(Point32f(40, 140), Point32f(200, 60)))});
}

void detectors(Pictures& pictures, const Image& photo, const Image& gray) {
    const Image soft = resized(resized(gray, Size(30, 22)), kPanel);
    pictures.add("getSharpness", {gray, soft});
    pictures.value("getSharpness", {static_cast<double>(CImgproc::getSharpness(gray)),
                                    static_cast<double>(CImgproc::getSharpness(soft))});
    Image out, whole;
    whole.mat_create(gray.rows, gray.cols, 1, 255);
    orvex_991::vector<unsigned char> levels;
    CImgproc::saliencyDetect(gray, out, whole, levels);
    pictures.add("saliencyDetect", {gray, out});
    CImgproc::redColorDetect(photo, out, false);
    pictures.add("redColorDetect", {resized(photo, kPanel), resized(out, kPanel)});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 64;
    const Image page = read_pnm(argv[1]);
    std::ifstream file(argv[2], std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const std::vector<unsigned char> frame(bytes.begin(), bytes.end());
    if (page.cols != 1600 || page.rows != 1200 || page.channels != 3 || frame.size() != 1280 * 1080) return 2;

    Pictures pictures(argv[3]);
    const Image photo = resized(page, kPanel);
    Image gray, page_gray;
    CImgproc::bgr2gray(photo, gray);
    CImgproc::bgr2gray(page, page_gray);
    const Image letters = cut(page_gray, kLetters), lines = resized(cut(page_gray, kLines), kPanel);
    colour(pictures, photo, frame);
    statistics(pictures, gray, letters);
    thresholds(pictures, gray, lines);
    turns(pictures, photo);
    transforms(pictures, photo, letters);
    morphology(pictures, letters);
    components(pictures, letters, lines);
    shapes(pictures);
    detectors(pictures, page, gray);
}
