// Points and rectangles as JSON.
#ifndef DOCPREP_GEOMETRY_JSON_H
#define DOCPREP_GEOMETRY_JSON_H

#include <array>

#include "base/json.h"
#include "cv_geometry.h"

namespace docprep {

inline Json as_json(unsigned char value) {
    return int{value};
}

inline Json as_json(float value) {
    return double{value};
}

inline Json as_json(const orvex_cv_991::Point& point) {
    return Json::array(std::array{point.x, point.y});
}

inline Json as_json(const orvex_cv_991::Point32f& point) {
    return Json::array(std::array{double{point.x}, double{point.y}});
}

inline Json as_json(const orvex_cv_991::Rect& rect) {
    return {{"x", rect.x}, {"y", rect.y}, {"width", rect.width}, {"height", rect.height}};
}

template <class T>
Json as_json(const orvex_991::vector<T>& values) {
    Json list = Json::array();
    for (int k = 0; k < values.size; ++k) list.push_back(as_json(values[k]));
    return list;
}

}  // namespace docprep

#endif  // DOCPREP_GEOMETRY_JSON_H
