#include "pipeline/row_picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace docprep {

using orvex_cv_991::Rect;

namespace {

/// Fills columns left .. right - 1 of rows top .. bottom - 1, as far as they lie in the image.
void fill(Image& image, int left, int top, int right, int bottom, const Colour& colour) {
    left = std::max(left, 0);
    right = std::min(right, image.cols);
    for (int row = std::max(top, 0); row < std::min(bottom, image.rows); ++row) {
        unsigned char* pixel = image.data + (static_cast<ptrdiff_t>(row) * image.cols + left) * 3;
        for (int col = left; col < right; ++col, pixel += 3) std::memcpy(pixel, colour.bgr, 3);
    }
}

void outline(Image& image, const Rect& rect, int thickness, const Colour& colour) {
    const int right = rect.x + rect.width;
    const int bottom = rect.y + rect.height;
    fill(image, rect.x - thickness, rect.y - thickness, right + thickness, rect.y, colour);
    fill(image, rect.x - thickness, bottom, right + thickness, bottom + thickness, colour);
    fill(image, rect.x - thickness, rect.y, rect.x, bottom, colour);
    fill(image, right, rect.y, right + thickness, bottom, colour);
}

}  // namespace

Colour row_colour(int row) {
    // Steps of the golden section round the circle of hues never come back to one already used, and put
    // neighbours 137 degrees apart.
    constexpr double kGoldenSection = 0.6180339887498949;
    // Green looks brightest: at full strength it and yellow would vanish on paper.
    constexpr double kBrightest = 150;
    double hue = 6 * std::fmod(row * kGoldenSection, 1.0);
    double channels[3];  // R, G, B
    for (int k = 0; k < 3; ++k) {
        const double distance = std::fabs(std::fmod(hue - 2 * k + 9, 6.0) - 3);  // from the channel's own hue
        channels[k] = 255 * std::clamp(2 - distance, 0.0, 1.0);
    }
    const double brightness = 0.30 * channels[0] + 0.59 * channels[1] + 0.11 * channels[2];
    const double scale = std::min(1.0, kBrightest / brightness);
    Colour colour{};
    for (int k = 0; k < 3; ++k) colour.bgr[2 - k] = static_cast<unsigned char>(channels[k] * scale);
    return colour;
}

Image draw_rows(Image page, const TextRows& rows) {
    const int thickness = line_thickness(page);
    Image picture = in_colour(std::move(page));
    for (size_t row = 0; row < rows.size(); ++row) {
        const Rects& components = rows[row].components;
        const Colour colour = row_colour(static_cast<int>(row));
        for (int k = 0; k < components.size; ++k) outline(picture, components[k], thickness, colour);
    }
    return picture;
}

}  // namespace docprep
