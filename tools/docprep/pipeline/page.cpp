#include "pipeline/page.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/drawing.h"
#include "cv_imgproc.h"
#include "pipeline/edge_marks.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Point;
using orvex_cv_991::Size;

namespace {

/// Sets pixels where the mask has a value; an empty mask has none.
void fill(Image& picture, const Image& mask, unsigned char where, unsigned char value) {
    if (mask.empty()) return;
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        picture.data[i] = mask.data[i] == where ? value : picture.data[i];  // all stored: in vectors
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

/// 255 on the convex hull of the letters, with a margin for dots and accents.
Image text_block(const PageSource& source) {
    constexpr double kMargin = 0.25;  // of the text height
    const double margin = kMargin * source.text_height;
    const int last_col = source.deskew.cols - 1, last_row = source.deskew.rows - 1;
    Points corners;
    for (int k = 0; k < source.letters.size; ++k) {
        const Bounds bounds = bounds_on_page(source.letters[k], source.deskew);
        for (const double x : {bounds.left - margin, bounds.right + margin})
            for (const double y : {bounds.top - margin, bounds.bottom + margin})
                corners.push_back(Point(static_cast<int>(std::lround(std::clamp(x, 0.0, double(last_col)))),
                                        static_cast<int>(std::lround(std::clamp(y, 0.0, double(last_row))))));
    }
    Points hull;
    CImgproc::convexHull(corners, hull);
    Image block;
    block.mat_create(source.deskew.rows, source.deskew.cols, 1, 0);
    fill_convex(block, hull, 255);
    return block;
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
    constexpr int kDotsPerTextHeight = 6;
    constexpr int kLeast = 70, kMost = 200;
    return std::clamp(kDotsPerTextHeight * text_height, kLeast, kMost);
}

Page make_page(const PageSource& source, PageKind kind) {
    const Deskew& deskew = source.deskew;
    const bool has_seals = !source.clean.empty();
    Image inside;  // stays empty where the page is the photograph
    const auto level = [&](const Image& photo) {
        return deskew.none() ? photo : deskewed(photo, deskew, inside);
    };
    Image clean = level(has_seals ? source.clean : source.gray);
    Image on_paper;
    if (!source.paper.everywhere())
        on_paper = deskewed_mask(source.paper.mask, Size(source.gray.cols, source.gray.rows), deskew);

    Page page;
    if (kind != PageKind::kBinary) {
        page.picture = with_soft_ink(clean, on_paper, source.text_height, page.ink, &page.light);
    } else {
        if (deskew.none() && !has_seals)
            page.picture = source.binary;
        else
            binarise(clean, source.how, page.picture);
        ~page.picture;
    }
    const Image outside = outside_of(inside, on_paper);
    fill(page.picture, outside, 255, 255);
    const Image wiped = wipe_edge_marks(page.picture, outside, text_block(source));
    page.print = print_of(page.picture);
    if (kind == PageKind::kGray) {
        page.picture = has_seals ? level(source.gray) : std::move(clean);
        fill(page.picture, outside, 255, 255);
        fill(page.picture, wiped, 0, 255);
    }
    fill(page.print, inside, 0, 255);
    return page;
}

}  // namespace docprep
