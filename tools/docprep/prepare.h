// The command without a name: from a photograph or a camera frame to a level binary page, its rows of text,
// its seals and its saliency.
#ifndef DOCPREP_PREPARE_H
#define DOCPREP_PREPARE_H

#include <string>

#include "input.h"
#include "pipeline.h"

namespace CLI {
class App;
}

namespace docprep {

struct PrepareOptions : PipelineOptions {
    InputOptions input;
    std::string folder;
    bool verbose = false;  ///< the library's lines go to standard error, and library.log is not written
};

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_prepare(CLI::App& app, PrepareOptions& options);

/// Runs the command: writes the files and prints the summary.
/// @throws Failure; CException from the library; std::bad_alloc
void prepare(const PrepareOptions& options);

}  // namespace docprep

#endif  // DOCPREP_PREPARE_H
