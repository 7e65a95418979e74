#include "base/fp_strict.h"
//
#include "algorithms/affine_warp.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/numeric.h"
#include "base/scratch.h"

namespace orvex_cv_991 {

Affine inverse(const Affine& forward) {
    const float* const m = forward.m;
    const float determinant = m[0] * m[4] - m[1] * m[3];
    const double k = determinant != 0.0f ? 1.0 / static_cast<double>(determinant) : 0.0;
    Affine inverse;
    float* const a = inverse.m;
    a[0] = static_cast<float>(static_cast<double>(m[4]) * k);
    a[1] = static_cast<float>(static_cast<double>(m[1]) * -k);
    a[3] = static_cast<float>(static_cast<double>(m[3]) * -k);
    a[4] = static_cast<float>(static_cast<double>(m[0]) * k);
    a[2] = -(a[0] * m[2]) - a[1] * m[5];
    a[5] = -(m[2] * a[3]) - a[4] * m[5];
    return inverse;
}

namespace {

/// Weight of the neighbour before a coordinate, 0 .. 2048; for not-a-number 0.
int weight_q11(float coordinate, int floor) {
    const float fraction = coordinate - static_cast<float>(floor);
    return saturate_to_int((1.0f - fraction) * static_cast<float>(kOne_q11));
}

float at(const CoordinateLine& line, int col) {
    return (line.row_share + line.step * static_cast<float>(col)) + line.offset;
}

int floor_at(const CoordinateLine& line, int col) {
    return floor_to_int(at(line, col));
}

/// Half-open range of output columns.
struct Columns {
    int begin, end;
};

// The columns up to `cols` whose floor lies in 0 .. size - 2. Each step of at() is monotonic in the column,
// so with finite ends they form one range, found by bisection.
Columns inside(const CoordinateLine& line, int cols, int size) {
    const auto first_where = [&](auto holds) {  // holds is false up to some column, then true
        int low = 0, high = cols;
        while (low < high) {
            const int middle = low + (high - low) / 2;
            if (holds(floor_at(line, middle)))
                high = middle;
            else
                low = middle + 1;
        }
        return low;
    };
    const auto is_negative = [](int floor) { return floor < 0; };
    const auto is_beyond = [size](int floor) { return floor >= size - 1; };
    Columns columns{};
    if (line.step >= 0)
        columns = {first_where([&](int floor) { return !is_negative(floor); }), first_where(is_beyond)};
    else
        columns = {first_where([&](int floor) { return !is_beyond(floor); }), first_where(is_negative)};
    columns.end = std::max(columns.begin, columns.end);
    return columns;
}

/// Walks the output in row order.
class Warp {
 public:
    Warp(const Mat<unsigned char>& src, Mat<unsigned char>& dst, const Affine& inverse, Isa isa,
         unsigned char* mask)
        : src_(src),
          a_(inverse.m),
          isa_(isa),
          cols_(dst.cols),
          rows_(dst.rows),
          channels_(dst.channels),
          src_rows_(channels_ == 0 ? std::max(src.rows, 1) : src.rows),
          src_cols_(channels_ == 0 ? std::max(src.cols, 1) : src.cols),
          stride_(static_cast<ptrdiff_t>(src.cols) * src.channels),
          out_(dst.data),
          mask_(mask) {}

    void run() {
        // Coordinates that depend on the column or the row alone become tables, worked out once.
        if (a_[1] == 0.0f && a_[3] == 0.0f && is_finite(0) && is_finite(rows_ - 1))
            run_separable();
        else
            run_general();
    }

 private:
    CoordinateLine x(int row) const { return {a_[1] * static_cast<float>(row), a_[0], a_[2]}; }
    CoordinateLine y(int row) const { return {a_[4] * static_cast<float>(row), a_[3], a_[5]}; }

    // Whether both ends of an output row, and so all that lies between, have finite coordinates.
    bool is_finite(int row) const {
        return std::isfinite(at(x(row), 0)) && std::isfinite(at(x(row), cols_ - 1)) &&
               std::isfinite(at(y(row), 0)) && std::isfinite(at(y(row), cols_ - 1));
    }

    void run_general() {
        for (int row = 0; row < rows_; ++row) {
            const CoordinateLine x_at = x(row), y_at = y(row);
            if (!is_finite(row)) {
                for (int col = 0; col < cols_; ++col) sample(at(x_at, col), at(y_at, col));
                continue;
            }
            const Columns in_x = inside(x_at, cols_, src_cols_), in_y = inside(y_at, cols_, src_rows_);
            const int begin = std::max(in_x.begin, in_y.begin);
            const int end = std::max(begin, std::min(in_x.end, in_y.end));
            copy(x_at, y_at, 0, begin);
            kernels::warp_row(isa_, src_.data, stride_, channels_, x_at, y_at, begin, out_, end - begin);
            advance(end - begin, 1);
            copy(x_at, y_at, end, cols_);
        }
    }

    void run_separable() {
        // Rows lie along a line as columns do.
        const CoordinateLine x_at = x(0), down = {0, a_[4], a_[5]};
        const Columns columns = inside(x_at, cols_, src_cols_), rows = inside(down, rows_, src_rows_);
        copy_rows(x_at, 0, rows.begin);
        if (columns.end - columns.begin == cols_ && are_pairs(x_at, columns) && are_pairs(down, rows))
            halve(rows.end - rows.begin, floor_at(down, rows.begin), floor_at(x_at, 0));
        else
            interpolate(x_at, columns, down, rows);
        copy_rows(x_at, rows.end, rows_);
    }

    /// Whether each of a range of columns, or of rows, lies in the middle between two of the source, and the next one
    /// between the next two. Up to 2^22 all halves are exact.
    static bool are_pairs(const CoordinateLine& line, const Columns& range) {
        if (line.step != 2.0f || range.begin == range.end) return false;
        const float first = at(line, range.begin), last = at(line, range.end - 1);
        return first - std::floor(first) == 0.5f && last < 4194304.0f;
    }

    /// Whole rows of pixels that are the means of two by two, from a pixel of the source on.
    void halve(int count, int row, int col) {
        kernels::halve_rows(isa_, src_.data + row * stride_ + static_cast<ptrdiff_t>(col) * channels_,
                            stride_, channels_, out_, cols_, count);
        advance(cols_ * count, 1);
    }

    void interpolate(const CoordinateLine& x_at, const Columns& columns, const CoordinateLine& down,
                     const Columns& rows) {
        Stretch stretch(*this, x_at, columns);
        RowWriter writer(*this, stretch);
        // Where the rows of a block lie: the row above and its weight.
        int32_t tops[kRowBlock];
        int16_t weights[kRowBlock];
        for (int begin = rows.begin, count = 0; begin < rows.end; begin += count) {
            count = std::min(kRowBlock, rows.end - begin);
            kernels::sample_columns(isa_, down, begin, tops, weights, count);
            for (int k = 0; k < count; ++k) {
                const CoordinateLine y_at = y(begin + k);
                copy(x_at, y_at, 0, columns.begin);
                writer.write(tops[k], weights[k], out_);
                advance(columns.end - columns.begin, 1);
                copy(x_at, y_at, columns.end, cols_);
            }
        }
    }

    /// Whole rows of the output, copied from the nearest source pixels.
    void copy_rows(const CoordinateLine& x_at, int begin, int end) {
        for (int row = begin; row < end; ++row) copy(x_at, y(row), 0, cols_);
    }

    /// Interpolation along a source row, the same for every row.
    class Stretch {
     public:
        Stretch(const Warp& warp, const CoordinateLine& x_at, const Columns& columns)
            : isa_(warp.isa_),
              channels_(warp.channels_),
              stride_(warp.stride_),
              left_(static_cast<size_t>(columns.end - columns.begin)),
              weight_(left_.size()) {
            kernels::sample_columns(isa_, x_at, columns.begin, left_.data(), weight_.data(),
                                    static_cast<int>(left_.size()));
            for (size_t k = 0; k < left_.size() && is_copy_; ++k)
                is_copy_ = left_[k] == left_[0] + static_cast<int>(k) && weight_[k] == kOne_q11;
        }

        int first_col() const { return left_.empty() ? 0 : left_[0]; }
        /// Whether the row is a part of the source row as it is.
        bool is_copy() const { return is_copy_; }
        size_t elements() const { return left_.size() * static_cast<size_t>(channels_); }

        /// Stretches one row.
        void apply(const unsigned char* row, int32_t* out_q11) {
            if (at_.empty()) make_tables();
            const ptrdiff_t done = in_steps();
            kernels::stretch_row_in_steps(isa_, row, base_.data(), index_.data(), weights_.data(), out_q11,
                                          done / 4);
            stretch_rest(row, out_q11 + done);
        }

        /// Stretches and blends two rows.
        void apply(const unsigned char* upper, const unsigned char* lower, int weight, unsigned char* out) {
            if (at_.empty()) make_tables();
            const ptrdiff_t done = in_steps(), rest = static_cast<ptrdiff_t>(elements()) - done;
            kernels::blend_rows_in_steps(isa_, upper, lower, base_.data(), index_.data(), weights_.data(),
                                         weight, out, done / 4);
            if (rest == 0) return;
            rest_of_upper_.resize(static_cast<size_t>(rest));
            rest_of_lower_.resize(static_cast<size_t>(rest));
            stretch_rest(upper, rest_of_upper_.data());
            stretch_rest(lower, rest_of_lower_.data());
            kernels::blend_rows(isa_, rest_of_upper_.data(), rest_of_lower_.data(), weight, out + done, rest);
        }

     private:
        /// Elements that are done in steps, the leading ones.
        ptrdiff_t in_steps() const { return 4 * static_cast<ptrdiff_t>(base_.size()); }

        void stretch_rest(const unsigned char* row, int32_t* out_q11) const {
            const ptrdiff_t done = in_steps();
            kernels::stretch_row(isa_, row, at_.data() + done, element_weight_.data() + done, channels_,
                                 out_q11, static_cast<ptrdiff_t>(elements()) - done);
        }

        void make_tables() {
            at_.resize(elements());
            element_weight_.resize(elements());
            size_t element = 0;
            for (size_t k = 0; k < left_.size(); ++k) {
                for (int c = 0; c < channels_; ++c, ++element) {
                    at_[element] = left_[k] * channels_ + c;
                    element_weight_[element] = weight_[k];
                }
            }
            if (kernels::can_stretch_in_steps(isa_)) make_steps();
        }

        // Four elements a step, as long as their neighbours lie within 16 bytes: always where the image
        // grows, and down to about a third of the size for one channel.
        void make_steps() {
            if (stride_ < 16) return;
            const size_t steps = elements() / 4;
            base_.reserve(steps);
            index_.resize(16 * steps);
            weights_.resize(8 * steps);
            for (size_t step = 0; step < steps; ++step) {
                const auto [least, most] = std::minmax_element(&at_[4 * step], &at_[4 * step] + 4);
                // 16 bytes that lie inside the row, the last ones of it at most.
                const int32_t base = std::min(*least, static_cast<int32_t>(stride_ - 16));
                if (*most + channels_ - base > 15) return;
                base_.push_back(base);
                for (size_t e = 0; e < 4; ++e) {
                    unsigned char* const index = &index_[16 * step + 4 * e];
                    int16_t* const weights = &weights_[8 * step + 2 * e];
                    index[0] = static_cast<unsigned char>(at_[4 * step + e] - base);
                    index[2] = static_cast<unsigned char>(index[0] + channels_);
                    index[1] = index[3] = 255;
                    weights[0] = element_weight_[4 * step + e];
                    weights[1] = static_cast<int16_t>(kOne_q11 - weights[0]);
                }
            }
        }

        const Isa isa_;
        const int channels_;
        const ptrdiff_t stride_;
        // By column of the output: its left neighbour's column in the source, and that one's weight.
        Scratch<int32_t> left_;
        Scratch<int16_t> weight_;
        bool is_copy_ = true;
        // By byte of the output row: the byte of the left neighbour in the source row, and its weight.
        Scratch<int32_t> at_;
        Scratch<int16_t> element_weight_;
        // The same for the leading bytes that can be done in steps.
        Scratch<int32_t> base_;
        Scratch<unsigned char> index_;
        Scratch<int16_t> weights_;
        // Of the others, stretched.
        Scratch<int32_t> rest_of_upper_, rest_of_lower_;
    };

    /// Writes what is interpolated of output rows, in the way that takes least.
    class RowWriter {
     public:
        RowWriter(const Warp& warp, Stretch& stretch)
            : stretch_(stretch),
              isa_(warp.isa_),
              channels_(warp.channels_),
              source_(warp.src_.data),
              stride_(warp.stride_),
              serves_once_(std::fabs(warp.a_[4]) >= 2) {}

        /// One row, between `top`, which has the weight, and the row below it, which has the rest.
        void write(int top, int weight, unsigned char* out) {
            const ptrdiff_t bytes = static_cast<ptrdiff_t>(stretch_.elements());
            if (weight == kOne_q11 && stretch_.is_copy())
                std::memcpy(out, row(top) + static_cast<ptrdiff_t>(stretch_.first_col()) * channels_,
                            static_cast<size_t>(bytes));
            else if (serves_once_)
                stretch_.apply(row(top), row(top + 1), weight, out);
            else
                kernels::blend_rows(isa_, stretched_q11(top), stretched_q11(top + 1), weight, out, bytes);
        }

     private:
        const unsigned char* row(int at) const { return source_ + at * stride_; }

        const int32_t* stretched_q11(int at) {
            Scratch<int32_t>& elements = stretched_[at % 2];
            if (stretched_row_[at % 2] != at) {
                elements.resize(stretch_.elements());
                stretch_.apply(row(at), elements.data());
                stretched_row_[at % 2] = at;
            }
            return elements.data();
        }

        Stretch& stretch_;
        const Isa isa_;
        const int channels_;
        const unsigned char* const source_;
        const ptrdiff_t stride_;
        const bool serves_once_;  // whether no source row is stretched for two output rows
        // Both rows between which output rows lie, kept while several do. Neighbours differ in parity.
        Scratch<int32_t> stretched_[2];
        int stretched_row_[2] = {-1, -1};
    };

    // The definition for one pixel, for any coordinate. Not-a-number has floor 0 and weight 0.
    void sample(float x_at, float y_at) {
        const int row = floor_to_int(y_at), col = floor_to_int(x_at);
        const bool is_inside = row >= 0 && row < src_rows_ - 1 && col >= 0 && col < src_cols_ - 1;
        const int nearest_row = std::min(std::max(row, 0), src_rows_ - 1);
        const int nearest_col = std::min(std::max(col, 0), src_cols_ - 1);
        const unsigned char* const p =
            src_.data + nearest_row * stride_ + static_cast<ptrdiff_t>(nearest_col) * channels_;
        const int wx = is_inside ? weight_q11(x_at, col) : 0, wy = is_inside ? weight_q11(y_at, row) : 0;
        for (int c = 0; c < channels_; ++c) {
            if (is_inside) {
                const unsigned char *const upper = p + c, *const lower = upper + stride_;
                const int sum = (upper[0] * wx + upper[channels_] * (kOne_q11 - wx)) * wy +
                                (lower[0] * wx + lower[channels_] * (kOne_q11 - wx)) * (kOne_q11 - wy);
                out_[c] = static_cast<unsigned char>(sum >> (2 * kWeightBits));
            } else {
                out_[c] = p[c];
            }
        }
        advance(1, is_inside ? 1 : 0);
    }

    // Columns begin .. end - 1 of an output row with finite coordinates, copied from
    // the nearest source pixels.
    void copy(const CoordinateLine& x_at, const CoordinateLine& y_at, int begin, int end) {
        if (end - begin <= 2) {  // as at the sides of enlarged images
            for (int col = begin; col < end; ++col) sample(at(x_at, col), at(y_at, col));
            return;
        }
        kernels::copy_row(isa_, src_.data, src_rows_, src_cols_, channels_, x_at, y_at, begin, out_,
                          end - begin);
        advance(end - begin, 0);
    }

    void advance(int n, unsigned char interpolated) {
        out_ += static_cast<ptrdiff_t>(n) * channels_;
        if (mask_) mask_ = std::fill_n(mask_, n, interpolated);
    }

    static constexpr int kRowBlock = 128;

    const Mat<unsigned char>& src_;
    const float* const a_;
    const Isa isa_;
    const int cols_, rows_, channels_;
    // Of the source. Without channels any extents are legal, and no point lies inside one of a single
    // pixel, as none does in one that is negative.
    const int src_rows_, src_cols_;
    const ptrdiff_t stride_;
    unsigned char* out_;
    unsigned char* mask_;
};

}  // namespace

void warp_linear(const Mat<unsigned char>& src, Mat<unsigned char>& dst, const Affine& inverse, Isa isa,
                 unsigned char* mask) {
    if (dst.rows <= 0 || dst.cols <= 0) return;
    // Without channels any extent fits into no bytes, and walking it could take for ever.
    if (dst.channels == 0 && !mask) return;
    Warp(src, dst, inverse, isa, mask).run();
}

}  // namespace orvex_cv_991
