// Whether a photograph is in focus.
#ifndef DOCPREP_SHARPNESS_H
#define DOCPREP_SHARPNESS_H

#include <string>

#include "base/image.h"
#include "pipeline/text_components.h"

namespace docprep {

/// Below this a photograph is called blurred. Letters in focus have 140 and more, letters that are
/// legible but soft 75.
constexpr float kSharp = 110;

struct Sharpness {
    float value = 0;    ///< 0 without text
    bool text = false;  ///< whether there was text to measure: letters on lines
};

/// "sharp", "blurred" or "no text".
std::string verdict(const Sharpness& sharpness);

/// The median of the library's measure over components of text, each with a margin. Not over the whole
/// picture: the measure looks at 15 rows, so of a page it sees where print is and not whether it is sharp,
/// and of a letter its edges, whatever the picture's resolution. Prints as the library does.
/// @param gray  the photograph; the text is that found in it
Sharpness measure_sharpness(const Image& gray, const TextComponents& text);

/// @throws Failure for a photograph that is not as sharp as `least`
void require_sharpness(const std::string& file, const Sharpness& sharpness, float least);

}  // namespace docprep

#endif  // DOCPREP_SHARPNESS_H
