#include "pipeline/stages.h"

namespace docprep {

std::vector<std::string> stage_names() {
    return {"sharpness", "binarise", "page", "components", "rows", "seal", "saliency"};
}

std::string stage_meaning(Stage stage) {
    switch (stage) {
        case Stage::kSharpness:
            return "whether the photograph is in focus";
        case Stage::kBinarise:
            return "its dark print as white on black, binary.png";
        case Stage::kPage:
            return "the page made level and evenly lit, page.png";
        case Stage::kComponents:
            return "the page's connected components, and which of them are text";
        case Stage::kRows:
            return "its rows of text, rows.png";
        case Stage::kSeal:
            return "the photograph's red seals, seal.png";
        case Stage::kSaliency:
            return "how its gray levels stand out, saliency.png";
    }
    return "";
}

Stages Stages::all() {
    Stages stages;
    for (const Stage stage : {Stage::kSharpness, Stage::kBinarise, Stage::kPage, Stage::kComponents,
                              Stage::kRows, Stage::kSeal, Stage::kSaliency})
        stages.choose(stage);
    return stages;
}

bool Stages::needed(Stage stage) const {
    if (((chosen_ | also_needed_) & bit(stage)) != 0) return true;
    switch (stage) {
        case Stage::kBinarise:
            return chosen(Stage::kSharpness) || needed(Stage::kPage) || needed(Stage::kSeal);
        case Stage::kPage:
            return needed(Stage::kComponents);
        case Stage::kComponents:
            return needed(Stage::kRows);
        case Stage::kSeal:  // whose ink is taken off the page
            return needed(Stage::kPage);
        default:
            return false;
    }
}

}  // namespace docprep
