// What somebody who mistyped a name may have meant.
#ifndef DOCPREP_NEAR_MISS_H
#define DOCPREP_NEAR_MISS_H

#include <string>
#include <vector>

namespace docprep {

/// The name that takes the fewest changes (a letter inserted, dropped, replaced, or two neighbours exchanged;
/// upper and lower case are alike) to become `text`; of equally near ones the first. Empty when none takes
/// at most a third of the longer one's letters, or 1.
std::string nearest(const std::string& text, const std::vector<std::string>& names);

/// "; did you mean 'NAME'?" or nothing.
std::string suggestion(const std::string& text, const std::vector<std::string>& names);

}  // namespace docprep

#endif  // DOCPREP_NEAR_MISS_H
