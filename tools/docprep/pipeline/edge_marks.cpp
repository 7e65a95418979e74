#include "pipeline/edge_marks.h"

#include "pipeline/flood.h"

namespace docprep {

namespace {

/// What is lighter is paper.
constexpr unsigned char kLightestMark = 230;

constexpr unsigned char kWiped = 0;
constexpr unsigned char kLeft = 255;

}  // namespace

Image wipe_edge_marks(Image& page, const Image& outside, const Image& text) {
    Image state;
    state.mat_create(page.rows, page.cols, 1, kLeft);
    Flood wipe(page.rows, page.cols, [&](ptrdiff_t at) {
        if (page.data[at] >= kLightestMark || text.data[at] != 0) return false;
        page.data[at] = 255;
        state.data[at] = kWiped;
        return true;
    });
    wipe.from_edges();
    const ptrdiff_t n = static_cast<ptrdiff_t>(page.rows) * page.cols;
    for (ptrdiff_t at = 0; at < n && !outside.empty(); ++at) {
        if (outside.data[at] != 0 || page.data[at] >= kLightestMark) continue;
        bool beside = false;
        for_each_neighbour(at, page.rows, page.cols,
                           [&](ptrdiff_t next) { beside |= outside.data[next] != 0; });
        if (beside) wipe.from(at);
    }
    return state;
}

}  // namespace docprep
