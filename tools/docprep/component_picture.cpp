#include "component_picture.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "cv_imgproc.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Rect;

namespace {

/// The upright rectangles round what has a label, by the labels; the first, of the background, means nothing.
std::vector<Rect> rects_of_labels(const Mat<int>& labels, int n) {
    std::vector<Rect> rects(static_cast<size_t>(n) + 1);
    const int* label = labels.data;
    for (int row = 0; row < labels.rows; ++row)
        for (int col = 0; col < labels.cols; ++col, ++label) {
            if (*label == 0) continue;
            Rect& rect = rects[static_cast<size_t>(*label)];
            if (rect.height == 0) rect = Rect(col, row, 1, 1);
            const int right = std::max(rect.x + rect.width, col + 1);
            rect.x = std::min(rect.x, col);
            rect.width = right - rect.x;
            rect.height = row + 1 - rect.y;
        }
    return rects;
}

}  // namespace

Colour colour_of(Fate fate) {
    switch (fate) {
        case Fate::kText:
            return {{52, 36, 28}};
        case Fate::kBorder:
            return {{176, 168, 160}};
        case Fate::kTall:
            return {{28, 96, 224}};
        case Fate::kWide:
            return {{196, 64, 144}};
        default:
            return {{40, 24, 208}};
    }
}

Image draw_components(const Image& binary, const Print& print) {
    Mat<int> labels;
    int n = 0;
    CImgproc::bwlabel(binary, labels, n);
    std::vector<Colour> colours;
    for (const Rect& rect : rects_of_labels(labels, n))
        colours.push_back(colour_of(fate_of(rect, print.text.text_height, binary.rows, binary.cols)));
    colours[0] = {{255, 255, 255}};
    Image picture;
    picture.mat_create(binary.rows, binary.cols, 3, 0);
    const ptrdiff_t pixels = static_cast<ptrdiff_t>(binary.rows) * binary.cols;
    for (ptrdiff_t i = 0; i < pixels; ++i)
        std::memcpy(picture.data + 3 * i, colours[static_cast<size_t>(labels.data[i])].bgr, 3);
    return picture;
}

}  // namespace docprep
