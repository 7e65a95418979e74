#include "page.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "cv_imgproc.h"
#include "edge_marks.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// Sets pixels where the mask has a value; an empty mask has none.
void fill(Image& picture, const Image& mask, unsigned char where, unsigned char value) {
    if (mask.empty()) return;
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        if (mask.data[i] == where) picture.data[i] = value;
}

/// 255 beyond the photograph and where it shows no paper; empty where the page is all paper.
Image outside_of(const Image& inside, const Image& on_paper) {
    Image outside;
    const Image& shape = inside.empty() ? on_paper : inside;
    if (shape.empty()) return outside;
    outside.mat_create(shape.rows, shape.cols, 1, 0);
    fill(outside, inside, 0, 255);
    fill(outside, on_paper, 0, 255);
    return outside;
}

/// The letters' places on the page, with a margin.
Rects letters_on_page(const PageSource& source) {
    constexpr double kMargin = 0.25;  // of the text height: dots and accents
    Rects places;
    const double margin = kMargin * source.text_height;
    for (int k = 0; k < source.letters.size; ++k) {
        const Bounds bounds = bounds_on_page(source.letters[k], source.deskew);
        const auto x = static_cast<int>(std::floor(bounds.left - margin));
        const auto y = static_cast<int>(std::floor(bounds.top - margin));
        places.push_back(Rect(x, y, static_cast<int>(std::ceil(bounds.right + margin)) - x + 1,
                              static_cast<int>(std::ceil(bounds.bottom + margin)) - y + 1));
    }
    return places;
}

/// 255 on what is darker than the middle.
Image print_of(const Image& soft) {
    Image print;
    CImgproc::thresholdSeg(soft, print, 128);
    ~print;
    return print;
}

}  // namespace

std::vector<std::string> page_kind_names() {
    return {"soft", "binary", "gray"};
}

int dots_per_inch(int text_height) {
    constexpr int kDotsPerTextHeight = 8;
    constexpr int kLeast = 70, kMost = 600;
    return std::clamp(kDotsPerTextHeight * text_height, kLeast, kMost);
}

Page make_page(const PageSource& source, PageKind kind) {
    const Image& gray = source.gray;
    const Deskew& deskew = source.deskew;
    Image inside;  // stays empty where the page is the photograph
    Image level = deskew.none() ? gray : deskewed(gray, deskew, inside);
    Image on_paper;
    if (!source.paper.everywhere())
        on_paper = deskewed_mask(source.paper.mask, Size(gray.cols, gray.rows), deskew);

    Page page;
    if (kind == PageKind::kBinary) {
        if (deskew.none())
            page.picture = source.binary;
        else
            binarise(level, source.how, page.picture);
        ~page.picture;
    } else {
        page.picture = with_soft_ink(level, on_paper, source.text_height, page.ink);
    }
    const Image outside = outside_of(inside, on_paper);
    fill(page.picture, outside, 255, 255);
    const Image wiped = wipe_edge_marks(page.picture, outside, letters_on_page(source));
    page.print = print_of(page.picture);
    if (kind == PageKind::kGray) {
        page.picture = std::move(level);
        fill(page.picture, outside, 255, 255);
        fill(page.picture, wiped, 0, 255);
    }
    fill(page.print, inside, 0, 255);
    return page;
}

}  // namespace docprep
