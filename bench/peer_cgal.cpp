// CGAL: hulls and rectangles.
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Polygon_2.h>
#include <CGAL/convex_hull_2.h>
#include <CGAL/min_quadrilateral_2.h>

#include <memory>
#include <vector>

#include "cases.h"

namespace bench {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using CgalPoint = Kernel::Point_2;

std::vector<CgalPoint> to_cgal(const orvex_991::vector<orvex_cv_991::Point>& points) {
    std::vector<CgalPoint> list;
    for (int k = 0; k < points.size; ++k) list.emplace_back(points[k].x, points[k].y);
    return list;
}

}  // namespace

void add_cgal(std::vector<Case>& cases, const Inputs& in) {
    for (const int n : {100, 10000, 200000}) {
        const auto points = std::make_shared<std::vector<CgalPoint>>(to_cgal(disc_of_points(n)));
        add_peer(cases, "convexHull " + std::to_string(n), "CGAL", [points] {
            std::vector<CgalPoint> hull;
            CGAL::convex_hull_2(points->begin(), points->end(), std::back_inserter(hull));
        });
    }
    // The mask's outline as its users have it: the first and last set pixel of every
    // column, found while timed.
    const U8& blob = in.blob;
    add_peer(cases, "minAreaRect mask", "CGAL", [&blob] {
        std::vector<CgalPoint> outline;
        for (int row = 0; row < blob.rows; ++row) {
            const unsigned char* const line = blob.data + static_cast<size_t>(row) * blob.cols;
            const void* const first = std::memchr(line, 255, blob.cols);
            if (!first) continue;
            const void* const last = memrchr(line, 255, blob.cols);
            outline.emplace_back(static_cast<const unsigned char*>(first) - line, row);
            outline.emplace_back(static_cast<const unsigned char*>(last) - line, row);
        }
        std::vector<CgalPoint> hull, rectangle;
        CGAL::convex_hull_2(outline.begin(), outline.end(), std::back_inserter(hull));
        CGAL::min_rectangle_2(hull.begin(), hull.end(), std::back_inserter(rectangle));
    });
}

}  // namespace bench
