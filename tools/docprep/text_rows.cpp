#include "text_rows.h"

#include <algorithm>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;

namespace {

Points corner_pixels(const Rects& rects) {
    Points points;
    for (int k = 0; k < rects.size; ++k) {
        const Point first = rects[k].left_top();
        const Point last = rects[k].right_bottom();
        points.push_back(first);
        points.push_back(last);
        points.push_back(Point(first.x, last.y));
        points.push_back(Point(last.x, first.y));
    }
    return points;
}

}  // namespace

Rect bounding_rect(const Rects& rects) {
    if (rects.size == 0) return Rect();
    int left = rects[0].x, top = rects[0].y, right = left, bottom = top;
    for (int k = 0; k < rects.size; ++k) {
        const Rect& rect = rects[k];
        left = std::min(left, rect.x);
        top = std::min(top, rect.y);
        right = std::max(right, rect.x + rect.width);
        bottom = std::max(bottom, rect.y + rect.height);
    }
    return Rect(left, top, right - left, bottom - top);
}

TextRows find_rows(const Rects& components, const WayBack& way_back) {
    orvex_991::vector<Rects> groups;
    CImgproc::divideComponentsToRows(components, groups);
    TextRows rows;
    for (int k = 0; k < groups.size; ++k) {
        TextRow& row = rows.emplace_back();
        row.components = std::move(groups[k]);
        row.rect = bounding_rect(row.components);
        CImgproc::convexHull(corner_pixels(row.components), row.hull);
        row.min_area = CImgproc::minAreaRect(row.hull);
        row.on_photo = way_back.of(row.rect);
    }
    return rows;
}

}  // namespace docprep
