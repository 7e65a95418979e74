#include "base/fp_strict.h"
//
#include "maths.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "capture.h"
#include "cv_imgproc.h"
#include "geometry.h"
#include "images.h"
#include "shapes.h"

namespace golden {

namespace {

using namespace testing_support;
using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::RotatedRect;

constexpr int kArguments = 1000;  // of each operation
constexpr int kDefaultBound = 2;

float any_fraction(Random& random, int units) {
    return static_cast<float>(random.range(-units * 64, units * 64)) / 64.0f;
}

/// The arguments of one call of each operation.
struct Arguments {
    float center_x, center_y, angle, scale;
    float x[4], y[4];
    reference::List<reference::Point> points;

    explicit Arguments(Random& random) {
        center_x = any_fraction(random, 4000);
        center_y = any_fraction(random, 4000);
        angle = any_fraction(random, random.chance(20) ? 100000 : 360);
        if (random.chance(5)) angle = random.pick({0.0f, 45.0f, 90.0f, -90.0f, 180.0f, 270.0f});
        scale = static_cast<float>(random.range(1, 16384)) / 4096.0f;
        const int units = random.pick({5, 100, 20000});
        for (float& value : x) value = any_fraction(random, units);
        for (float& value : y) value = any_fraction(random, units);
        // Some rectangles lie level or upright, where angles wrap.
        if (random.chance(10)) x[1] = x[0], x[2] = x[1];
        if (random.chance(10)) y[1] = y[0], y[2] = y[1];
        const int spread = random.pick({4, 100, 10000});
        for (int k = 0; k < 8; ++k) {
            const int column = random.range(-spread, spread);
            points.push_back({column, random.range(-spread, spread)});
        }
    }
};

struct Value {
    const char* operation;
    float value;
};

/// By the reference.
std::vector<Value> plain_values(const Arguments& from) {
    const auto matrix = reference::getRotationMatrix2D(from.center_x, from.center_y, from.angle, from.scale);
    reference::List<reference::Point32f> corners;
    for (int k = 0; k < 4; ++k) corners.push_back({from.x[k], from.y[k]});
    const float line = reference::calcLineDegree(corners[0], corners[1]);
    const float longer = reference::getRotatedRectAngle(corners);
    const float least = reference::minAreaRect(from.points, reference::calipers).angle;
    return {{"getRotationMatrix2D", matrix.data[0]},
            {"getRotationMatrix2D", matrix.data[1]},
            {"calcLineDegree", line},
            {"getRotatedRectAngle", longer},
            {"RotatedRect::angle", least}};
}

/// By the library. `exact` turns false when the other elements of a rotation matrix are not those
/// that follow from its cosine and sine.
std::vector<Value> library_values(const Arguments& from, bool& exact) {
    const Mat<float> matrix =
        CImgproc::getRotationMatrix2D(Point32f(from.center_x, from.center_y), from.angle, from.scale);
    const float a = matrix.data[0], b = matrix.data[1];
    const float rest = 1.0f - a;
    const float x_rest = from.center_x * rest, y_b = from.center_y * b;
    const float y_rest = rest * from.center_y, x_b = b * from.center_x;
    exact = exact && matrix.data[2] == x_rest - y_b && matrix.data[5] == y_rest + x_b &&
            matrix.data[3] == -b && matrix.data[4] == a;
    RotatedRect rect;
    for (int k = 0; k < 4; ++k) rect.pts.push_back(Point32f(from.x[k], from.y[k]));
    vector<Point> points;
    for (const reference::Point& point : from.points.items) points.push_back(Point(point.x, point.y));
    const float line = CImgproc::calcLineDegree(rect.pts[0], rect.pts[1]);
    const float longer = CImgproc::getRotatedRectAngle(rect);
    const float least = CImgproc::minAreaRect(points).angle;
    return {{"getRotationMatrix2D", a},
            {"getRotationMatrix2D", b},
            {"calcLineDegree", line},
            {"getRotatedRectAngle", longer},
            {"RotatedRect::angle", least}};
}

/// How many floats apart two numbers are; 0 and -0 are not.
int64_t distance(float one, float other) {
    const auto place = [](float value) {
        int32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        return bits < 0 ? -static_cast<int64_t>(bits & INT32_MAX) : static_cast<int64_t>(bits);
    };
    if (std::isnan(one) || std::isnan(other)) return std::isnan(one) == std::isnan(other) ? 0 : INT64_MAX;
    return std::llabs(place(one) - place(other));
}

struct Farthest {
    std::string operation;
    int values = 0, differing = 0;
    int64_t ulp = 0;
};

}  // namespace

void print_maths_table() {
    std::printf("bound %d\n", kDefaultBound);
    Random random(5001);
    for (int round = 0; round < kArguments; ++round)
        for (const Value& value : plain_values(Arguments(random)))
            std::printf("%s %a\n", value.operation, static_cast<double>(value.value));
}

bool compare_maths(const char* table_path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(table_path, "r"), std::fclose);
    std::FILE* const table = file.get();
    int bound = 0;
    if (!table || std::fscanf(table, "bound %d", &bound) != 1) {
        std::printf("no bound in the table\n");
        return false;
    }
    bool exact = true;
    std::vector<Farthest> list;
    Random random(5001);
    for (int round = 0; round < kArguments; ++round) {
        const Arguments arguments(random);
        for (const Value& value : library_values(arguments, exact)) {
            char name[64], number[64];
            if (std::fscanf(table, "%63s %63s", name, number) != 2 || value.operation != std::string(name)) {
                std::printf("the table is of other operations\n");
                return false;
            }
            const int64_t ulp = distance(value.value, std::strtof(number, nullptr));
            size_t at = 0;
            while (at < list.size() && list[at].operation != name) ++at;
            if (at == list.size()) list.push_back({name});
            ++list[at].values;
            list[at].differing += ulp != 0;
            if (ulp > list[at].ulp) list[at].ulp = ulp;
        }
    }
    bool within = exact;
    if (!exact) std::printf("getRotationMatrix2D: elements do not follow from its cosine and sine\n");
    for (const Farthest& farthest : list) {
        std::printf("%s: %d of %d values differ, by at most %lld ulp\n", farthest.operation.c_str(),
                    farthest.differing, farthest.values, static_cast<long long>(farthest.ulp));
        within = within && farthest.ulp <= bound;
    }
    return within;
}

}  // namespace golden
