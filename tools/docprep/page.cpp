#include "page.h"

#include <utility>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Size;

namespace {

/// Where `mask` is 0; an empty mask is 0 nowhere.
void fill_outside(Image& picture, const Image& mask, unsigned char value) {
    if (mask.empty()) return;
    const ptrdiff_t n = static_cast<ptrdiff_t>(picture.rows) * picture.cols;
    for (ptrdiff_t i = 0; i < n; ++i)
        if (mask.data[i] == 0) picture.data[i] = value;
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

Page make_page(const Image& gray, const Image& binary, const Binarisation& how, PageKind kind,
               const Deskew& deskew, const Paper& paper, int text_height) {
    Image inside;  // stays empty where the page is the photograph
    Image level = deskew.none() ? gray : deskewed(gray, deskew, inside);
    Image on_paper;
    if (!paper.everywhere()) on_paper = deskewed_mask(paper.mask, Size(gray.cols, gray.rows), deskew);

    Page page;
    if (kind == PageKind::kBinary) {
        if (deskew.none())
            page.print = binary;
        else
            binarise(level, how, page.print);
        page.picture = page.print;
        ~page.picture;
    } else {
        page.picture = with_soft_ink(level, on_paper, text_height, page.ink);
        page.print = print_of(page.picture);
        if (kind == PageKind::kGray) page.picture = std::move(level);
    }
    fill_outside(page.picture, inside, 255);
    fill_outside(page.picture, on_paper, 255);
    fill_outside(page.print, on_paper, 0);
    fill_outside(page.print, inside, 255);
    return page;
}

}  // namespace docprep
