// What a run reads, whichever command it is.
#ifndef DOCPREP_INPUT_H
#define DOCPREP_INPUT_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "extents.h"
#include "library_log.h"
#include "photo.h"
#include "steps.h"

namespace CLI {
class App;
}

namespace docprep {

struct InputOptions {
    std::string file;                   ///< as in read_file
    std::optional<Extents> frame_size;  ///< the file is an NV21 frame of this size
    /// Takes the file's content before it is decoded.
    std::function<void(const Bytes& content)> seen{};
    /// Takes oddities of the file that cost no pixel; without one they go to standard error.
    std::function<void(const std::string& warning)> warn{};
};

/// What is reported about the photograph. Extents are pixels; "stored" is before the orientation.
struct Source {
    std::string file;  ///< as the user wrote it
    std::string format;
    int stored_cols = 0;
    int stored_rows = 0;
    int orientation = 1;
    int cols = 0;
    int rows = 0;
};

/// Declares the options; parsing fills `options`, which must live as long as `app`.
void add_input(CLI::App& app, InputOptions& options);

/// Reads the photograph and turns it upright: 1 channel (grey) or 3 (B, G, R). Its file is read once.
/// @throws Failure; CException from the library; std::bad_alloc
Image read_input(const InputOptions& options, LibraryLog& log, Steps& steps, Source& source);

}  // namespace docprep

#endif  // DOCPREP_INPUT_H
