// What a batch is asked for.
#ifndef DOCPREP_BATCH_OPTIONS_H
#define DOCPREP_BATCH_OPTIONS_H

#include <optional>
#include <string>
#include <vector>

#include "base/extents.h"
#include "batch/batch_inputs.h"
#include "run/prepare.h"

namespace CLI {
class App;
}

namespace docprep {

/// What the results of each photograph depend on.
struct BatchPreparation {
    PreparationOptions options;
    std::optional<Extents> frame_size;  ///< the photographs are NV21 frames of this size
};

struct BatchOptions {
    InputSearch search;
    std::string output;  ///< a folder
    BatchPreparation preparation;
    /// The options of the preparation that were given, in a fixed order, each a word: "--page=binary".
    std::vector<std::string> preparation_words;
    int threads = 1;
    bool resume = false;
    bool quiet = false;
};

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_batch(CLI::App& app, BatchOptions& options);

/// The preparation that a batch has as words.
BatchPreparation batch_preparation(const std::vector<std::string>& words);

}  // namespace docprep

#endif  // DOCPREP_BATCH_OPTIONS_H
