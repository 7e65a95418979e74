// The public surface as client code relies on it: names, types, signatures and layouts.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "cv_imgproc.h"

namespace {

using orvex_991::CException;
using orvex_991::Clock;
using orvex_991::String;
using orvex_991::vector;
using namespace orvex_cv_991;
using U8 = Mat<unsigned char>;

static_assert(sizeof(void*) != 8 || sizeof(vector<int>) == 16);
static_assert(offsetof(vector<int>, size) == 0 && sizeof(vector<int>::size) == 4);
static_assert(offsetof(vector<int>, capacity) == 4 && sizeof(vector<int>::capacity) == 4);
static_assert(offsetof(vector<int>, data) == 8);
static_assert(std::is_same_v<decltype(vector<Rect>::data), Rect*>);
static_assert(std::is_convertible_v<decltype(vector<int>::size), int>);
static_assert(std::is_same_v<decltype(std::declval<vector<int>&>().size()), int>);

static_assert(offsetof(U8, rows) == 0 && offsetof(U8, cols) == 4 && offsetof(U8, channels) == 8);
static_assert(sizeof(void*) != 8 ||
              (offsetof(U8, data) == 16 && offsetof(U8, dims_rows) == 24 && offsetof(U8, dims_cols) == 28 &&
               offsetof(U8, step) == 32 && offsetof(U8, elem_size) == 36 && sizeof(U8) == 40));
static_assert(std::is_same_v<decltype(Mat<int>::data), int*> &&
              std::is_same_v<decltype(Mat<float>::data), float*>);

static_assert(offsetof(Point, x) == 0 && offsetof(Point, y) == 4 && sizeof(Point) == 8);
static_assert(offsetof(Point32f, x) == 0 && offsetof(Point32f, y) == 4 && sizeof(Point32f) == 8);
static_assert(offsetof(Size, width) == 0 && offsetof(Size, height) == 4 && sizeof(Size) == 8);
static_assert(offsetof(Rect, x) == 0 && offsetof(Rect, y) == 4 && offsetof(Rect, width) == 8 &&
              offsetof(Rect, height) == 12 && sizeof(Rect) == 16);
static_assert(offsetof(RotatedRect, pts) == 0 && offsetof(RotatedRect, center) == sizeof(vector<Point32f>) &&
              offsetof(RotatedRect, width) == sizeof(vector<Point32f>) + 8 &&
              offsetof(RotatedRect, height) == sizeof(vector<Point32f>) + 12 &&
              offsetof(RotatedRect, angle) == sizeof(vector<Point32f>) + 16);
static_assert(offsetof(CException, code) == 0 && std::is_same_v<decltype(CException::code), int>);
static_assert(std::is_same_v<decltype(CException::message), String>);
static_assert(offsetof(CException, message) > offsetof(CException, code));

static_assert(std::is_same_v<std::underlying_type_t<INTERP_TYPE>, int> && INTERP_LINEAR == 0);
static_assert(std::is_same_v<std::underlying_type_t<MORPH_TYPE>, int>);
static_assert(MORPH_DILATE == 0 && MORPH_ERODE == 1 && MORPH_OPEN == 2 && MORPH_CLOSE == 3);
static_assert(std::is_same_v<CImgproc::U8, U8>);

// Moving owns up to its name: it cannot fail, so growing a list of lists cannot lose one.
static_assert(std::is_nothrow_move_constructible_v<vector<vector<Point>>>);
static_assert(std::is_nothrow_move_constructible_v<U8> && std::is_nothrow_move_assignable_v<U8>);

// Every signature: taking the address with the type written out fails to compile when one changes.
template <class F>
constexpr bool is(F) {
    return true;
}
using Rects = vector<Rect>;
using Points = vector<Point>;
static_assert(is<void (*)(const U8&, U8&)>(&CImgproc::bgr2gray));
static_assert(is<void (*)(const unsigned char*, int, int, U8&)>(&CImgproc::yuv2bgr));
static_assert(is<void (*)(const U8&, U8&)>(&CImgproc::bgr2hsv));
static_assert(is<int (*)(const U8&)>(&CImgproc::otsu));
static_assert(is<int (*)(const U8&, const U8&)>(&CImgproc::otsu));
static_assert(is<void (*)(const U8&, U8&, int)>(&CImgproc::thresholdSeg));
static_assert(is<int (*)(const U8&, U8&, int, int, int, const U8&)>(&CImgproc::threshold));
static_assert(is<void (*)(const U8&, U8&)>(&CImgproc::equalizeHist));
static_assert(is<void (*)(const U8&, vector<float>&)>(&CImgproc::hist));
static_assert(is<void (*)(const U8&, float&, float&)>(&CImgproc::meanStdDev));
static_assert(is<unsigned char (*)(const U8&)>(&CImgproc::minVal));
static_assert(is<unsigned char (*)(const U8&)>(&CImgproc::maxVal));
static_assert(is<int (*)(const U8&)>(&CImgproc::countNonZero));
static_assert(is<float (*)(const U8&)>(&CImgproc::countNonZeroRate));
static_assert(is<void (*)(const U8&, U8&, int, double, bool)>(&CImgproc::adaptiveThreshold));
static_assert(is<void (*)(const U8&, U8&, int, int)>(&CImgproc::rot90ClockWise_FlipLR));
static_assert(is<void (*)(const U8&, U8&)>(&CImgproc::flipLR));
static_assert(is<void (*)(const U8&, U8&, int)>(&CImgproc::rot90ClockWise));
static_assert(is<void (*)(const U8&, U8&, int)>(&CImgproc::rot90AntiClockWise));
static_assert(is<Point (*)(const Point&, const Size&, int)>(&CImgproc::rot90ClockWise));
static_assert(is<Point (*)(const Point&, const Size&, int)>(&CImgproc::rot90AntiClockWise));
static_assert(is<Rect (*)(const Rect&, const Size&, int)>(&CImgproc::rot90ClockWise));
static_assert(is<Rect (*)(const Rect&, const Size&, int)>(&CImgproc::rot90AntiClockWise));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::dilateGray));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::erodeGray));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::morphGradient));
static_assert(is<void (*)(const Points&, Points&)>(&CImgproc::convexHull));
static_assert(is<RotatedRect (*)(const U8&)>(&CImgproc::minAreaRect));
static_assert(is<RotatedRect (*)(const Points&)>(&CImgproc::minAreaRect));
static_assert(is<float (*)(const RotatedRect&)>(&CImgproc::getRotatedRectAngle));
static_assert(is<float (*)(const Point32f&, const Point32f&)>(&CImgproc::calcLineDegree));
static_assert(is<float (*)(const U8&)>(&CImgproc::getSharpness));
static_assert(is<float (*)(const U8&, const U8&)>(&CImgproc::getSharpness));
static_assert(is<vector<Point32f> (*)(Points)>(&RotatingCalipers::getMinimumBoundingRectangle));
static_assert(is<int (*)(const Point&, const Point&, const Point&)>(&cross));
static_assert(is<bool (*)(const Point&, const Point&)>(&pointCmp));
static_assert(is<bool (*)(const Point&, const Point&)>(&pointCmp2));
static_assert(is<bool (*)(const Point&, const Point&)>(&PosComp));
static_assert(is<void (*)(const U8&, U8&, const Size&, INTERP_TYPE)>(&CImgproc::resize));
static_assert(is<void (*)(const U8&, U8&, float, INTERP_TYPE)>(&CImgproc::resize));
static_assert(is<Mat<float> (*)(Point32f, float, float)>(&CImgproc::getRotationMatrix2D));
static_assert(
    is<void (*)(const U8&, U8&, const Mat<float>&, const Size&, INTERP_TYPE, U8*)>(&CImgproc::warpAffine));
static_assert(is<Point (*)(const Point&, const Mat<float>&, float, const Point&)>(&CImgproc::pointAffine));
static_assert(is<Rect (*)(const Rect&, const Mat<float>&)>(&CImgproc::rectAffine));
static_assert(is<Rect (*)(const Size&, const Rect&)>(&CImgproc::checkRectInMat));
static_assert(is<void (*)(const U8&, U8&, const Size&, MORPH_TYPE)>(&CImgproc::morphologyBinary));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::dilateBinary));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::erodeBinary));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::openBinary));
static_assert(is<void (*)(const U8&, U8&, const Size&)>(&CImgproc::closeBinary));
static_assert(is<void (*)(const Rect&, Rect&, const Size&)>(&CImgproc::dilateRect));
static_assert(is<void (*)(const U8&, U8&, const U8&, vector<unsigned char>&)>(&CImgproc::saliencyDetect));
static_assert(is<void (*)(const U8&, U8&, bool)>(&CImgproc::redColorDetect));
static_assert(is<void (*)(const U8&, Mat<int>&, int&)>(&CImgproc::bwlabel));
static_assert(is<void (*)(const U8&, Rects&, vector<Points>*)>(&CImgproc::connectdComponent));
static_assert(is<void (*)(Rects, vector<Rects>&)>(&CImgproc::divideComponentsToRows));

static_assert(is<void (U8::*)(int, int, int, int)>(&U8::mat_create));
static_assert(is<void (U8::*)(int, int, int, int)>(&U8::init));
static_assert(is<U8 (U8::*)() const>(&U8::clone));
static_assert(is<U8& (U8::*)(const U8&)>(&U8::operator=));
static_assert(is<U8& (U8::*)(const unsigned char&)>(&U8::operator=));
static_assert(is<U8& (U8::*)()>(&U8::operator~));
static_assert(is<unsigned char& (U8::*)(int, int)>(&U8::at));
static_assert(is<const unsigned char& (U8::*)(int, int) const>(&U8::at));
static_assert(is<bool (U8::*)() const>(&U8::empty));

static_assert(is<void (Points::*)(int, const Point&)>(&Points::init_to_size));
static_assert(is<void (Points::*)(int)>(&Points::reserve));
static_assert(is<void (Points::*)()>(&Points::double_the_size));
static_assert(is<void (Points::*)(const Point&)>(&Points::push_back));
static_assert(is<Point (Points::*)()>(&Points::pop_back));
static_assert(is<Point& (Points::*)(int)>(&Points::operator[]));
static_assert(is<const Point& (Points::*)(int) const>(&Points::operator[]));
static_assert(is<Points& (Points::*)(const Points&)>(&Points::operator+=));
static_assert(is<void (Points::*)()>(&Points::clear));
static_assert(is<int (Points::*)(Point) const>(&Points::get_index));
static_assert(is<void (Points::*)(bool (*)(const Point&, const Point&))>(&Points::bubbleSort));

static_assert(is<int (ForestJoin::*)(int)>(&ForestJoin::GetRootId));
static_assert(is<int (ForestJoin::*)(int, int)>(&ForestJoin::Join));
static_assert(is<int (ForestJoin::*)(vector<int>&)>(&ForestJoin::Remap));
static_assert(is<bool (RectAreaComp_ConnComp::*)(int, int)>(&RectAreaComp_ConnComp::operator()));
static_assert(is<bool (*)(const Rect&, const Rect&)>(&Rect::cmpX));
static_assert(is<bool (*)(const Rect&, const Rect&)>(&Rect::cmpArea));
static_assert(is<Point (Rect::*)() const>(&Rect::left_top) &&
              is<Point (Rect::*)() const>(&Rect::right_bottom));
static_assert(is<bool (Point::*)(const Point&) const>(&Point::operator==));
static_assert(is<bool (Size::*)(const Size&) const>(&Size::operator!=));
static_assert(is<const char* (String::*)() const>(&String::c_str));
static_assert(is<void (Clock::*)()>(&Clock::start) && is<void (Clock::*)()>(&Clock::stop));
static_assert(is<float (Clock::*)() const>(&Clock::getTimeMS));
static_assert(is<float (*)(float, int)>(&orvex_991::pow<float>));
static_assert(is<void (*)(vector<int>&, int, int, RectAreaComp_ConnComp&)>(
    &orvex_991::quick_partition<int, RectAreaComp_ConnComp>));

TEST(Layout, count_reads_as_a_field_and_as_a_call) {
    vector<int> v(3, 7);
    EXPECT_EQ(v.size, 3);
    EXPECT_EQ(v.size(), 3);
    int n = v.size;
    n += v.capacity();
    EXPECT_EQ(n, 6);
    v.size -= 1;
    EXPECT_EQ(v.size++, 2);
    EXPECT_EQ(--v.size, 2);
    v.size = 1;
    EXPECT_TRUE(v.size < v.capacity);
    EXPECT_EQ(n > 0 ? v.size : 0, 1);
}

}  // namespace
