// What a run has found, for people.
#ifndef DOCPREP_IN_WORDS_H
#define DOCPREP_IN_WORDS_H

#include <string>

#include "pipeline/report.h"

namespace docprep {

std::string in_words(const Binarisation& how);
std::string in_words(const Turn& turn);
std::string in_words(const Deskew& deskew);

}  // namespace docprep

#endif  // DOCPREP_IN_WORDS_H
