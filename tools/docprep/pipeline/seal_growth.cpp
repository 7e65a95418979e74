#include "pipeline/seal_growth.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/drawing.h"
#include "cv_imgproc.h"
#include "pipeline/histogram.h"
#include "pipeline/reduced.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// Of the copy in which seals grow: a seal has some 100 of them across.
constexpr int kLongestSide = 800;
/// What red has more of than the next colour, beyond what paper has: this share of what the mark itself has.
constexpr double kChromaShare = 0.4;
constexpr int kLeastChroma = 12;
/// Less than this share of what was found before lies between a seal's star and its letters, and to its rim.
constexpr double kGap = 0.4;
constexpr int kRounds = 6;
constexpr int kMostMarks = 50;
/// In longer sides of the mark: a star is a seventh of its seal at least.
constexpr double kLargest = 7;
/// In shorter sides of the photograph.
constexpr double kLargestOfPhoto = 0.6;
/// Seals are round, oval or square; longer ones are red headings.
constexpr double kLongest = 2.2;
/// Specks: components of a seal have more pixels than this share of it.
constexpr double kLeastPart = 0.004;
/// Seals that share more than this of the smaller one's rectangle are one.
constexpr double kSame = 0.3;

Rect grown(const Rect& rect, int by, const Image& picture) {
    const int left = std::max(rect.x - by, 0), top = std::max(rect.y - by, 0);
    const int right = std::min(rect.x + rect.width + by, picture.cols);
    const int bottom = std::min(rect.y + rect.height + by, picture.rows);
    return Rect(left, top, right - left, bottom - top);
}

int longer_side(const Rect& rect) {
    return std::max(rect.width, rect.height);
}

/// The redness of each pixel; 0 where another colour prevails.
Image chroma_of(const Image& bgr) {
    Image chroma;
    chroma.mat_create(bgr.rows, bgr.cols, 1, 0);
    const ptrdiff_t n = static_cast<ptrdiff_t>(bgr.rows) * bgr.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        chroma.data[i] = static_cast<unsigned char>(std::max(redness(bgr.data + 3 * i), 0));
    return chroma;
}

/// Desks of wood are red, too.
void clear_desk(Image& chroma, const Paper& paper) {
    if (paper.everywhere()) return;
    Image mask;
    CImgproc::resize(paper.mask, mask, Size(chroma.cols, chroma.rows), INTERP_LINEAR);
    const ptrdiff_t n = static_cast<ptrdiff_t>(chroma.rows) * chroma.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        if (mask.data[i] < 128) chroma.data[i] = 0;
}

Histogram levels_in(const Image& chroma, const Rect& area) {
    Histogram levels;
    for (int row = area.y; row < area.y + area.height; ++row)
        for (int col = area.x; col < area.x + area.width; ++col)
            levels.add(chroma.data[static_cast<ptrdiff_t>(row) * chroma.cols + col]);
    return levels;
}

/// What counts as red beside a mark, whose own redder half tells how red its ink is; its surroundings tell how red
/// paper is in the photograph's light.
int threshold_for(const Image& chroma, const Rect& mark, const Rect& surroundings) {
    const int paper = levels_in(chroma, surroundings).quantile(0.5);
    const int ink = levels_in(chroma, mark).quantile(0.75);
    return std::max(kLeastChroma,
                    paper + static_cast<int>(std::lround(kChromaShare * std::max(ink - paper, 0))));
}

bool overlap(const Rect& a, const Rect& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

Rect united(const Rect& a, const Rect& b) {
    const int left = std::min(a.x, b.x), top = std::min(a.y, b.y);
    return Rect(left, top, std::max(a.x + a.width, b.x + b.width) - left,
                std::max(a.y + a.height, b.y + b.height) - top);
}

bool elongated(const Rect& rect) {
    return longer_side(rect) > kLongest * std::min(rect.width, rect.height);
}

int64_t area(const Rect& rect) {
    return int64_t{rect.width} * rect.height;
}

bool same_seal(const Rect& a, const Rect& b) {
    if (!overlap(a, b)) return false;
    const int64_t width = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    const int64_t height = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    return static_cast<double>(width * height) > kSame * static_cast<double>(std::min(area(a), area(b)));
}

/// The red parts of a picture, without specks.
struct RedParts {
    Rects rects;
    std::vector<Points> pixels;
};

RedParts red_parts(const Image& chroma, const Rect& area, int threshold) {
    Image red = cut_out(chroma, area);
    CImgproc::thresholdSeg(red, red, std::min(threshold, 255));
    Rects rects;
    orvex_991::vector<Points> lists;
    CImgproc::connectdComponent(red, rects, &lists);
    int64_t pixels = 0;
    for (int k = 0; k < lists.size; ++k) pixels += lists[k].size;
    RedParts parts;
    for (int k = 0; k < rects.size; ++k) {
        if (lists[k].size <= std::max(kLeastPart * static_cast<double>(pixels), 2.0)) continue;
        const Rect& rect = rects[k];
        parts.rects.push_back(Rect(rect.x + area.x, rect.y + area.y, rect.width, rect.height));
        Points& points = lists[k];
        for (int i = 0; i < points.size; ++i) points[i] = Point(points[i].x + area.x, points[i].y + area.y);
        parts.pixels.push_back(std::move(points));
    }
    return parts;
}

/// The pixels of the seal that a mark is part of; none where nothing red is.
Points grow(const Image& chroma, const Rect& mark) {
    const int side = longer_side(mark);
    const auto most =
        static_cast<int>(std::min(kLargest * side, kLargestOfPhoto * std::min(chroma.rows, chroma.cols)));
    const Rect surroundings = grown(mark, most / 2, chroma);
    const RedParts parts = red_parts(chroma, surroundings, threshold_for(chroma, mark, surroundings));
    Rect seal = mark;
    std::vector<bool> joined(static_cast<size_t>(parts.rects.size));
    for (int round = 0; round < kRounds; ++round) {
        const Rect near = grown(seal, static_cast<int>(kGap * longer_side(seal)) + 1, chroma);
        Rect next = seal;
        for (int k = 0; k < parts.rects.size; ++k) {
            if (joined[static_cast<size_t>(k)] || !overlap(near, parts.rects[k])) continue;
            const Rect with = united(next, parts.rects[k]);
            if (longer_side(with) > most) continue;
            joined[static_cast<size_t>(k)] = true;
            next = with;
        }
        if (longer_side(next) == longer_side(seal) && area(next) == area(seal)) break;
        seal = next;
    }
    Points pixels;
    for (int k = 0; k < parts.rects.size; ++k)
        for (int i = 0; joined[static_cast<size_t>(k)] && i < parts.pixels[static_cast<size_t>(k)].size; ++i)
            pixels.push_back(parts.pixels[static_cast<size_t>(k)][i]);
    return pixels;
}

/// A hull's corners on the copy as those on the photograph: the outer corners of its pixels.
Points on_photo(const Points& hull, double across, double down, const Image& photo) {
    Points corners;
    const auto edge = [](double position, double scale, int extent) {
        return std::clamp(static_cast<int>(std::lround(position * scale)), 0, extent);
    };
    for (int k = 0; k < hull.size; ++k) {
        const int left = edge(hull[k].x, across, photo.cols - 1), top = edge(hull[k].y, down, photo.rows - 1);
        const int right = std::max(edge(hull[k].x + 1.0, across, photo.cols) - 1, left);
        const int bottom = std::max(edge(hull[k].y + 1.0, down, photo.rows) - 1, top);
        for (const Point& corner :
             {Point(left, top), Point(right, top), Point(left, bottom), Point(right, bottom)})
            corners.push_back(corner);
    }
    return corners;
}

Rect bounds_of(const Points& points) {
    Rect bounds(points[0].x, points[0].y, 1, 1);
    for (int k = 1; k < points.size; ++k) bounds = united(bounds, Rect(points[k].x, points[k].y, 1, 1));
    return bounds;
}

Seal seal_around(const Points& points) {
    Seal seal;
    CImgproc::convexHull(points, seal.outline);
    seal.rect = bounds_of(points);
    return seal;
}

void append(Points& points, const Points& others) {
    for (int k = 0; k < others.size; ++k) points.push_back(others[k]);
}

}  // namespace

int redness(const unsigned char* bgr) {
    return bgr[2] - std::max(bgr[0], bgr[1]);
}

std::vector<Seal> grow_seals(const Image& photo, const Paper& paper, const Rects& marks) {
    const double scale = static_cast<double>(kLongestSide) / std::max(photo.rows, photo.cols);
    const Image copy = reduced(photo, scale);
    Image chroma = chroma_of(copy);
    clear_desk(chroma, paper);
    const double across = static_cast<double>(photo.cols) / copy.cols;
    const double down = static_cast<double>(photo.rows) / copy.rows;
    std::vector<Seal> seals;
    for (int k = 0; k < std::min<int>(marks.size, kMostMarks); ++k) {
        const Rect& mark = marks[k];
        const int x = std::min(static_cast<int>(mark.x / across), copy.cols - 1);
        const int y = std::min(static_cast<int>(mark.y / down), copy.rows - 1);
        const Rect on_copy(x, y, std::max(1, std::min(static_cast<int>(mark.width / across), copy.cols - x)),
                           std::max(1, std::min(static_cast<int>(mark.height / down), copy.rows - y)));
        Points hull;
        CImgproc::convexHull(grow(chroma, on_copy), hull);
        Points corners = on_photo(hull, across, down, photo);
        if (corners.size == 0) {
            corners.push_back(mark.left_top());
            corners.push_back(mark.right_bottom());
            corners.push_back(Point(mark.x, mark.y + mark.height - 1));
            corners.push_back(Point(mark.x + mark.width - 1, mark.y));
        }
        Seal seal = seal_around(corners);
        for (auto other = seals.begin(); other != seals.end();) {
            if (!same_seal(seal.rect, other->rect)) {
                ++other;
                continue;
            }
            append(corners, other->outline);
            seal = seal_around(corners);
            seals.erase(other);
            other = seals.begin();
        }
        seals.push_back(std::move(seal));
    }
    seals.erase(
        std::remove_if(seals.begin(), seals.end(), [](const Seal& seal) { return elongated(seal.rect); }),
        seals.end());
    std::stable_sort(seals.begin(), seals.end(),
                     [](const Seal& a, const Seal& b) { return area(a.rect) > area(b.rect); });
    return seals;
}

Image mask_of(const std::vector<Seal>& seals, int rows, int cols) {
    Image mask;
    mask.mat_create(rows, cols, 1, 0);
    for (const Seal& seal : seals) fill_convex(mask, seal.outline, 255);
    return mask;
}

}  // namespace docprep
