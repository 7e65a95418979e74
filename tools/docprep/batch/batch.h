// The command for many photographs: each is prepared as the command without a name does it, several at a time.
#ifndef DOCPREP_BATCH_H
#define DOCPREP_BATCH_H

#include <optional>
#include <string>

#include "base/extents.h"
#include "batch/batch_inputs.h"
#include "run/prepare.h"

namespace CLI {
class App;
}

namespace docprep {

struct BatchOptions {
    InputSearch search;
    std::string output;  ///< a folder
    PreparationOptions preparation;
    std::optional<Extents> frame_size;  ///< the photographs are NV21 frames of this size
    std::string preparation_text;       ///< the options that results depend on, as one text
    int threads = 1;
    bool resume = false;
    bool quiet = false;
};

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_batch(CLI::App& app, BatchOptions& options);

/// Runs the command. Returns its exit code: 0 when all photographs are done, 1 when some were refused and none failed,
/// 2 when some failed.
/// @throws Failure for what is wrong with the batch as a whole; std::bad_alloc
int batch(const BatchOptions& options);

}  // namespace docprep

#endif  // DOCPREP_BATCH_H
