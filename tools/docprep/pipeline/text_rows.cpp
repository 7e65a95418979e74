#include "pipeline/text_rows.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "cv_imgproc.h"
#include "pipeline/baseline.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;

namespace {

// Lengths are in text heights.
constexpr double kSameLine = 0.6;    // between baselines
constexpr double kOverlap = 1.5;     // of a letter leaning over the next one
constexpr double kWordSpace = 3;     // wider spaces may part columns
constexpr double kWide = 10;         // a column's line; numbers of a table are narrower
constexpr int kLeastOfGutter = 3;    // wide lines on both sides
constexpr double kBeside = 3;        // what a letter without a chain is from its row
constexpr double kBaselineStep = 8;  // between points of a baseline

/// A chain on its way into a row.
struct Piece {
    std::vector<int> letters;
    int left;
    int right;  ///< the first column beyond it
    double left_y;
    double right_y;  ///< the baseline's ends
    int row = -1;

    double width() const { return right - left; }
};

Piece piece_of(const Rects& letters, Chain chain, int text_height) {
    std::vector<Place> feet;
    for (const int k : chain) feet.push_back(foot_of(letters[k]));
    const Baseline baseline(feet, foot_tolerance(text_height));
    const Rect& first = letters[chain.front()];
    const Rect& last = letters[chain.back()];
    const int right = last.x + last.width;
    return {std::move(chain), first.x, right, baseline.at(first.x), baseline.at(right - 1.0)};
}

/// The last piece seen at each height.
class LastSeen {
 public:
    explicit LastSeen(double unit) : band_(std::max(kSameLine * unit, 1.0)) {}

    void put(double y, int piece) { seen_[band_of(y)] = piece; }

    /// The piece within a band of y that `better` prefers to the others; -1 when there is none.
    template <class Allowed, class Better>
    int find(double y, const Allowed& allowed, const Better& better) const {
        int best = -1;
        for (int band = band_of(y) - 1; band <= band_of(y) + 1; ++band) {
            const auto found = seen_.find(band);
            if (found == seen_.end() || !allowed(found->second)) continue;
            if (best < 0 || better(found->second, best)) best = found->second;
        }
        return best;
    }

 private:
    int band_of(double y) const { return static_cast<int>(std::floor(y / band_)); }

    double band_;
    std::unordered_map<int, int> seen_;
};

/// A piece and the one that follows it on its line.
struct Neighbours {
    int left;
    int right;
};

/// Pieces that stand on one line beside each other, ordered by the right one's beginning. Each has one neighbour
/// to each side at most.
std::vector<Neighbours> neighbours_on_lines(const std::vector<Piece>& pieces, double unit) {
    std::vector<int> order(pieces.size());
    std::iota(order.begin(), order.end(), 0);
    const auto at = [&](int k) -> const Piece& { return pieces[static_cast<size_t>(k)]; };
    std::sort(order.begin(), order.end(),
              [&](int a, int b) { return std::pair(at(a).left, a) < std::pair(at(b).left, b); });
    LastSeen seen(unit);
    std::vector<Neighbours> neighbours;
    std::vector<bool> followed(pieces.size());
    for (const int right : order) {
        const auto allowed = [&](int left) {
            return !followed[static_cast<size_t>(left)] &&
                   at(left).right <= at(right).left + kOverlap * unit &&
                   std::fabs(at(left).right_y - at(right).left_y) <= kSameLine * unit;
        };
        const auto nearer = [&](int a, int b) { return at(a).right > at(b).right; };
        const int left = seen.find(at(right).left_y, allowed, nearer);
        if (left >= 0) {
            followed[static_cast<size_t>(left)] = true;
            neighbours.push_back({left, right});
        }
        seen.put(at(right).right_y, right);
    }
    return neighbours;
}

/// Columns of the page that part columns of text.
class Gutters {
 public:
    Gutters(const std::vector<Piece>& pieces, const std::vector<Neighbours>& neighbours, double unit)
        : unit_(unit) {
        int most = 0;
        for (const Piece& piece : pieces) most = std::max(most, piece.right);
        std::vector<int> lines(static_cast<size_t>(cell(most)) + 2);
        for (const Neighbours& pair : neighbours) {
            const Piece& left = pieces[static_cast<size_t>(pair.left)];
            const Piece& right = pieces[static_cast<size_t>(pair.right)];
            if (std::min(left.width(), right.width()) < kWide * unit || right.left <= left.right) continue;
            ++lines[static_cast<size_t>(cell(left.right))];
            --lines[static_cast<size_t>(cell(right.left)) + 1];
        }
        before_.push_back(0);
        int n = 0;
        for (const int change : lines) before_.push_back(before_.back() + ((n += change) >= kLeastOfGutter));
    }

    bool between(const Piece& left, const Piece& right) const {
        return before_[static_cast<size_t>(cell(right.left)) + 1] >
               before_[static_cast<size_t>(cell(left.right))];
    }

 private:
    int cell(int x) const { return static_cast<int>(x / unit_); }

    double unit_;
    std::vector<int> before_;  ///< how many cells to the left are gutters
};

/// Numbers the rows; returns how many there are.
int join_lines(std::vector<Piece>& pieces, double unit) {
    const std::vector<Neighbours> neighbours = neighbours_on_lines(pieces, unit);
    const Gutters gutters(pieces, neighbours, unit);
    int rows = 0;
    std::vector<int> before(pieces.size(), -1);
    for (const Neighbours& pair : neighbours) {
        const Piece& left = pieces[static_cast<size_t>(pair.left)];
        const Piece& right = pieces[static_cast<size_t>(pair.right)];
        if (right.left - left.right <= kWordSpace * unit || !gutters.between(left, right))
            before[static_cast<size_t>(pair.right)] = pair.left;
    }
    for (size_t k = 0; k < pieces.size(); ++k)
        if (before[k] < 0) pieces[k].row = rows++;
    for (const Neighbours& pair : neighbours)  // a piece's row is known before that of the piece to its right
        if (before[static_cast<size_t>(pair.right)] >= 0)
            pieces[static_cast<size_t>(pair.right)].row = pieces[static_cast<size_t>(pair.left)].row;
    return rows;
}

/// Gives letters without a chain the row of the piece that they are beside.
class Joining {
 public:
    Joining(const Rects& letters, const std::vector<Piece>& pieces, double unit)
        : letters_(letters), pieces_(pieces), unit_(unit) {}

    /// For each letter, a loose one's row when one looks to its left or to its right; -1 for none.
    std::vector<int> rows(const std::vector<int>& loose, bool leftward) const {
        std::vector<int> order(pieces_.size());
        std::iota(order.begin(), order.end(), 0);
        const auto edge = [&](int k) {
            const Piece& piece = pieces_[static_cast<size_t>(k)];
            return leftward ? piece.left : -piece.right;
        };
        const auto middle = [&](int letter) {
            const int x = letters_[letter].x + letters_[letter].width / 2;
            return leftward ? x : -x;
        };
        std::sort(order.begin(), order.end(),
                  [&](int a, int b) { return std::pair(edge(a), a) < std::pair(edge(b), b); });
        std::vector<int> letters = loose;
        std::sort(letters.begin(), letters.end(),
                  [&](int a, int b) { return std::pair(middle(a), a) < std::pair(middle(b), b); });
        LastSeen seen(unit_);
        std::vector<int> found(static_cast<size_t>(letters_.size), -1);
        size_t next = 0;
        for (const int letter : letters) {
            for (; next < order.size() && edge(order[next]) <= middle(letter); ++next) {
                const Piece& piece = pieces_[static_cast<size_t>(order[next])];
                seen.put(leftward ? piece.right_y : piece.left_y, order[next]);
            }
            found[static_cast<size_t>(letter)] = row_beside(letter, seen, leftward);
        }
        return found;
    }

 private:
    int row_beside(int letter, const LastSeen& seen, bool leftward) const {
        const Rect& rect = letters_[letter];
        const auto near = [&](int k) {
            const Piece& piece = pieces_[static_cast<size_t>(k)];
            const double y = leftward ? piece.right_y : piece.left_y;
            const int gap = leftward ? rect.x - piece.right : piece.left - (rect.x + rect.width);
            return gap <= kBeside * unit_ && rect.y < y && rect.y + rect.height > y - unit_ &&
                   rect.y + rect.height < y + unit_ / 2;
        };
        // Marks such as hyphens stand half a text height above the line.
        const double foot = rect.y + rect.height - 1.0;
        for (const double y : {foot, foot + unit_ / 2}) {
            const int k = seen.find(y, near, [](int, int) { return false; });
            if (k >= 0) return pieces_[static_cast<size_t>(k)].row;
        }
        return -1;
    }

    const Rects& letters_;
    const std::vector<Piece>& pieces_;
    double unit_;
};

std::vector<std::vector<int>> letters_of_rows(const Rects& letters, int text_height) {
    std::vector<Piece> pieces;
    std::vector<bool> chained(static_cast<size_t>(letters.size));
    for (Chain& chain : find_chains(letters, text_height)) {
        for (const int k : chain) chained[static_cast<size_t>(k)] = true;
        pieces.push_back(piece_of(letters, std::move(chain), text_height));
    }
    const int n = join_lines(pieces, text_height);
    std::vector<std::vector<int>> rows(static_cast<size_t>(n));
    for (const Piece& piece : pieces) {
        std::vector<int>& row = rows[static_cast<size_t>(piece.row)];
        row.insert(row.end(), piece.letters.begin(), piece.letters.end());
    }
    std::vector<int> loose;
    for (int k = 0; k < letters.size; ++k)
        if (!chained[static_cast<size_t>(k)]) loose.push_back(k);
    const Joining joining(letters, pieces, text_height);
    const std::vector<int> to_left = joining.rows(loose, true), to_right = joining.rows(loose, false);
    for (const int k : loose) {
        const auto at = static_cast<size_t>(k);
        const int row = to_left[at] >= 0 ? to_left[at] : to_right[at];
        if (row >= 0) rows[static_cast<size_t>(row)].push_back(k);
    }
    for (std::vector<int>& row : rows)
        std::sort(row.begin(), row.end(),
                  [&](int a, int b) { return std::pair(letters[a].x, a) < std::pair(letters[b].x, b); });
    return rows;
}

std::vector<Place> baseline_of(const Rects& letters, int text_height) {
    std::vector<Place> feet;
    feet.reserve(static_cast<size_t>(letters.size));
    for (int k = 0; k < letters.size; ++k) feet.push_back(foot_of(letters[k]));
    const Baseline baseline(feet, foot_tolerance(text_height));
    const double left = letters[0].x;
    const Rect rect = bounding_rect(letters);
    const double right = rect.x + rect.width - 1.0;
    const int steps =
        std::max(1, static_cast<int>(std::ceil((right - left) / (kBaselineStep * text_height))));
    std::vector<Place> points;
    for (int k = 0; k <= steps; ++k) {
        const double x = left + (right - left) * k / steps;
        points.push_back({x, baseline.at(x)});
    }
    return points;
}

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

TextRows find_rows(const Rects& letters, int text_height, const WayBack& way_back) {
    TextRows rows;
    if (text_height <= 0) return rows;  // no letters
    for (const std::vector<int>& members : letters_of_rows(letters, text_height)) {
        TextRow& row = rows.emplace_back();
        for (const int k : members) row.components.push_back(letters[k]);
        row.rect = bounding_rect(row.components);
        row.baseline = baseline_of(row.components, text_height);
        CImgproc::convexHull(corner_pixels(row.components), row.hull);
        row.min_area = CImgproc::minAreaRect(row.hull);
        row.on_photo = way_back.of(row.rect);
    }
    const auto height = [](const TextRow& row) { return row.baseline[row.baseline.size() / 2].y; };
    std::stable_sort(rows.begin(), rows.end(), [&](const TextRow& a, const TextRow& b) {
        return std::pair(height(a), a.rect.x) < std::pair(height(b), b.rect.x);
    });
    return rows;
}

}  // namespace docprep
