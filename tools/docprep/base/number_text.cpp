#include "base/number_text.h"

#include <cstdio>

namespace docprep {

std::string pixel_size(int cols, int rows) {
    return std::to_string(cols) + " x " + std::to_string(rows);
}

std::string number_text(double value, int digits) {
    char text[48];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    return text;
}

}  // namespace docprep
