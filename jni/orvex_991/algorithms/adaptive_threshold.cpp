#include "base/fp_strict.h"
//
#include "algorithms/adaptive_threshold.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "base/row_spans.h"

namespace orvex_cv_991 {

namespace {

/// Square windows over an image, cut at its edges.
class Windows {
 public:
    // Reaching further than the image changes nothing.
    Windows(const Mat<unsigned char>& src, int half)
        : rows(src.rows),
          cols(src.cols),
          half_rows(std::min(half, src.rows - 1)),
          half_cols(std::min(half, src.cols - 1)),
          height(2 * half_rows + 1),
          width(2 * half_cols + 1) {}

    /// Rows of the window around a pixel of `row` that lie inside the image.
    int height_at(int row) const { return inside(row, half_rows, rows); }
    int width_at(int col) const { return inside(col, half_cols, cols); }
    /// Columns of a row with what its windows cover outside the image.
    ptrdiff_t padded_cols() const {
        return static_cast<ptrdiff_t>(cols) + 2 * static_cast<ptrdiff_t>(half_cols);
    }

    const int rows, cols, half_rows, half_cols;
    const int height, width;  // uncut

 private:
    static int inside(int at, int half, int size) {
        return std::min(at + half, size - 1) - std::max(at - half, 0) + 1;
    }
};

/// One piece of a window: the span of 2^level rows or columns that lies `back` of them from one end.
struct Span {
    int level, back;
};

/// The spans that make up a window of `length`, the shortest first: one for each binary digit, but none
/// longer than 2^highest, so that several of these may be needed.
Scratch<Span> spans_of(int length, int highest) {
    Scratch<Span> spans;
    int back = 0;
    for (int level = 0; level < highest; ++level) {
        if (!(length >> level & 1)) continue;
        spans.push_back({level, back});
        back += 1 << level;
    }
    for (; back < length; back += 1 << highest) spans.push_back({highest, back});
    return spans;
}

void add_rows(Isa isa, const uint16_t* a, const uint16_t* b, uint16_t* out, ptrdiff_t n) {
    kernels::add_words16(isa, a, b, out, n);
}
void add_rows(Isa isa, const uint32_t* a, const uint32_t* b, uint32_t* out, ptrdiff_t n) {
    kernels::add_words32(isa, a, b, out, n);
}
void widen_row(Isa isa, const unsigned char* pixels, uint16_t* out, ptrdiff_t n) {
    kernels::widen_bytes16(isa, pixels, out, n);
}
void widen_row(Isa, const unsigned char* pixels, uint32_t* out, ptrdiff_t n) {
    std::copy_n(pixels, n, out);
}

/// Sums down the columns of a window, for rows that arrive one at a time.
template <class Sum>
class ColumnSums {
 public:
    ColumnSums(const Windows& windows, Isa isa)
        : isa_(isa),
          cols_(windows.cols),
          spans_(spans_of(windows.height, floor_log2(windows.height))),
          rows_(reach_of(spans_), static_cast<size_t>(windows.cols), 0, Add{isa, windows.cols}) {}

    void take(const unsigned char* pixels) {
        widen_row(isa_, pixels, rows_.next(), cols_);
        rows_.push();
    }
    /// A row below the image.
    void take_nothing() {
        std::fill_n(rows_.next(), cols_, Sum{0});
        rows_.push();
    }

    size_t count() const { return spans_.size(); }
    /// Span k of the window that ends with the latest row, one sum a column.
    const Sum* span(size_t k) { return rows_.span(spans_[k].level, spans_[k].back); }

 private:
    struct Add {
        Isa isa;
        ptrdiff_t n;
        void operator()(const Sum* a, const Sum* b, Sum* out) const { add_rows(isa, a, b, out, n); }
    };

    static Scratch<int> reach_of(const Scratch<Span>& spans) {
        Scratch<int> reach(static_cast<size_t>(spans.back().level) + 1, 0);
        for (const Span& span : spans) reach[span.level] = span.back;
        return reach;
    }

    const Isa isa_;
    const ptrdiff_t cols_;
    const Scratch<Span> spans_;
    RowSpans<Sum, Add> rows_;
};

/// The outcome of the double expression as a straight line: v > sum / count + offset where sum <= count * v +
/// intercept, for every byte v and every sum of `count` bytes.
///
/// For one v both steps of the expression are monotonic in the sum, so one sum parts the outcomes; from
/// one v to the next that sum moves by `count`, unless rounding interferes, and then there is no line.
/// Every v is checked.
struct Line {
    bool decides;  // as the double expression does
    int32_t intercept;
};

Line find_line(int32_t count, double offset) {
    const int32_t most = 255 * count;
    const auto is_above = [n = static_cast<double>(count), offset](int v, int32_t sum) {
        return static_cast<double>(v) > static_cast<double>(sum) / n + offset;
    };
    // The largest sum over which v is above, -1 for none.
    const auto limit_of = [&](int v, int32_t guess) {
        if ((guess < 0 || is_above(v, guess)) && (guess == most || !is_above(v, guess + 1))) return guess;
        int32_t low = -1, high = most;
        while (low < high) {
            const int32_t middle = low + (high - low + 1) / 2;
            if (is_above(v, middle))
                low = middle;
            else
                high = middle - 1;
        }
        return low;
    };
    int32_t limits[256];
    limits[0] = limit_of(0, -1);
    for (int v = 1; v < 256; ++v) {
        const int32_t last = limits[v - 1];
        limits[v] = limit_of(v, last < 0 ? -1 : last > most - count ? most : last + count);
    }
    // With no limit inside the range, nothing or everything is above.
    const int32_t* const inner =
        std::find_if(limits, limits + 256, [&](int32_t sum) { return sum >= 0 && sum < most; });
    const int32_t intercept = inner < limits + 256 ? *inner - static_cast<int32_t>(inner - limits) * count
                              : limits[0] < 0      ? -1 - most
                                                   : most;
    for (int v = 0; v < 256; ++v)
        if (std::clamp(count * v + intercept, -1, most) != limits[v]) return {false, 0};
    return {true, intercept};
}

/// Compares the pixels of a row with sums over their windows.
class Comparison {
 public:
    Comparison(const Mat<unsigned char>& src, const Windows& windows, double offset, bool inverse, Isa isa,
               unsigned char* out)
        : src_(src),
          windows_(windows),
          offset_(offset),
          invert_(inverse ? 255 : 0),
          isa_(isa),
          out_(out),
          counts_(static_cast<size_t>(windows.cols)) {}

    /// Makes `row` the row to compare.
    void start(int row) {
        first_ = static_cast<ptrdiff_t>(row) * src_.cols;
        const int height = windows_.height_at(row);
        if (height == height_) return;
        height_ = height;
        for (int col = 0; col < windows_.cols; ++col) counts_[col] = windows_.width_at(col) * height;
        is_line_known_ = false;
    }

    /// @param sums  of the windows of the columns from `begin` on
    void by_mean(int begin, int end, const uint32_t* sums) const {
        kernels::compare_with_mean(isa_, src_.data + first_ + begin, sums, counts_.data() + begin, offset_,
                                   out_ + first_ + begin, end - begin, invert_);
    }

    /// Whether windows that the sides do not cut can be compared by a line, in integers.
    bool has_line() {
        if (!is_line_known_) line_ = find_line(windows_.width * height_, offset_);
        is_line_known_ = true;
        return line_.decides;
    }

    /// @param spans  rows that add up to the sums, `narrow` of them within 16 bits
    void by_line(int begin, int end, const Scratch<const uint16_t*>& spans, int narrow) const {
        kernels::compare_with_line(isa_, src_.data + first_ + begin, spans.data(), narrow,
                                   static_cast<int>(spans.size()), windows_.width * height_, line_.intercept,
                                   out_ + first_ + begin, end - begin, invert_);
    }

 private:
    const Mat<unsigned char>& src_;
    const Windows& windows_;
    const double offset_;
    const uint8_t invert_;
    const Isa isa_;
    unsigned char* const out_;
    Scratch<int32_t> counts_;  // pixels of the window of each column
    ptrdiff_t first_ = 0;      // byte of the row
    int height_ = 0;           // of the windows of the row
    bool is_line_known_ = false;
    Line line_{};
};

/// Windows of which 16 bits hold the sum of a column.
class NarrowSums {
 public:
    // Lines need numbers and differences that stay in 32 bits.
    static bool fit(const Windows& windows) {
        constexpr int kMostRows = kMost / 255;
        constexpr int64_t kMostPixels = std::numeric_limits<int32_t>::max() / (2 * 256);
        return windows.height <= kMostRows && int64_t{windows.height} * windows.width <= kMostPixels;
    }

    NarrowSums(const Windows& windows, Isa isa)
        : windows_(windows),
          isa_(isa),
          columns_(windows, isa),
          highest_(std::min(floor_log2(kMost / (255 * windows.height)), floor_log2(windows.width))),
          spans_(spans_of(windows.width, highest_)),
          narrow_(narrow_spans()),
          levels_(static_cast<size_t>(highest_) + 1),
          sums_(static_cast<size_t>(windows.cols)) {
        for (Scratch<uint16_t>& level : levels_) level.assign(static_cast<size_t>(windows.padded_cols()), 0);
        column_spans_.resize(columns_.count());
        row_spans_.resize(spans_.size());
    }

    ColumnSums<uint16_t>& columns() { return columns_; }

    void compare(Comparison& comparison) {
        add_columns();
        double_spans();
        const int cols = windows_.cols, half = windows_.half_cols;
        // The columns whose window is not cut at the sides.
        const int begin = std::min(half, cols), end = std::max(begin, cols - half);
        if (begin == end || !comparison.has_line()) return compare_by_mean(comparison, 0, cols);
        compare_by_mean(comparison, 0, begin);
        comparison.by_line(begin, end, row_spans_from(begin), narrow_);
        compare_by_mean(comparison, end, cols);
    }

 private:
    static constexpr int kMost = 65535;

    /// How many of the spans add up to sums that 16 bits hold: all of them or all but the longest ones,
    /// which sum up to less than one of those.
    int narrow_spans() const {
        if (int64_t{255} * windows_.height * windows_.width <= kMost) return static_cast<int>(spans_.size());
        return static_cast<int>(std::count_if(spans_.begin(), spans_.end(),
                                              [this](const Span& span) { return span.level < highest_; }));
    }

    void add_columns() {
        for (size_t k = 0; k < column_spans_.size(); ++k) column_spans_[k] = columns_.span(k);
        kernels::sum_rows16(isa_, column_spans_.data(), static_cast<int>(column_spans_.size()),
                            levels_[0].data() + windows_.half_cols, windows_.cols);
    }

    void double_spans() {
        for (int level = 0; level < highest_; ++level) {
            const uint16_t* const from = levels_[level].data();
            kernels::add_words16(isa_, from, from + (1 << level), levels_[level + 1].data(),
                                 windows_.padded_cols() - (1 << level));
        }
    }

    /// The rows of spans that add up to the windows of the columns from `col` on.
    const Scratch<const uint16_t*>& row_spans_from(int col) {
        for (size_t k = 0; k < spans_.size(); ++k)
            row_spans_[k] = levels_[spans_[k].level].data() + spans_[k].back + col;
        return row_spans_;
    }

    void compare_by_mean(const Comparison& comparison, int begin, int end) {
        kernels::sum_rows32(isa_, row_spans_from(begin).data(), static_cast<int>(row_spans_.size()),
                            sums_.data(), end - begin);
        comparison.by_mean(begin, end, sums_.data());
    }

    const Windows& windows_;
    const Isa isa_;
    ColumnSums<uint16_t> columns_;
    const int highest_;  // level of the longest span along the row: 16 bits hold its sums
    const Scratch<Span> spans_;
    const int narrow_;
    // By level, a row of the sums of that many columns, with zeros for what lies outside the image: the
    // window of column c begins at element c.
    Scratch<Scratch<uint16_t>> levels_;
    Scratch<uint32_t> sums_;
    Scratch<const uint16_t*> column_spans_, row_spans_;
};

/// Windows so large that sums need all 32 bits, in which they wrap.
class WideSums {
 public:
    WideSums(const Windows& windows, Isa isa)
        : windows_(windows),
          isa_(isa),
          columns_(windows, isa),
          spans_(spans_of(windows.width, floor_log2(windows.width))),
          padded_(static_cast<size_t>(windows.padded_cols())),
          sums_(static_cast<size_t>(windows.cols)) {}

    ColumnSums<uint32_t>& columns() { return columns_; }

    void compare(const Comparison& comparison) {
        const int cols = windows_.cols;
        std::fill(padded_.begin(), padded_.end(), 0u);
        uint32_t* const inside = padded_.data() + windows_.half_cols;
        for (size_t k = 0; k < columns_.count(); ++k)
            kernels::add_words32(isa_, inside, columns_.span(k), inside, cols);
        // Spans of columns are doubled in place, and each is added while its level stands.
        std::fill(sums_.begin(), sums_.end(), 0u);
        int level = 0;
        for (const Span& span : spans_) {
            for (; level < span.level; ++level) {
                const ptrdiff_t apart = ptrdiff_t{1} << level;
                kernels::add_words32(isa_, padded_.data(), padded_.data() + apart, padded_.data(),
                                     windows_.padded_cols() - apart);
            }
            kernels::add_words32(isa_, sums_.data(), padded_.data() + span.back, sums_.data(), cols);
        }
        comparison.by_mean(0, cols, sums_.data());
    }

 private:
    const Windows& windows_;
    const Isa isa_;
    ColumnSums<uint32_t> columns_;
    const Scratch<Span> spans_;
    Scratch<uint32_t> padded_;  // a row with what lies outside the image on both sides
    Scratch<uint32_t> sums_;
};

/// Walks down the image: rows arrive ahead of the one that is compared, by half a window.
template <class Sums>
void threshold_rows(const Mat<unsigned char>& src, const Windows& windows, Sums sums,
                    Comparison& comparison) {
    for (int64_t arriving = 0; arriving < static_cast<int64_t>(windows.rows) + windows.half_rows;
         ++arriving) {
        if (arriving < windows.rows)
            sums.columns().take(src.data + arriving * windows.cols);
        else
            sums.columns().take_nothing();
        if (arriving < windows.half_rows) continue;
        comparison.start(static_cast<int>(arriving) - windows.half_rows);
        sums.compare(comparison);
    }
}

}  // namespace

void threshold_by_window(const Mat<unsigned char>& src, int half, double offset, bool inverse, Isa isa,
                         unsigned char* out) {
    if (half < 0) {
        std::fill_n(out, static_cast<ptrdiff_t>(src.rows) * src.cols,
                    static_cast<unsigned char>(inverse ? 255 : 0));
        return;
    }
    const Windows windows(src, half);
    Comparison comparison(src, windows, offset, inverse, isa, out);
    if (NarrowSums::fit(windows))
        threshold_rows(src, windows, NarrowSums(windows, isa), comparison);
    else
        threshold_rows(src, windows, WideSums(windows, isa), comparison);
}

}  // namespace orvex_cv_991
