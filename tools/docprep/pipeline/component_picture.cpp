#include "pipeline/component_picture.h"

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

void paint(Image& picture, int row, int col, const Colour& colour) {
    std::memcpy(picture.data + 3 * (static_cast<ptrdiff_t>(row) * picture.cols + col), colour.bgr, 3);
}

/// The background up to `margin` pixels away.
void paint_round(Image& picture, const Mat<int>& labels, int row, int col, int margin, const Colour& colour) {
    for (int y = std::max(row - margin, 0); y <= std::min(row + margin, picture.rows - 1); ++y)
        for (int x = std::max(col - margin, 0); x <= std::min(col + margin, picture.cols - 1); ++x)
            if (labels.data[static_cast<ptrdiff_t>(y) * picture.cols + x] == 0) paint(picture, y, x, colour);
}

}  // namespace

Colour colour_of(Fate fate) {
    switch (fate) {
        case Fate::kText:
            return {{136, 112, 92}};
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
    std::vector<Fate> fates;
    for (const Rect& rect : rects_of_labels(labels, n))
        fates.push_back(fate_of(rect, print.text.text_height, binary.rows, binary.cols));
    Image picture;
    picture.mat_create(binary.rows, binary.cols, 3, 255);
    const int margin = line_thickness(picture);
    const int* label = labels.data;
    for (int row = 0; row < binary.rows; ++row)
        for (int col = 0; col < binary.cols; ++col, ++label) {
            if (*label == 0) continue;
            const Fate fate = fates[static_cast<size_t>(*label)];
            paint(picture, row, col, colour_of(fate));
            if (fate != Fate::kText) paint_round(picture, labels, row, col, margin, colour_of(fate));
        }
    return picture;
}

}  // namespace docprep
