// The command without a name: from a photograph or a camera frame to a page for a recogniser, its rows of text, its
// seals and its saliency.
#ifndef DOCPREP_PREPARE_H
#define DOCPREP_PREPARE_H

#include <string>
#include <vector>

#include "pipeline/pipeline.h"
#include "run/folder_pictures.h"
#include "run/input.h"
#include "run/library_log.h"

namespace CLI {
class App;
}

namespace docprep {

/// What the commands that prepare photographs share.
struct PreparationOptions : PipelineOptions {
    PictureFiles pictures = PictureFiles::kJpeg;
    bool log = false;        ///< library.log is written; not to be had from several threads at once
    bool timings = false;    ///< timings.json is written
    bool report = false;     ///< report.html is written
    bool thumbnail = false;  ///< thumbnail.jpg, the page made small, is written
};

struct PrepareOptions : PreparationOptions {
    InputOptions input;
    std::string output;    ///< a folder; a file, or "-", for the page alone; empty: nothing is written
    bool json = false;     ///< result.json goes to standard output in place of the summary
    bool quiet = false;    ///< no summary
    bool verbose = false;  ///< the library's lines go to standard error
    bool stages_given = false;
};

/// Declares the options that commands share; parsing fills `options`, which must live as long as `app`.
void add_preparation(CLI::App& app, PreparationOptions& options);

/// Declares the command's options; parsing fills `options`, which must live as long as `app`.
void add_prepare(CLI::App& app, PrepareOptions& options);

/// What a run leaves.
struct Prepared {
    Report report;
    std::vector<std::string> paths;  ///< of the files written, result.json last
    Bytes result;                    ///< the content of result.json
};

/// Prepares one photograph and writes its files into a folder.
/// @param lines   where the library's lines go
/// @param beside  whether pictures are encoded on threads beside the work
/// @throws Failure, Refusal; CException from the library; std::bad_alloc
Prepared prepare_into(const std::string& folder, const InputOptions& input, const PreparationOptions& options,
                      LibraryLines lines, bool beside);

/// Runs the command: writes the files and prints the summary.
/// @throws as prepare_into
void prepare(const PrepareOptions& options);

}  // namespace docprep

#endif  // DOCPREP_PREPARE_H
