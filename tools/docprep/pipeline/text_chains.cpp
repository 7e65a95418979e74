#include "pipeline/text_chains.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace docprep {

using orvex_cv_991::Rect;

namespace {

constexpr size_t kLeastLetters = 3;
constexpr int kLeastWidth = 2;  // in text heights

/// A dash, or a piece of a rule.
bool flat(const Rect& rect, int text_height) {
    return 5 * rect.height < 2 * text_height;
}

/// Letters by the cells of a grid, one text height wide and high, that their left edges pass through.
class LeftEdges {
 public:
    LeftEdges(const Rects& letters, int cell) : cell_(cell) {
        for (int k = 0; k < letters.size; ++k) {
            const Rect& rect = letters[k];
            if (flat(rect, cell_)) continue;
            for (int row = rect.y / cell_; row <= (rect.y + rect.height - 1) / cell_; ++row)
                entries_.push_back({key(row, rect.x / cell_), k});
        }
        std::sort(entries_.begin(), entries_.end());
    }

    /// Calls `visit` with the letters of the cells of these columns and rows of pixels, some of them repeatedly.
    template <class Visit>
    void for_each(int left, int right, int top, int bottom, const Visit& visit) const {
        for (int row = top / cell_; row <= bottom / cell_; ++row) {
            const int64_t end = key(row, right / cell_);
            auto entry = std::lower_bound(entries_.begin(), entries_.end(), Entry{key(row, left / cell_), 0});
            for (; entry != entries_.end() && entry->first <= end; ++entry) visit(entry->second);
        }
    }

 private:
    using Entry = std::pair<int64_t, int>;

    static int64_t key(int row, int col) { return (int64_t{row} << 32) | col; }

    int cell_;
    std::vector<Entry> entries_;
};

bool overlap_by_half(const Rect& a, const Rect& b) {
    const int both = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    return 2 * both >= std::min(a.height, b.height);
}

}  // namespace

std::vector<int> right_neighbours(const Rects& letters, int text_height) {
    const size_t n = static_cast<size_t>(letters.size);
    const int cell = std::max(text_height, 1);
    const LeftEdges edges(letters, cell);
    std::vector<int> right(n, -1);
    std::vector<int> left(n, -1);
    const auto gap = [&](int a, int b) { return letters[b].x - (letters[a].x + letters[a].width); };
    for (int k = 0; k < letters.size; ++k) {
        const Rect& letter = letters[k];
        if (flat(letter, cell)) continue;
        const int middle = letter.x + letter.width / 2;
        int nearest = -1;
        edges.for_each(middle, letter.x + letter.width + cell, letter.y, letter.y + letter.height - 1,
                       [&](int other) {
                           if (other == k || letters[other].x <= middle || gap(k, other) > cell) return;
                           if (nearest >= 0 && gap(k, other) >= gap(k, nearest)) return;
                           if (overlap_by_half(letter, letters[other])) nearest = other;
                       });
        if (nearest < 0) continue;
        int& rival = left[static_cast<size_t>(nearest)];
        if (rival >= 0 && gap(rival, nearest) <= gap(k, nearest)) continue;
        if (rival >= 0) right[static_cast<size_t>(rival)] = -1;
        rival = k;
        right[static_cast<size_t>(k)] = nearest;
    }
    return right;
}

std::vector<Chain> find_chains(const Rects& letters, int text_height) {
    const std::vector<int> right = right_neighbours(letters, text_height);
    std::vector<bool> begins(right.size(), true);
    for (const int k : right)
        if (k >= 0) begins[static_cast<size_t>(k)] = false;
    std::vector<Chain> chains;
    for (int first = 0; first < letters.size; ++first) {
        if (!begins[static_cast<size_t>(first)]) continue;
        Chain chain;
        for (int k = first; k >= 0; k = right[static_cast<size_t>(k)]) chain.push_back(k);
        const Rect& last = letters[chain.back()];
        const int width = last.x + last.width - letters[first].x;
        if (chain.size() >= kLeastLetters && width >= kLeastWidth * text_height)
            chains.push_back(std::move(chain));
    }
    return chains;
}

Rects chained_letters(const Rects& letters, const std::vector<Chain>& chains) {
    Rects chained;
    for (const Chain& chain : chains)
        for (const int k : chain) chained.push_back(letters[k]);
    return chained;
}

}  // namespace docprep
