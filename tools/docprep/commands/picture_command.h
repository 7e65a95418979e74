// What the commands that make one picture from another share.
#ifndef DOCPREP_PICTURE_COMMAND_H
#define DOCPREP_PICTURE_COMMAND_H

#include <functional>
#include <string>

#include "base/steps.h"
#include "output/summary.h"
#include "run/input.h"

namespace CLI {
class App;
}

namespace docprep {

struct PictureOptions {
    InputOptions input;
    std::string output;    ///< a file; format_of_name must know its ending
    bool verbose = false;  ///< the library's lines go to standard error; otherwise they are dropped
};

/// Declares the option that shows the library's lines.
void add_verbose(CLI::App& app, bool& verbose);

/// Declares these options; parsing fills `options`, which must live as long as `app`.
/// @param output  the names of the output's option
void add_picture_options(CLI::App& app, PictureOptions& options, const std::string& output = "-o,--output");

/// Refuses an output of a size that no picture may have. The extents may be beyond int.
/// @throws Failure for no pixels or more than kMostPixels
void require_output_size(const PictureOptions& options, double cols, double rows);

/// Makes the output of a picture (1 or 3 channels). May time steps and add lines to the summary; what the
/// library prints meanwhile does not reach standard output.
using PictureOperation = std::function<Image(const Image& picture, Steps& steps, Summary& summary)>;

/// Runs a command: reads the input, applies the operation, writes the output and prints the summary.
/// @throws Failure; CException from the library; std::bad_alloc
void run_picture_command(const PictureOptions& options, const PictureOperation& operation);

}  // namespace docprep

#endif  // DOCPREP_PICTURE_COMMAND_H
