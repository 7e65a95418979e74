// Internal: 4-connected components of a binary image by runs.
#ifndef ORVEX_991_ALGORITHMS_LABELLING_H
#define ORVEX_991_ALGORITHMS_LABELLING_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "cv_geometry.h"
#include "cv_mat.h"
#include "kernels/kernels.h"

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
        size_t count = 0;

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

/// Whether the runs of the whole image stay after labelling, 12 bytes each, or those of two rows at a time.
enum class Runs { kForget, kKeep };

/// The components of one image, found by one pass over its rows.
///
/// Components are numbered from 1 in the raster order of their first pixels. Holds a few words a
/// component besides its runs.
class Labelling {
 public:
    /// @param src 1 channel, not empty, its pixels known to be readable. Both extents may be negative: such
    ///        an image has no rows to scan, yet its first pixel counts
    Labelling(const Mat<unsigned char>& src, Isa isa, Runs runs);

    int components() const { return components_; }

    /// Labels that a scan pixel by pixel hands out before it knows which of them belong together: one for
    /// every run that starts under background.
    int provisional_labels() const { return static_cast<int>(component_.size()) - 1; }

    /// Bounding rectangle of component `label`, and its number of pixels.
    Rect rect(int label) const;
    int pixels(int label) const { return nodes_[label].pixels; }

    /// Calls visit(row, begin, end, label) for every run of foreground, rows downward, runs to the right.
    /// The runs must have been kept.
    template <class Visit>
    void for_each_run(Visit visit) const {
        size_t k = 0;
        for (size_t row = 0; row < row_ends_.size(); ++row)
            for (; k < row_ends_[row]; ++k)
                visit(static_cast<int>(row), runs_[k].begin, runs_[k].end, component_[runs_[k].label]);
    }

 private:
    /// What is known of a label while scanning, of a component afterwards. Extents are inclusive.
    struct Node {
        int parent;  // never above the label itself
        int left, top, right, bottom;
        int pixels;
    };

    struct LabelledRun {
        int begin;
        int end;  // exclusive
        int label;
    };

    int root(int label);
    int join(int a, int b);
    int new_label(int row, int cols);
    void scan_rows(const Mat<unsigned char>& src, Isa isa, Runs runs);
    void number_components();

    std::vector<Node> nodes_;     // by provisional label, later by component; entry 0 unused
    std::vector<int> component_;  // by provisional label
    int components_ = 0;
    std::vector<LabelledRun> runs_;  // with provisional labels
    std::vector<size_t> row_ends_;   // how many runs there are down to each row
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_LABELLING_H
