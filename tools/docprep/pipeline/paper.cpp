#include "pipeline/paper.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "base/drawing.h"
#include "cv_imgproc.h"
#include "pipeline/flood.h"
#include "pipeline/reduced.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

// Lengths are in text heights.
constexpr double kReducedTextHeight = 5;  // pixels of the copy
constexpr double kFilled = 2.5;           // print vanishes
constexpr double kClosed = 2;             // shadows of folds are bridged
constexpr double kShrunk = 0.6;           // the paper's own edge is no print
// Paper's brightness changes by less from one pixel of the copy to the next.
constexpr double kSmoothLevels = 1.5;
constexpr double kSmoothShare = 0.03;
constexpr double kLeastShare = 0.08;      // of the letters: a region with fewer is none of the page's
constexpr double kLargestNotches = 1.15;  // of the sheet with them to the sheet without
constexpr double kLeastSurvivors = 0.95;  // of the letters

/// Which pixels belong together.
class Regions {
 public:
    explicit Regions(size_t n) : parents_(n) { std::iota(parents_.begin(), parents_.end(), size_t{0}); }

    size_t of(size_t k) {
        while (parents_[k] != k) k = parents_[k] = parents_[parents_[k]];
        return k;
    }
    void join(size_t a, size_t b) {
        a = of(a);
        b = of(b);
        parents_[std::max(a, b)] = std::min(a, b);
    }

 private:
    std::vector<size_t> parents_;
};

Regions smooth_regions(const Image& gray) {
    const auto cols = static_cast<size_t>(gray.cols);
    const size_t n = cols * static_cast<size_t>(gray.rows);
    std::array<int, 256> steps{};  // that are still smooth, by the lighter level
    for (size_t level = 0; level < steps.size(); ++level)
        steps[level] = static_cast<int>(std::max(kSmoothLevels, kSmoothShare * static_cast<double>(level)));
    const auto alike = [&](size_t a, size_t b) {
        const int difference = std::abs(gray.data[a] - gray.data[b]);
        return difference <= steps[std::max(gray.data[a], gray.data[b])];
    };
    Regions regions(n);
    for (size_t k = 0; k < n; ++k) {
        if ((k + 1) % cols != 0 && alike(k, k + 1)) regions.join(k, k + 1);
        if (k + cols < n && alike(k, k + cols)) regions.join(k, k + cols);
    }
    return regions;
}

/// The pixel of a copy that a letter's middle lies on.
class OnCopy {
 public:
    OnCopy(const Image& photo, const Image& copy)
        : across_(static_cast<double>(copy.cols) / photo.cols),
          down_(static_cast<double>(copy.rows) / photo.rows),
          cols_(copy.cols),
          rows_(copy.rows) {}

    size_t of(const Rect& letter) const {
        const int x = std::clamp(static_cast<int>((letter.x + letter.width / 2.0) * across_), 0, cols_ - 1);
        const int y = std::clamp(static_cast<int>((letter.y + letter.height / 2.0) * down_), 0, rows_ - 1);
        return static_cast<size_t>(y) * static_cast<size_t>(cols_) + static_cast<size_t>(x);
    }

 private:
    double across_, down_;
    int cols_, rows_;
};

/// 255 on the regions that hold their share of the letters.
Image regions_with_letters(const Image& filled, const Rects& letters, const OnCopy& on_copy) {
    Regions regions = smooth_regions(filled);
    std::vector<int> held(static_cast<size_t>(filled.rows) * static_cast<size_t>(filled.cols));
    for (int k = 0; k < letters.size; ++k) ++held[regions.of(on_copy.of(letters[k]))];
    Image mask;
    mask.mat_create(filled.rows, filled.cols, 1, 0);
    for (size_t k = 0; k < held.size(); ++k)
        if (held[regions.of(k)] >= kLeastShare * letters.size) mask.data[k] = 255;
    return mask;
}

/// What cannot be reached from the picture's edge becomes 255.
void fill_holes(Image& mask) {
    const size_t n = static_cast<size_t>(mask.rows) * static_cast<size_t>(mask.cols);
    std::vector<bool> outside(n);
    Flood flood(mask.rows, mask.cols, [&](ptrdiff_t at) {
        const auto k = static_cast<size_t>(at);
        if (outside[k] || mask.data[k] != 0) return false;
        outside[k] = true;
        return true;
    });
    flood.from_edges();
    for (size_t k = 0; k < n; ++k)
        if (!outside[k]) mask.data[k] = 255;
}

/// The corners of the convex hull of what is 255.
Points hull_of(const Image& mask) {
    Points corners;
    for (int row = 0; row < mask.rows; ++row) {
        const unsigned char* const pixels = mask.data + static_cast<ptrdiff_t>(row) * mask.cols;
        const unsigned char* const end = pixels + mask.cols;
        const unsigned char* const first = std::find(pixels, end, 255);
        if (first == end) continue;
        const unsigned char* last = end - 1;
        while (*last == 0) --last;
        corners.push_back(Point(static_cast<int>(first - pixels), row));
        corners.push_back(Point(static_cast<int>(last - pixels), row));
    }
    Points hull;
    CImgproc::convexHull(corners, hull);
    return hull;
}

/// Sheets are convex: fills notches, such as a seal or a picture at the edge, unless they are too large to be any.
void fill_notches(Image& mask) {
    Image convex = mask;
    fill_convex(convex, hull_of(mask), 255);
    if (CImgproc::countNonZero(convex) <= kLargestNotches * CImgproc::countNonZero(mask)) mask = convex;
}

Points outline_of(const Image& mask, const Image& photo) {
    const double across = static_cast<double>(photo.cols) / mask.cols;
    const double down = static_cast<double>(photo.rows) / mask.rows;
    const Points hull = hull_of(mask);
    Points corners;
    for (int k = 0; k < hull.size; ++k)
        for (const int x : {hull[k].x, hull[k].x + 1})
            for (const int y : {hull[k].y, hull[k].y + 1})
                corners.push_back(Point(std::min(static_cast<int>(std::lround(x * across)), photo.cols - 1),
                                        std::min(static_cast<int>(std::lround(y * down)), photo.rows - 1)));
    Points outline;
    CImgproc::convexHull(corners, outline);
    return outline;
}

Points whole_outline(const Image& photo) {
    Points corners;
    for (const Point& corner : {Point(0, 0), Point(photo.cols - 1, 0), Point(photo.cols - 1, photo.rows - 1),
                                Point(0, photo.rows - 1)})
        corners.push_back(corner);
    return corners;
}

}  // namespace

bool Paper::holds(const Rect& rect, const Image& photo) const {
    return everywhere() || mask.data[OnCopy(photo, mask).of(rect)] != 0;
}

Rect paper_on_page(const Paper& paper, const Deskew& deskew) {
    Bounds bounds;
    for (int k = 0; k < paper.outline.size; ++k)
        bounds.add(deskew.to_page({double(paper.outline[k].x), double(paper.outline[k].y)}));
    const int first_col = std::clamp(static_cast<int>(std::floor(bounds.left)), 0, deskew.cols - 1);
    const int first_row = std::clamp(static_cast<int>(std::floor(bounds.top)), 0, deskew.rows - 1);
    const int last_col = std::clamp(static_cast<int>(std::ceil(bounds.right)), first_col, deskew.cols - 1);
    const int last_row = std::clamp(static_cast<int>(std::ceil(bounds.bottom)), first_row, deskew.rows - 1);
    return Rect(first_col, first_row, last_col - first_col + 1, last_row - first_row + 1);
}

Paper find_paper(const Image& gray, const Rects& letters, int text_height) {
    Paper everywhere;
    everywhere.outline = whole_outline(gray);
    if (letters.size == 0 || text_height == 0) return everywhere;

    const double scale = std::min(kReducedTextHeight / text_height, 1.0);
    const double unit = text_height * scale;
    const auto window = [&](double length, const Image& picture) {
        const int extent = odd_window(length * unit, picture);
        return Size(extent, extent);
    };
    Image copy = reduced(gray, scale);
    const OnCopy on_copy(gray, copy);
    CImgproc::dilateGray(copy, copy, window(kFilled, copy));
    CImgproc::erodeGray(copy, copy, window(kFilled, copy));
    Paper paper;
    paper.mask = regions_with_letters(copy, letters, on_copy);
    fill_holes(paper.mask);
    CImgproc::closeBinary(paper.mask, paper.mask, window(kClosed, copy));
    fill_notches(paper.mask);
    CImgproc::erodeBinary(paper.mask, paper.mask, window(2 * kShrunk, copy));

    int survivors = 0;
    for (int k = 0; k < letters.size; ++k) survivors += paper.mask.data[on_copy.of(letters[k])] != 0;
    if (survivors < kLeastSurvivors * letters.size) return everywhere;
    paper.outline = outline_of(paper.mask, gray);
    return paper;
}

}  // namespace docprep
