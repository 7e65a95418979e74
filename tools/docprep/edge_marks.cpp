#include "edge_marks.h"

#include <utility>
#include <vector>

namespace docprep {

namespace {

/// What is lighter is paper.
constexpr unsigned char kLightestMark = 230;

constexpr unsigned char kWiped = 0;
constexpr unsigned char kNotReached = 255;

/// The picture's pixels, and which of them the search has come to.
class Search {
 public:
    Search(Image& page, const Image& text) : page_(page), text_(text), rows_(page.rows), cols_(page.cols) {
        state_.mat_create(page.rows, page.cols, 1, kNotReached);
    }

    void begin_at(ptrdiff_t pixel) {
        if (page_.data[pixel] >= kLightestMark) return;  // most are, and it should cost nothing
        reach(pixel);
        while (!open_.empty()) {
            const ptrdiff_t at = open_.back();
            open_.pop_back();
            page_.data[at] = 255;
            for_each_neighbour(at, [&](ptrdiff_t next) { reach(next); });
        }
    }

    template <class Visit>
    void for_each_neighbour(ptrdiff_t at, const Visit& visit) const {
        const ptrdiff_t x = at % cols_;
        if (x > 0) visit(at - 1);
        if (x + 1 < cols_) visit(at + 1);
        if (at >= cols_) visit(at - cols_);
        if (at + cols_ < rows_ * cols_) visit(at + cols_);
    }

    Image take_state() { return std::move(state_); }

 private:
    void reach(ptrdiff_t at) {
        if (state_.data[at] != kNotReached || page_.data[at] >= kLightestMark || text_.data[at] != 0) return;
        state_.data[at] = kWiped;
        open_.push_back(at);
    }

    Image& page_;
    const Image& text_;
    Image state_;
    ptrdiff_t rows_, cols_;
    std::vector<ptrdiff_t> open_;
};

}  // namespace

Image wipe_edge_marks(Image& page, const Image& outside, const Image& text) {
    Search search(page, text);
    const ptrdiff_t cols = page.cols, n = cols * page.rows;
    for (ptrdiff_t x = 0; x < cols; ++x) search.begin_at(x), search.begin_at(n - cols + x);
    for (ptrdiff_t y = 0; y < n; y += cols) search.begin_at(y), search.begin_at(y + cols - 1);
    for (ptrdiff_t at = 0; at < n && !outside.empty(); ++at) {
        if (outside.data[at] != 0 || page.data[at] >= kLightestMark) continue;
        bool beside = false;
        search.for_each_neighbour(at, [&](ptrdiff_t next) { beside |= outside.data[next] != 0; });
        if (beside) search.begin_at(at);
    }
    return search.take_state();
}

}  // namespace docprep
