// What the commands share when they declare their options.
#ifndef DOCPREP_OPTIONS_H
#define DOCPREP_OPTIONS_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/extents.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace docprep {

/// An option whose value is a width and a height.
CLI::Option* add_extents(CLI::App& app, const std::string& name, std::optional<Extents>& value,
                         const std::string& description);

/// An option whose value is a finite number.
CLI::Option* add_number(CLI::App& app, const std::string& name, std::optional<float>& value,
                        const std::string& description);

/// An option whose value is a finite number above 0.
CLI::Option* add_positive(CLI::App& app, const std::string& name, std::optional<float>& value,
                          const std::string& description);

/// The parts of `text` between separators, some perhaps empty, without spaces round them. There is one more
/// than there are separators.
std::vector<std::string> split(const std::string& text, char separator);

/// The position of `text` among the names; "binarize" is "binarise".
/// @throws UnknownName for the option when it is none of them
size_t position_of(const std::string& option, const std::string& text, const std::vector<std::string>& names);

/// The names with commas between them.
std::string listed(const std::vector<std::string>& names);

}  // namespace docprep

#endif  // DOCPREP_OPTIONS_H
