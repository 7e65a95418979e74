// Internal: 4-connected components of a binary image by runs.
#ifndef ORVEX_991_LABELLING_H
#define ORVEX_991_LABELLING_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "cv_geometry.h"
#include "cv_kernels.h"
#include "cv_mat.h"

namespace orvex_cv_991 {

/// The runs of one image row and of the row above it, while walking down the image.
///
/// Foreground is every non-zero pixel, but the image's first pixel only when it is exactly 255.
class RowRuns {
 public:
    struct Run {
        int begin;
        int end;  // exclusive
    };

    /// The runs of a row and what the walker knows them by.
    struct Row {
        std::vector<int> bounds;  // begin and end of each run in turn; past the last, right of every column
        std::vector<int> labels;
        int count = 0;

        Run run(size_t k) const { return {bounds[2 * k], bounds[2 * k + 1]}; }
    };

    RowRuns(const Mat<unsigned char>& src, Isa isa);

    /// Makes `row` the current row. Rows must come in order from 0.
    void advance(int row);

    Row& current() { return current_; }
    const Row& above() const { return above_; }

 private:
    const Mat<unsigned char>& src_;
    const Isa isa_;
    std::vector<uint64_t> words_;
    Row current_, above_;
};

/// The components of one image: found by one pass over its rows, walked again run by run as often as needed.
///
/// Components are numbered from 1 in the raster order of their first pixels. Holds a few words a component
/// and a few rows; the image must outlive it.
class Labelling {
 public:
    /// @param src 1 channel, not empty, its pixels known to be readable. Both extents may be negative: such
    ///        an image has no rows to scan, yet its first pixel counts
    Labelling(const Mat<unsigned char>& src, Isa isa);

    int components() const { return components_; }

    /// Labels that a scan pixel by pixel hands out before it knows which of them belong together: one for
    /// every run that starts under background.
    int provisional_labels() const { return static_cast<int>(component_.size()) - 1; }

    /// Bounding rectangle of component `label`, and its number of pixels.
    Rect rect(int label) const;
    int pixels(int label) const { return nodes_[static_cast<size_t>(label)].pixels; }

    /// Calls visit(row, begin, end, label) for every run of foreground, rows downward, runs to the right.
    template <class Visit>
    void for_each_run(Visit visit) const {
        RowRuns walk(src_, isa_);
        int handed_out = 0;
        for (int row = 0; row < src_.rows; ++row) {
            walk.advance(row);
            const RowRuns::Row& above = walk.above();
            RowRuns::Row& current = walk.current();
            size_t a = 0;
            for (int k = 0; k < current.count; ++k) {
                const RowRuns::Run run = current.run(static_cast<size_t>(k));
                const int label = starts_under(run, above, a) ? above.labels[a] : ++handed_out;
                current.labels[static_cast<size_t>(k)] = label;
                visit(row, run.begin, run.end, component_[static_cast<size_t>(label)]);
            }
        }
    }

 private:
    /// What is known of a label while scanning, of a component afterwards. Extents are inclusive.
    struct Node {
        int parent;  // never above the label itself
        int left, top, right, bottom;
        int pixels;
    };

    /// Whether a run above covers the first pixel of `run`; if so it is run `a` there. `a` only moves
    /// forward, past the runs that end before `run` begins.
    static bool starts_under(const RowRuns::Run& run, const RowRuns::Row& above, size_t& a) {
        while (above.run(a).end <= run.begin) ++a;
        return above.run(a).begin <= run.begin;
    }

    int root(int label);
    int join(int a, int b);
    int new_label(int row);
    void scan_rows();
    void number_components();

    const Mat<unsigned char>& src_;
    const Isa isa_;
    std::vector<Node> nodes_;     // by provisional label, later by component; entry 0 unused
    std::vector<int> component_;  // by provisional label
    int components_ = 0;
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_LABELLING_H
