#include "sharpness.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "cv_imgproc.h"
#include "failure.h"
#include "reduced.h"

namespace docprep {

using orvex_cv_991::CImgproc;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

/// More do not move the median.
constexpr int kMostSamples = 25;

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
