// Reaching pixels from pixels.
#ifndef DOCPREP_FLOOD_H
#define DOCPREP_FLOOD_H

#include <cstddef>
#include <vector>

namespace docprep {

/// Calls `visit` with the pixels to the left and right of one and above and below it, as far as there are any.
template <class Visit>
void for_each_neighbour(ptrdiff_t pixel, ptrdiff_t rows, ptrdiff_t cols, const Visit& visit) {
    const ptrdiff_t x = pixel % cols;
    if (x > 0) visit(pixel - 1);
    if (x + 1 < cols) visit(pixel + 1);
    if (pixel >= cols) visit(pixel - cols);
    if (pixel + cols < rows * cols) visit(pixel + cols);
}

/// Goes from each pixel to its neighbours, as long as they may be entered.
template <class Enter>
class Flood {
 public:
    /// @param enter  tells whether a pixel may be entered, and notes that it was: a second time it may not
    Flood(ptrdiff_t rows, ptrdiff_t cols, Enter enter) : rows_(rows), cols_(cols), enter_(enter) {}

    void from(ptrdiff_t pixel) {
        reach(pixel);
        while (!open_.empty()) {
            const ptrdiff_t at = open_.back();
            open_.pop_back();
            for_each_neighbour(at, rows_, cols_, [&](ptrdiff_t next) { reach(next); });
        }
    }

    void from_edges() {
        for (ptrdiff_t x = 0; x < cols_; ++x) {
            from(x);
            from((rows_ - 1) * cols_ + x);
        }
        for (ptrdiff_t y = 0; y < rows_; ++y) {
            from(y * cols_);
            from(y * cols_ + cols_ - 1);
        }
    }

 private:
    void reach(ptrdiff_t pixel) {
        if (enter_(pixel)) open_.push_back(pixel);
    }

    ptrdiff_t rows_, cols_;
    Enter enter_;
    std::vector<ptrdiff_t> open_;
};

}  // namespace docprep

#endif  // DOCPREP_FLOOD_H
