// A value that is none of the names which an option takes.
#ifndef DOCPREP_UNKNOWN_NAME_H
#define DOCPREP_UNKNOWN_NAME_H

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

#include "cli/options.h"

namespace docprep {

class UnknownName : public CLI::ValidationError {
 public:
    UnknownName(const std::string& option, const std::string& text, std::vector<std::string> names)
        : CLI::ValidationError(option, "'" + text + "' is not one of " + listed(names)),
          names_(std::move(names)) {}

    /// Those that the option takes.
    const std::vector<std::string>& names() const { return names_; }

 private:
    std::vector<std::string> names_;
};

}  // namespace docprep

#endif  // DOCPREP_UNKNOWN_NAME_H
