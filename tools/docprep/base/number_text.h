// Numbers for people.
#ifndef DOCPREP_NUMBER_TEXT_H
#define DOCPREP_NUMBER_TEXT_H

#include <string>

namespace docprep {

/// "1600 x 1200"
std::string pixel_size(int cols, int rows);

/// A number with so many digits behind the point.
std::string number_text(double value, int digits);

}  // namespace docprep

#endif  // DOCPREP_NUMBER_TEXT_H
