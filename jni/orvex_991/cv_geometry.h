#ifndef ORVEX_991_CV_GEOMETRY_H
#define ORVEX_991_CV_GEOMETRY_H

#include "util_vector.h"

namespace orvex_cv_991 {

/// How warps and resizes sample; any other value is legal and gives an all-zero output.
enum INTERP_TYPE : int { INTERP_LINEAR = 0 };

enum MORPH_TYPE : int { MORPH_DILATE, MORPH_ERODE, MORPH_OPEN, MORPH_CLOSE };

/// Integer pixel position: x is the column, y the row.
struct Point {
    int x = 0;  ///< column
    int y = 0;  ///< row

    Point() = default;
    /// (x, y)
    Point(int x_, int y_) : x(x_), y(y_) {}
    /// Whether both coordinates agree.
    bool operator==(const Point& other) const { return x == other.x && y == other.y; }
};

/// Sub-pixel position.
struct Point32f {
    float x = 0;  ///< column
    float y = 0;  ///< row

    Point32f() = default;
    /// (x, y)
    Point32f(float x_, float y_) : x(x_), y(y_) {}
};

/// Extent in columns and rows.
struct Size {
    int width = 0;   ///< columns
    int height = 0;  ///< rows

    Size() = default;
    /// width x height
    Size(int width_, int height_) : width(width_), height(height_) {}
    /// Whether either extent differs.
    bool operator!=(const Size& other) const { return width != other.width || height != other.height; }
};

/// Axis-aligned rectangle covering columns x .. x + width - 1 and rows y .. y + height - 1.
struct Rect {
    int x = 0;       ///< first column
    int y = 0;       ///< first row
    int width = 0;   ///< columns
    int height = 0;  ///< rows

    Rect() = default;
    /// From the first column and row, and the extents.
    Rect(int x_, int y_, int width_, int height_) : x(x_), y(y_), width(width_), height(height_) {}

    /// The first covered pixel, (x, y).
    Point left_top() const { return Point(x, y); }
    /// The last covered pixel, (x + width - 1, y + height - 1); sums wrap in 32 bits.
    Point right_bottom() const;

    /// a.x < b.x
    static bool cmpX(const Rect& a, const Rect& b) { return a.x < b.x; }
    /// a.width * a.height < b.width * b.height; products wrap in 32 bits.
    static bool cmpArea(const Rect& a, const Rect& b);
};

/// Rotated rectangle; default-constructed (no corners) it means that none was found.
struct RotatedRect {
    orvex_991::vector<Point32f> pts;  ///< corners in order around it; 4 of them in a well-formed one
    Point32f center;                  ///< mean of the corners
    int width = 0;                    ///< length of the side from corner 0 to corner 1, truncated
    int height = 0;                   ///< length of the side from corner 1 to corner 2, truncated
    float angle = 0;                  ///< of the side from corner 0 to corner 1, radians, y pointing up

    RotatedRect() = default;
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_CV_GEOMETRY_H
