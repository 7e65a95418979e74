#include "pipeline/in_words.h"

#include <cmath>

#include "base/number_text.h"

namespace docprep {

std::string in_words(const Binarisation& how) {
    if (how.method == BinariseMethod::kOtsu) return "Otsu's threshold " + std::to_string(how.threshold);
    const std::string block = std::to_string(how.block);
    return "adaptive, " + number_text(how.contrast, 1) + " below the mean of " + block + " x " + block;
}

std::string in_words(const Turn& turn) {
    std::string text = "not";
    if (turn.degrees != 0)
        text = std::to_string(turn.degrees) + " degrees clockwise, " + pixel_size(turn.cols, turn.rows);
    if (!turn.evidence) return text;
    if (!turn.evidence->sure) return text + ", unsure: too little text";
    return text + ", confidence " + number_text(turn.evidence->confidence(), 2);
}

std::string in_words(const Deskew& deskew) {
    if (deskew.none()) return "not turned";
    return "turned " + number_text(std::fabs(deskew.degrees), 2) + " degrees " +
           (deskew.degrees > 0 ? "anticlockwise" : "clockwise") +
           (deskew.bend.none() ? ", " : ", straightened, ") + pixel_size(deskew.cols, deskew.rows);
}

}  // namespace docprep
