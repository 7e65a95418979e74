#include "base/fp_strict.h"
//
#include "algorithms/adaptive_threshold.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "base/row_spans.h"

namespace orvex_cv_991 {

namespace {

/// A part of a window: the span of 2^level rows or columns that lies `back` of them from one end.
struct Part {
    int level, back;
};

/// The parts of a window of `length`, the shortest first: one for each binary digit, but spans no longer than
/// 2^highest, so that several of these may be needed.
std::vector<Part> parts_of(int length, int highest) {
    std::vector<Part> parts;
    int back = 0;
    for (int level = 0; level < highest; ++level) {
        if (!(length >> level & 1)) continue;
        parts.push_back({level, back});
        back += 1 << level;
    }
    for (; back < length; back += 1 << highest) parts.push_back({highest, back});
    return parts;
}

std::vector<Part> parts_of(int length) {
    return parts_of(length, floor_log2(length));
}

std::vector<int> reach_of(const std::vector<Part>& parts) {
    std::vector<int> reach(static_cast<size_t>(parts.back().level) + 1, 0);
    for (const Part& part : parts) reach[static_cast<size_t>(part.level)] = part.back;
    return reach;
}

/// The outcome of the double expression as a straight line: v > sum / count + offset where sum <= count * v +
/// intercept, for every byte v and every sum of `count` bytes.
///
/// For one v both steps of the expression are monotonic in the sum, so one sum parts the outcomes; from one v
/// to the next that sum moves by `count`, unless rounding interferes, and then there is no line. Every v is
/// checked.
std::optional<int32_t> find_intercept(int32_t count, double offset) {
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
        if (std::clamp(count * v + intercept, -1, most) != limits[v]) return std::nullopt;
    return intercept;
}

/// What both ways to sum up share: the extents, the count of each window, and the walk over rows.
class WindowThreshold {
 public:
    WindowThreshold(const Mat<unsigned char>& src, int half, double offset, bool inverse, Isa isa,
                    unsigned char* out)
        : src_(src),
          rows_(src.rows),
          cols_(src.cols),
          // Reaching further than the image changes nothing.
          half_rows_(std::min(half, src.rows - 1)),
          half_cols_(std::min(half, src.cols - 1)),
          height_(2 * half_rows_ + 1),
          width_(2 * half_cols_ + 1),
          offset_(offset),
          invert_(inverse ? 255 : 0),
          isa_(isa),
          out_(out),
          padded_(static_cast<ptrdiff_t>(cols_) + 2 * static_cast<ptrdiff_t>(half_cols_)),
          counts_(static_cast<size_t>(cols_)),
          sums_(static_cast<size_t>(cols_)) {}

    void run() {
        // Sums of a column in 16 bits, and lines whose numbers and differences stay in 32: windows of up to
        // 257 rows.
        constexpr int kMostRows = 65535 / 255;
        constexpr int64_t kMostPixels = std::numeric_limits<int32_t>::max() / (2 * 256);
        if (height_ <= kMostRows && int64_t{height_} * width_ <= kMostPixels)
            run_narrow();
        else
            run_wide();
    }

 private:
    /// Calls compare(row) for every row, after take(row) for each row of its window and add_nothing() for
    /// each below the image.
    template <class Take, class AddNothing, class Compare>
    void walk(Take take, AddNothing add_nothing, Compare compare) {
        for (int64_t arriving = 0; arriving < static_cast<int64_t>(rows_) + half_rows_; ++arriving) {
            if (arriving < rows_)
                take(src_.data + arriving * cols_);
            else
                add_nothing();
            if (arriving >= half_rows_) compare(static_cast<int>(arriving) - half_rows_);
        }
    }

    // Rows of the window that lie inside the image.
    int height_at(int row) const {
        return std::min(row + half_rows_, rows_ - 1) - std::max(row - half_rows_, 0) + 1;
    }

    void count_pixels(int height) {
        for (int col = 0; col < cols_; ++col) {
            const int width = std::min(col + half_cols_, cols_ - 1) - std::max(col - half_cols_, 0) + 1;
            counts_[static_cast<size_t>(col)] = width * height;
        }
    }

    void compare_with_mean(int row, int begin, int end) {
        const ptrdiff_t at = static_cast<ptrdiff_t>(row) * cols_ + begin;
        kernels::compare_with_mean(isa_, src_.data + at, sums_.data() + begin, counts_.data() + begin,
                                   offset_, out_ + at, end - begin, invert_);
    }

    void run_narrow() {
        const auto add = [this](const uint16_t* a, const uint16_t* b, uint16_t* to) {
            kernels::add_words16(isa_, a, b, to, cols_);
        };
        const std::vector<Part> down_parts = parts_of(height_);
        RowSpans<uint16_t, decltype(add)> down(reach_of(down_parts), static_cast<size_t>(cols_), 0, add);
        std::vector<const uint16_t*> down_spans(down_parts.size());

        // Along the row: spans of columns as long as 16 bits hold their sums, each level in a row of its own,
        // with zeros for what lies outside the image: the window of column c begins at element c. All parts
        // but the longest ones sum up to less than one of those.
        const int highest = std::min(floor_log2(65535 / (255 * height_)), floor_log2(width_));
        const std::vector<Part> along_parts = parts_of(width_, highest);
        const int narrow_parts = static_cast<int>(std::count_if(
            along_parts.begin(), along_parts.end(), [&](const Part& part) { return part.level < highest; }));
        const bool fits = int64_t{255} * height_ * width_ <= 65535;
        std::vector<Scratch<uint16_t>> levels(static_cast<size_t>(highest) + 1);
        for (Scratch<uint16_t>& level : levels) level.assign(static_cast<size_t>(padded_), 0);
        std::vector<const uint16_t*> along_spans;

        // Columns whose window is not cut at the sides.
        const int inner_begin = std::min(half_cols_, cols_),
                  inner_end = std::max(inner_begin, cols_ - half_cols_);
        const auto spans_from = [&](int col) {
            along_spans.clear();
            for (const Part& part : along_parts)
                along_spans.push_back(levels[static_cast<size_t>(part.level)].data() + part.back + col);
            return along_spans.data();
        };
        const int parts = static_cast<int>(along_parts.size());
        const auto by_mean = [&](int row, int begin, int end) {
            kernels::sum_rows32(isa_, spans_from(begin), parts, sums_.data() + begin, end - begin);
            compare_with_mean(row, begin, end);
        };

        int height_of_line = 0;
        std::optional<int32_t> intercept;
        const auto compare = [&](int row) {
            for (size_t k = 0; k < down_parts.size(); ++k)
                down_spans[k] = down.span(down_parts[k].level, down_parts[k].back);
            kernels::sum_rows16(isa_, down_spans.data(), static_cast<int>(down_spans.size()),
                                levels[0].data() + half_cols_, cols_);
            for (int level = 0; level < highest; ++level) {
                const uint16_t* const from = levels[static_cast<size_t>(level)].data();
                kernels::add_words16(isa_, from, from + (1 << level),
                                     levels[static_cast<size_t>(level) + 1].data(), padded_ - (1 << level));
            }
            const int height = height_at(row);
            if (height != height_of_line) {
                count_pixels(height);
                intercept = find_intercept(width_ * height, offset_);
                height_of_line = height;
            }
            if (!intercept || inner_begin == inner_end) return by_mean(row, 0, cols_);
            by_mean(row, 0, inner_begin);
            const ptrdiff_t at = static_cast<ptrdiff_t>(row) * cols_ + inner_begin;
            kernels::compare_with_line(isa_, src_.data + at, spans_from(inner_begin),
                                       fits ? parts : narrow_parts, parts, width_ * height, *intercept,
                                       out_ + at, inner_end - inner_begin, invert_);
            by_mean(row, inner_end, cols_);
        };
        walk(
            [&](const unsigned char* pixels) {
                kernels::widen_bytes16(isa_, pixels, down.next(), cols_);
                down.push();
            },
            [&] {
                std::fill_n(down.next(), cols_, uint16_t{0});
                down.push();
            },
            compare);
    }

    // Windows so large that sums need all 32 bits, in which they wrap.
    void run_wide() {
        const auto add = [this](const uint32_t* a, const uint32_t* b, uint32_t* to) {
            kernels::add_words32(isa_, a, b, to, cols_);
        };
        const std::vector<Part> down_parts = parts_of(height_), along_parts = parts_of(width_);
        RowSpans<uint32_t, decltype(add)> down(reach_of(down_parts), static_cast<size_t>(cols_), 0, add);
        Scratch<uint32_t> padded(static_cast<size_t>(padded_));
        const auto compare = [&](int row) {
            std::fill(padded.begin(), padded.end(), 0u);
            for (const Part& part : down_parts) {
                uint32_t* const to = padded.data() + half_cols_;
                add(to, down.span(part.level, part.back), to);
            }
            // Spans of columns are doubled in place, and each part is added while its level stands.
            std::fill(sums_.begin(), sums_.end(), 0u);
            int level = 0;
            for (const Part& part : along_parts) {
                for (; level < part.level; ++level) {
                    const ptrdiff_t span = ptrdiff_t{1} << level;
                    kernels::add_words32(isa_, padded.data(), padded.data() + span, padded.data(),
                                         padded_ - span);
                }
                kernels::add_words32(isa_, sums_.data(), padded.data() + part.back, sums_.data(), cols_);
            }
            count_pixels(height_at(row));
            compare_with_mean(row, 0, cols_);
        };
        walk(
            [&](const unsigned char* pixels) {
                std::copy_n(pixels, cols_, down.next());
                down.push();
            },
            [&] {
                std::fill_n(down.next(), cols_, 0u);
                down.push();
            },
            compare);
    }

    const Mat<unsigned char>& src_;
    const int rows_, cols_, half_rows_, half_cols_, height_, width_;
    const double offset_;
    const uint8_t invert_;
    const Isa isa_;
    unsigned char* const out_;
    const ptrdiff_t padded_;   // columns of a row with what lies outside the image
    Scratch<int32_t> counts_;  // pixels of each window of a row
    Scratch<uint32_t> sums_;
};

}  // namespace

void threshold_by_window(const Mat<unsigned char>& src, int half, double offset, bool inverse, Isa isa,
                         unsigned char* out) {
    if (half < 0)
        std::fill_n(out, static_cast<ptrdiff_t>(src.rows) * src.cols,
                    static_cast<unsigned char>(inverse ? 255 : 0));
    else
        WindowThreshold(src, half, offset, inverse, isa, out).run();
}

}  // namespace orvex_cv_991
