// From a photograph to a level page, its rows of text, its seals and its saliency: everything but files.
#ifndef DOCPREP_PIPELINE_H
#define DOCPREP_PIPELINE_H

#include <optional>

#include "pipeline/page.h"
#include "pipeline/pictures.h"
#include "pipeline/report.h"
#include "pipeline/stages.h"

namespace docprep {

struct PipelineOptions {
    Stages stages = Stages::all();
    std::optional<int> turn;  ///< degrees clockwise: 0, 90, 180 or 270; by default what its text says
    std::optional<float> min_sharpness;  ///< a photograph below it is refused
    bool require_text = false;           ///< a photograph without rows of text is refused
    BinariseMethod binarise = BinariseMethod::kAdaptive;
    PageKind page = PageKind::kSoft;
    bool crop = false;       ///< the page is cut to its paper
    bool keep_skew = false;  ///< the page is the photograph, however its rows lie
};

/// Prepares a photograph that was read as report.source says. Prints as the library does.
/// @throws Failure, Refusal; CException from the library; std::bad_alloc; what the sink throws
void run_pipeline(Image photo, const PipelineOptions& options, Report& report, PictureSink& sink);

}  // namespace docprep

#endif  // DOCPREP_PIPELINE_H
