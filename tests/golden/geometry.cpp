#include "geometry.h"

#include <cstdint>
#include <string>

#include "cases.h"
#include "components.h"
#include "images.h"
#include "morphology.h"
#include "shapes.h"
#include "turns.h"

namespace golden {

namespace {

using namespace testing_support;
using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::RotatingCalipers;
using orvex_cv_991::Size;
using reference::Image;
using reference::List;

/// Runs a call that returns a value; `unset` stands for it when the call throws.
template <class T, class Run>
Outcome library_value(T unset, Run run) {
    Outcome outcome = of_library([&] { unset = run(); });
    return outcome.with("value", unset);
}

template <class T, class Run>
Outcome reference_value(T unset, Run run) {
    Outcome outcome = of_reference([&] { unset = run(); });
    return outcome.with("value", unset);
}

int any_coordinate(Random& random) {
    if (random.chance(10)) return random.pick({INT32_MAX, INT32_MIN, INT32_MAX - 1, 0});
    return random.range(-300, 300);
}

reference::Point any_point(Random& random) {
    const int x = any_coordinate(random);
    return {x, any_coordinate(random)};
}

reference::Rect any_rect(Random& random) {
    const reference::Point at = any_point(random), extent = any_point(random);
    return {at.x, at.y, extent.x, extent.y};
}

Point to_library(const reference::Point& p) {
    return Point(p.x, p.y);
}

Rect to_library(const reference::Rect& r) {
    return Rect(r.x, r.y, r.width, r.height);
}

template <class To, class From>
vector<To> to_library_list(const List<From>& from) {
    vector<To> list;
    for (const From& item : from.items) list.push_back(to_library(item));
    return list;
}

void record_turns(const Recorder& recorder) {
    Random random(3001);
    for (int round = 0; round < 150; ++round) {
        const reference::Point pt = any_point(random), extents = any_point(random);
        const reference::Size plain_size{extents.x, extents.y};
        const Size size(extents.x, extents.y);
        const reference::Rect rect = any_rect(random);
        const int n = random.range(-9, 9);
        const std::string number = " #" + std::to_string(round);
        const auto plain_point = [&] {
            return reference_value(reference::Point{},
                                   [&] { return reference::rot90ClockWise(pt, plain_size, n); });
        };
        recorder.record(
            "rot90ClockWise of a point" + number,
            [&] {
                return library_value(Point(),
                                     [&] { return CImgproc::rot90ClockWise(to_library(pt), size, n); });
            },
            plain_point);
        recorder.record(
            "rot90AntiClockWise of a point" + number,
            [&] {
                return library_value(Point(),
                                     [&] { return CImgproc::rot90AntiClockWise(to_library(pt), size, n); });
            },
            plain_point);
        const auto plain_rect = [&] {
            return reference_value(reference::Rect{},
                                   [&] { return reference::rot90ClockWise(rect, plain_size, n); });
        };
        recorder.record(
            "rot90ClockWise of a rectangle" + number,
            [&] {
                return library_value(Rect(),
                                     [&] { return CImgproc::rot90ClockWise(to_library(rect), size, n); });
            },
            plain_rect);
        recorder.record(
            "rot90AntiClockWise of a rectangle" + number,
            [&] {
                return library_value(Rect(),
                                     [&] { return CImgproc::rot90AntiClockWise(to_library(rect), size, n); });
            },
            plain_rect);
        recorder.record(
            "checkRectInMat" + number,
            [&] {
                return library_value(Rect(),
                                     [&] { return CImgproc::checkRectInMat(size, to_library(rect)); });
            },
            [&] {
                return reference_value(reference::Rect{},
                                       [&] { return reference::checkRectInMat(plain_size, rect); });
            });
        recorder.record(
            "dilateRect" + number,
            [&] {
                Rect grown = to_library(rect);
                return of_library([&] { CImgproc::dilateRect(grown, grown, size); }).with("value", grown);
            },
            [&] {
                return reference_value(reference::Rect{},
                                       [&] { return reference::dilateRect(rect, plain_size); });
            });
    }
}

void record_affine(const Recorder& recorder) {
    Random random(3002);
    for (int round = 0; round < 150; ++round) {
        Mat<float> matrix;
        matrix.mat_create(2, 3, 1, 0);
        for (int k = 0; k < 6; ++k)
            matrix.data[k] = static_cast<float>(random.range(-20000, 20000)) / 4096.0f;
        if (random.chance(4)) matrix.data[2] = random.pick({1e38f, -1e38f, HUGE_VALF});
        if (random.chance(3)) matrix.mat_create(3, 2, 1, 1);
        if (random.chance(3)) matrix.mat_create(2, 3, 2, 1);
        const reference::Point pt = any_point(random), origin = any_point(random);
        const reference::Rect rect = any_rect(random);
        const float scale = static_cast<float>(random.range(-12288, 12288)) / 4096.0f;
        const std::string number = " #" + std::to_string(round);
        recorder.record(
            "pointAffine" + number,
            [&] {
                return library_value(Point(), [&] {
                    return CImgproc::pointAffine(to_library(pt), matrix, scale, to_library(origin));
                });
            },
            [&] {
                return reference_value(reference::Point{}, [&] {
                    return reference::pointAffine(pt, to_reference(matrix), scale, origin);
                });
            });
        recorder.record(
            "rectAffine" + number,
            [&] {
                return library_value(Rect(), [&] { return CImgproc::rectAffine(to_library(rect), matrix); });
            },
            [&] {
                return reference_value(reference::Rect{},
                                       [&] { return reference::rectAffine(rect, to_reference(matrix)); });
            });
    }
}

void record_rows_of_text(const Recorder& recorder) {
    Random random(3003);
    for (int round = 0; round < 200; ++round) {
        List<reference::Rect> rects;
        const int n = random.range(0, round % 20 ? 30 : 400);
        const bool hostile = random.chance(15);
        const int spread = random.pick({10, 60, 400});
        for (int k = 0; k < n; ++k) {
            const int x = random.range(-5, 40), width = random.range(0, 9);
            int y = random.range(0, spread), height = random.range(1, 12);
            if (hostile && random.chance(10)) y = random.pick({-1, -7, 5000, INT32_MIN});
            if (hostile && random.chance(20)) height = random.pick({0, -1, -20, INT32_MIN, INT32_MAX});
            // Sums may wrap, but not to a bottom so large that the reference would need gigabytes.
            if (reference::wrapping(static_cast<int64_t>(y) + height) > 100000) height = 0;
            rects.push_back({x, y, width, height});
        }
        recorder.record(
            "divideComponentsToRows #" + std::to_string(round),
            [&] {
                vector<vector<Rect>> rows(3);
                return of_library(
                           [&] { CImgproc::divideComponentsToRows(to_library_list<Rect>(rects), rows); })
                    .with("rows", rows);
            },
            [&] {
                List<List<reference::Rect>> rows;
                rows.resize(3);
                return of_reference([&] { reference::divideComponentsToRows(rects, rows); })
                    .with("rows", rows);
            });
    }
}

List<reference::Point> any_points(Random& random, int most, std::initializer_list<int> spreads) {
    List<reference::Point> points;
    const int spread = random.pick(spreads);
    for (int n = random.range(0, most); n > 0; --n) {
        const int x = random.range(-spread, spread);
        points.push_back({x, random.range(-spread, spread)});
    }
    if (random.chance(20))  // on a line
        for (reference::Point& point : points.items) point.y = reference::wrapping(int64_t{2} * point.x + 1);
    return points;
}

void record_hulls(const Recorder& recorder) {
    Random random(3004);
    for (int round = 0; round < 150; ++round) {
        const List<reference::Point> points =
            any_points(random, round % 10 ? 30 : 300, {1, 3, 20, 1000, 23171, 1000000, INT32_MAX});
        const std::string number = " #" + std::to_string(round);
        recorder.record(
            "convexHull" + number,
            [&] {
                vector<Point> hull(4, Point(7, 7));
                return of_library([&] { CImgproc::convexHull(to_library_list<Point>(points), hull); })
                    .with("hull", hull);
            },
            [&] {
                List<reference::Point> hull;
                return of_reference([&] { reference::convexHull(points, hull); }).with("hull", hull);
            });
        if (points.size() < 3) continue;
        const reference::Point &a = points[0], &b = points[1], &c = points[2];
        recorder.record(
            "cross and orders" + number,
            [&] {
                const Point p = to_library(a), q = to_library(b), r = to_library(c);
                Outcome outcome;
                outcome.with("cross", orvex_cv_991::cross(p, q, r));
                outcome.with("pointCmp", orvex_cv_991::pointCmp(p, q));
                outcome.with("pointCmp2", orvex_cv_991::pointCmp2(p, q));
                return outcome.with("PosComp", orvex_cv_991::PosComp(p, q));
            },
            [&] {
                const bool before = a.x < b.x || (a.x == b.x && a.y < b.y);
                const bool behind = a.x > b.x || (a.x == b.x && a.y > b.y);
                Outcome outcome;
                outcome.with("cross", reference::cross(a, b, c));
                return outcome.with("pointCmp", before).with("pointCmp2", behind).with("PosComp", before);
            });
    }
}

// Without the angle, which is the maths library's.
template <class AnyRect>
Outcome with_rect(Outcome outcome, const AnyRect& rect) {
    outcome.with("corners", rect.pts).with("x", rect.center.x).with("y", rect.center.y);
    return outcome.with("width", rect.width).with("height", rect.height);
}

void record_calipers(const Recorder& recorder) {
    Random random(3005);
    for (int round = 0; round < 150; ++round) {
        const List<reference::Point> points =
            any_points(random, 40, {1, 3, 20, 1000, 40000, 1000000, (1 << 29) - 1});
        const std::string number = " #" + std::to_string(round);
        recorder.record(
            "getMinimumBoundingRectangle" + number,
            [&] {
                vector<Point32f> corners;
                return of_library([&] {
                           corners =
                               RotatingCalipers::getMinimumBoundingRectangle(to_library_list<Point>(points));
                       })
                    .with("corners", corners);
            },
            [&] {
                List<reference::Point32f> corners;
                return of_reference([&] { corners = reference::calipers(points); }).with("corners", corners);
            });
        recorder.record(
            "minAreaRect of points" + number,
            [&] {
                RotatedRect rect;
                return with_rect(
                    of_library([&] { rect = CImgproc::minAreaRect(to_library_list<Point>(points)); }), rect);
            },
            [&] {
                reference::RotatedRect rect;
                return with_rect(
                    of_reference([&] { rect = reference::minAreaRect(points, reference::calipers); }), rect);
            });
    }
}

}  // namespace

void record_geometry(const Recorder& recorder) {
    record_turns(recorder);
    record_affine(recorder);
    record_rows_of_text(recorder);
    record_hulls(recorder);
    record_calipers(recorder);
}

}  // namespace golden
