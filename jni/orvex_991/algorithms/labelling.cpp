#include "algorithms/labelling.h"

#include <algorithm>
#include <limits>

#include "base/numeric.h"

namespace orvex_cv_991 {

RowRuns::RowRuns(const Mat<unsigned char>& src, Isa isa) : src_(src), isa_(isa) {
    const size_t cols = src.cols < 0 ? 0 : static_cast<size_t>(src.cols);
    words_.resize(cols / 64 + 1);
    for (Row* row : {&current_, &above_}) {
        row->bounds.resize(cols + 4, std::numeric_limits<int>::max());
        row->labels.resize(cols / 2 + 2);
    }
}

void RowRuns::advance(int row) {
    std::swap(current_, above_);
    const unsigned char* const pixels = src_.data + static_cast<ptrdiff_t>(row) * src_.cols;
    kernels::pack_nonzero(isa_, pixels, words_.data(), src_.cols);
    if (row == 0 && pixels[0] != 255) words_[0] &= ~uint64_t{1};

    int* const bounds = current_.bounds.data();
    const int count = kernels::find_runs(isa_, words_.data(), src_.cols, bounds);
    current_.count = static_cast<size_t>(count) / 2;
    bounds[count] = bounds[count + 1] = std::numeric_limits<int>::max();
}

Labelling::Labelling(const Mat<unsigned char>& src, Isa isa, Runs runs) : nodes_(1) {
    if (src.rows > 0)
        scan_rows(src, isa, runs);
    else if (src.data[0] == 255)
        new_label(src.rows, src.cols);
    number_components();
}

int Labelling::root(int label) {
    while (nodes_[label].parent != label) {
        int& up = nodes_[label].parent;
        up = nodes_[up].parent;
        label = up;
    }
    return label;
}

// The smaller root wins, so that a component's number follows from its first pixel.
int Labelling::join(int a, int b) {
    a = root(a);
    b = root(b);
    if (a < b) return nodes_[b].parent = a;
    return nodes_[a].parent = b;
}

int Labelling::new_label(int row, int cols) {
    const int label = static_cast<int>(nodes_.size());
    nodes_.push_back({label, cols, row, 0, 0, 0});
    return label;
}

void Labelling::scan_rows(const Mat<unsigned char>& src, Isa isa, Runs runs) {
    RowRuns walk(src, isa);
    for (int row = 0; row < src.rows; ++row) {
        walk.advance(row);
        const RowRuns::Row& above = walk.above();
        RowRuns::Row& current = walk.current();
        size_t a = 0;
        for (size_t k = 0; k < current.count; ++k) {
            const RowRuns::Run run = current.run(k);
            while (above.run(a).end <= run.begin) ++a;
            int label = above.run(a).begin <= run.begin ? above.labels[a] : new_label(row, src.cols);
            for (size_t next = a; above.run(next).begin < run.end; ++next)
                if (above.labels[next] != label) label = join(label, above.labels[next]);
            current.labels[k] = label;
            Node& node = nodes_[label];
            node.left = std::min(node.left, run.begin);
            node.right = std::max(node.right, run.end - 1);
            node.bottom = row;
            node.pixels += run.end - run.begin;
        }
        if (runs == Runs::kForget) continue;
        for (size_t k = 0; k < current.count; ++k)
            runs_.push_back({current.run(k).begin, current.run(k).end, current.labels[k]});
        row_ends_.push_back(runs_.size());
    }
}

// Every provisional label gets its component's number, and the extents of joined labels come together.
// Components take the places of labels that have had their turn.
void Labelling::number_components() {
    component_.resize(nodes_.size());
    for (size_t label = 1; label < nodes_.size(); ++label) {
        const Node from = nodes_[label];
        if (static_cast<size_t>(from.parent) == label) {
            component_[label] = ++components_;
            nodes_[components_] = from;
        } else {
            const int component = component_[from.parent];
            component_[label] = component;
            Node& to = nodes_[component];
            to.left = std::min(to.left, from.left);
            to.right = std::max(to.right, from.right);
            to.bottom = std::max(to.bottom, from.bottom);
            to.pixels += from.pixels;
        }
    }
    nodes_.resize(static_cast<size_t>(components_) + 1);
}

Rect Labelling::rect(int label) const {
    const Node& node = nodes_[label];
    return Rect(node.left, node.top, wrap_sub(wrap_add(node.right, 1), node.left),
                wrap_sub(wrap_add(node.bottom, 1), node.top));
}

}  // namespace orvex_cv_991
