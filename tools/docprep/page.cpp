#include "page.h"

#include <utility>

namespace docprep {

namespace {

void fill_outside(Page& page, unsigned char value) {
    if (page.inside.empty()) return;
    const ptrdiff_t n = static_cast<ptrdiff_t>(page.binary.rows) * page.binary.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        if (page.inside.data[i] == 0) page.binary.data[i] = value;
}

}  // namespace

Page level_page(const Image& gray, const Binarisation& how, const Deskew& deskew) {
    Page page;
    binarise(deskewed(gray, deskew, page.inside), how, page.binary);
    fill_outside(page, 255);
    return page;
}

Image black_on_white(Page page) {
    ~page.binary;
    fill_outside(page, 255);
    return std::move(page.binary);
}

}  // namespace docprep
