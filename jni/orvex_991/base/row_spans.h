// Internal: windows of rows by doubling.
#ifndef ORVEX_991_BASE_ROW_SPANS_H
#define ORVEX_991_BASE_ROW_SPANS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/scratch.h"

namespace orvex_cv_991 {

inline int floor_log2(int n) {
    int log = 0;
    while (n >> (log + 1)) ++log;
    return log;
}

/// Combinations of 1, 2, 4 .. consecutive rows, for rows that arrive one at a time.
///
/// A span of level k is the combination of 2^k rows; it is made of two spans of the level below. Windows
/// of any length are put together from spans: two that overlap where the combination of a row with
/// itself is the row (maximum, minimum, or), one a binary digit of the length otherwise (sum). Rows
/// before the first are `neutral`.
/// @tparam Combine  combine(const T* a, const T* b, T* out) writes a row; `out` aliases neither
template <class T, class Combine>
class RowSpans {
 public:
    /// @param reach  one entry a level: how far back of the latest row the level's spans will be asked for
    RowSpans(const Scratch<int>& reach, size_t width, T neutral, Combine combine)
        : width_(width), combine_(combine) {
        for (size_t level = 0; level < reach.size(); ++level) {
            const bool is_highest = level + 1 == reach.size();
            const int rows = 1 + std::max(reach[level], is_highest ? 0 : 1 << level);
            rings_.push_back({rows, Scratch<T>(static_cast<size_t>(rows) * width, neutral)});
        }
    }

    /// Where to put the next row before push().
    T* next() { return row(0, latest_ + 1); }

    /// Takes the row in next() as the latest.
    void push() {
        ++latest_;
        for (size_t level = 0; level + 1 < rings_.size(); ++level)
            combine_(row(level, latest_), row(level, latest_ - (int64_t{1} << level)),
                     row(level + 1, latest_));
    }

    /// The span of 2^level rows that ends `back` rows before the latest.
    const T* span(int level, int back) { return row(static_cast<size_t>(level), latest_ - back); }

 private:
    struct Ring {
        int rows;
        Scratch<T> elements;
    };

    T* row(size_t level, int64_t index) {
        Ring& ring = rings_[level];
        const int64_t slot = (index % ring.rows + ring.rows) % ring.rows;
        return ring.elements.data() + static_cast<size_t>(slot) * width_;
    }

    const size_t width_;
    const Combine combine_;
    Scratch<Ring> rings_;
    int64_t latest_ = -1;
};

/// Reach for windows of `length` rows made of two overlapping spans of the highest level that fits.
inline Scratch<int> overlapping_reach(int length) {
    Scratch<int> reach(static_cast<size_t>(floor_log2(length)) + 1, 0);
    reach.back() = length - (1 << floor_log2(length));
    return reach;
}

}  // namespace orvex_cv_991

#endif  // ORVEX_991_BASE_ROW_SPANS_H
