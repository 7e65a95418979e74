// The command without a name: from a photograph or a camera frame to a level binary page, its rows of text,
// its seals and its saliency.
#ifndef DOCPREP_PREPARE_H
#define DOCPREP_PREPARE_H

#include <optional>
#include <string>

#include "binarise.h"
#include "input.h"
#include "stages.h"

namespace CLI {
class App;
}

namespace docprep {

struct PrepareOptions {
    InputOptions input;
    std::string folder;
    Stages stages = Stages::all();
    int turn = 0;                        ///< degrees clockwise: 0, 90, 180 or 270
    std::optional<float> min_sharpness;  ///< a photograph below it is refused
    BinariseMethod binarise = BinariseMethod::kAdaptive;
    bool keep_skew = false;  ///< the page is the photograph, however its rows lie
    bool verbose = false;    ///< the library's lines go to standard error, and library.log is not written
};

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_prepare(CLI::App& app, PrepareOptions& options);

/// Runs the command: writes the files and prints the summary.
/// @throws Failure; CException from the library; std::bad_alloc
void prepare(const PrepareOptions& options);

}  // namespace docprep

#endif  // DOCPREP_PREPARE_H
