// The table that a run prints when it is done.
#ifndef DOCPREP_SUMMARY_H
#define DOCPREP_SUMMARY_H

#include <cstdint>
#include <string>
#include <vector>

#include "base/steps.h"
#include "pipeline/source.h"

namespace docprep {

/// Lines of a name, padded, and a value; a repeated name is left out. Text comes out on one line,
/// whatever is in it.
class Summary {
 public:
    void line(const std::string& name, const std::string& value);
    void count(const std::string& name, int64_t value);
    void source(const Source& source);
    void steps(const Steps& steps);
    void written(const std::vector<std::string>& paths);

    const std::string& text() const { return text_; }
    /// Writes the text to standard output.
    /// @throws Failure when that does not take it
    void print() const;

 private:
    std::string text_;
    std::string last_;
};

}  // namespace docprep

#endif  // DOCPREP_SUMMARY_H
