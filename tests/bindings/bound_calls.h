// Included before each source of the golden cases, so that what they call CImgproc goes through another language's
// package: arguments become its values, and results, errors and printed lines come back from there.
#ifndef ORVEX_TESTS_BINDINGS_BOUND_CALLS_H
#define ORVEX_TESTS_BINDINGS_BOUND_CALLS_H

#include "cv_imgproc.h"

namespace orvex_cv_991 {

/// The functions of CImgproc.
class BoundCalls {
 public:
    using U8 = CImgproc::U8;

    static void bgr2gray(const U8& src, U8& dst);
    static void yuv2bgr(const unsigned char* yuv, int rows, int cols, U8& dst);
    static void bgr2hsv(const U8& src, U8& dst);
    static void equalizeHist(const U8& src, U8& dst);
    static void hist(const U8& src, orvex_991::vector<float>& h);
    static void meanStdDev(const U8& src, float& mean, float& stddev);
    static unsigned char minVal(const U8& src);
    static unsigned char maxVal(const U8& src);
    static int countNonZero(const U8& src);
    static float countNonZeroRate(const U8& src);
    static int otsu(const U8& src);
    static int otsu(const U8& src, const U8& mask);
    static void thresholdSeg(const U8& src, U8& dst, int threshold);
    static int threshold(const U8& src, U8& dst, int low_th, int high_th, int type, const U8& mask);
    static void adaptiveThreshold(const U8& src, U8& dst, int block_size, double std_ratio, bool inverse);
    static void rot90ClockWise_FlipLR(const U8& src, U8& dst, int n, int f);
    static void flipLR(const U8& src, U8& dst);
    static void rot90ClockWise(const U8& src, U8& dst, int n);
    static void rot90AntiClockWise(const U8& src, U8& dst, int n);
    static Point rot90ClockWise(const Point& pt, const Size& size, int n);
    static Point rot90AntiClockWise(const Point& pt, const Size& size, int n);
    static Rect rot90ClockWise(const Rect& src, const Size& img_size, int n);
    static Rect rot90AntiClockWise(const Rect& src, const Size& img_size, int n);
    static void resize(const U8& src, U8& dst, const Size& out_size, INTERP_TYPE interp);
    static void resize(const U8& src, U8& dst, float scale, INTERP_TYPE interp);
    static Mat<float> getRotationMatrix2D(Point32f center, float angle, float scale);
    static void warpAffine(const U8& src, U8& dst, const Mat<float>& trans_matrix, const Size& out_size,
                           INTERP_TYPE interp, U8* mask);
    static Point pointAffine(const Point& pt, const Mat<float>& trans_mat, float scale, const Point& origin);
    static Rect rectAffine(const Rect& src, const Mat<float>& trans_mat);
    static Rect checkRectInMat(const Size& size, const Rect& rect);
    static void dilateBinary(const U8& src, U8& dst, const Size& size);
    static void erodeBinary(const U8& src, U8& dst, const Size& size);
    static void openBinary(const U8& src, U8& dst, const Size& size);
    static void closeBinary(const U8& src, U8& dst, const Size& size);
    static void morphologyBinary(const U8& src, U8& dst, const Size& size, MORPH_TYPE type);
    static void dilateRect(const Rect& src, Rect& dst, const Size& size);
    static void dilateGray(const U8& src, U8& dst, const Size& size);
    static void erodeGray(const U8& src, U8& dst, const Size& size);
    static void morphGradient(const U8& src, U8& dst, const Size& size);
    static void bwlabel(const U8& src, Mat<int>& dst, int& num);
    static void connectdComponent(const U8& src, orvex_991::vector<Rect>& rects,
                                  orvex_991::vector<orvex_991::vector<Point>>* points);
    static void divideComponentsToRows(orvex_991::vector<Rect> rects,
                                       orvex_991::vector<orvex_991::vector<Rect>>& row_groups);
    static void convexHull(const orvex_991::vector<Point>& points, orvex_991::vector<Point>& hull);
    static RotatedRect minAreaRect(const U8& mat);
    static RotatedRect minAreaRect(const orvex_991::vector<Point>& points);
    static float getRotatedRectAngle(const RotatedRect& rotate_rect);
    static float calcLineDegree(const Point32f& p1, const Point32f& p2);
    static float getSharpness(const U8& src);
    static float getSharpness(const U8& src, const U8& mask);
    static void saliencyDetect(const U8& src, U8& dst, const U8& mask,
                               orvex_991::vector<unsigned char>& level_saliency);
    static void redColorDetect(const U8& src, U8& dst, bool relaxed);
};

}  // namespace orvex_cv_991

#ifndef ORVEX_BOUND_CALLS_OF_BOTH
#define CImgproc BoundCalls
#endif

#endif  // ORVEX_TESTS_BINDINGS_BOUND_CALLS_H
