#include "pipeline/sharpness.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "base/failure.h"
#include "cv_imgproc.h"
#include "pipeline/reduced.h"
#include "pipeline/text_chains.h"
#include "pipeline/turn.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// More do not move the median.
constexpr int kMostSamples = 25;

// Marks of noise look like letters, too, but they are a few pixels high, or do not stand on lines. Of 67 photographs and
// pages the lowest text is 9 pixels high, and the least share of neighbours that stand on one line is 0.42; of noise
// that is 6 pixels high and more it is 0.21 at most, where more than 3 pairs do.
constexpr int kLeastTextHeight = 6;
constexpr int kLeastAligned = 4;
constexpr double kLeastAlignedShare = 1.0 / 3;

/// Whether the chained ones among the letters stand on lines.
bool stand_on_lines(const Rects& letters, int text_height) {
    TextComponents chained;
    chained.kept = chained_letters(letters, find_chains(letters, text_height));
    chained.text_height = text_height;
    const Alignment alignment = alignment_of(chained);
    const int aligned = std::max(alignment.feet, alignment.heads);
    return aligned >= kLeastAligned && aligned >= kLeastAlignedShare * alignment.pairs;
}

/// Whether there are letters, and not only marks that look like some; they may lie sideways.
bool is_text(const TextComponents& text, int rows) {
    if (text.text_height < kLeastTextHeight) return false;
    return stand_on_lines(text.kept, text.text_height) ||
           stand_on_lines(turned_clockwise(text.kept, rows), text.text_height);
}

/// A component with a quarter of its height round it, as far as the picture reaches.
Image with_margin(const Image& gray, const Rect& component) {
    const int margin = component.height / 4 + 1;
    Rect area(component.x - margin, component.y - margin, component.width + 2 * margin,
              component.height + 2 * margin);
    area = CImgproc::checkRectInMat(Size(gray.cols, gray.rows), area);
    return cut_out(gray, area);
}

/// Strokes alone have no room for the measure, which needs 3 columns when they are reduced to 15 rows.
bool measurable(const Rect& component) {
    return 3 * component.width >= component.height;
}

}  // namespace

std::string verdict(const Sharpness& sharpness) {
    if (!sharpness.text) return "no text";
    return sharpness.value < kSharp ? "blurred" : "sharp";
}

Sharpness measure_sharpness(const Image& gray, const TextComponents& text) {
    if (!is_text(text, gray.rows)) return {};
    std::vector<float> values;
    const int step = text.kept.size / kMostSamples + 1;
    for (int k = 0; k < text.kept.size; k += step)
        if (measurable(text.kept[k]))
            values.push_back(CImgproc::getSharpness(with_margin(gray, text.kept[k])));
    if (values.empty()) return {};
    const auto median = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), median, values.end());
    return {*median, true};
}

void require_sharpness(const std::string& file, const Sharpness& sharpness, float least) {
    if (sharpness.value >= least) return;
    char text[80];
    std::snprintf(text, sizeof text, "is blurred: sharpness %.6g is below %.6g",
                  static_cast<double>(sharpness.value), static_cast<double>(least));
    throw Refusal(file, text);
}

}  // namespace docprep
