#include "stages.h"

namespace docprep {

std::vector<std::string> stage_names() {
    return {"sharpness", "binarise", "page", "components", "rows", "seal", "saliency"};
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
