#include "pipeline/pictures.h"

namespace docprep {

const char* picture_name(Picture kind) {
    switch (kind) {
        case Picture::kPage:
            return "page";
        case Picture::kBinary:
            return "binary";
        case Picture::kRows:
            return "rows";
        case Picture::kSeal:
            return "seal";
        case Picture::kSaliency:
            return "saliency";
        default:
            return "";
    }
}

}  // namespace docprep
