// What a run reads, whichever command it is.
#ifndef DOCPREP_INPUT_H
#define DOCPREP_INPUT_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/extents.h"
#include "base/image.h"
#include "base/steps.h"
#include "pipeline/source.h"
#include "run/library_log.h"

namespace CLI {
class App;
}

namespace docprep {

struct InputOptions {
    std::string file;                   ///< as in read_file
    std::optional<Extents> frame_size;  ///< the file is an NV21 frame of this size
    std::string path{};  ///< that leads to the file from here, if `file` need not; empty: it does
    /// Takes the file's content before it is decoded.
    std::function<void(const Bytes& content)> seen{};
    /// Takes oddities of the file that cost no pixel; without one they go to standard error.
    std::function<void(const std::string& warning)> warn{};

    const std::string& opened() const { return path.empty() ? file : path; }
};

/// Declares the options; parsing fills `options`, which must live as long as `app`.
void add_input(CLI::App& app, InputOptions& options);

/// Reads the photograph and turns it upright: 1 channel (grey) or 3 (B, G, R). Its file is read once.
/// @throws Failure; CException from the library; std::bad_alloc
Image read_input(const InputOptions& options, LibraryLog& log, Steps& steps, Source& source);

}  // namespace docprep

#endif  // DOCPREP_INPUT_H
