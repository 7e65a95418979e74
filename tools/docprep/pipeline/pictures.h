// The pictures of a run.
#ifndef DOCPREP_PICTURES_H
#define DOCPREP_PICTURES_H

#include "base/image.h"

namespace docprep {

enum class Picture {
    kPage,      ///< the page for a recogniser
    kBinary,    ///< the photograph's dark print, white on black
    kRows,      ///< the page with its rows in colours
    kSeal,      ///< the photograph with nothing but its seals in colour
    kSaliency,  ///< the saliency of its grey levels

    // For report.html alone.
    kPhoto,       ///< the photograph as read
    kUpright,     ///< the same turned, where it was
    kGray,        ///< its grey levels; report.binarisation is known
    kLight,       ///< the light on the page, on a reduced copy
    kPaper,       ///< what the paper's outline is drawn over
    kComponents,  ///< the page's print, text in one colour, the rest in others
    kLines,       ///< what the rows' lines are drawn over
};

constexpr bool for_report_alone(Picture kind) {
    return kind > Picture::kSaliency;
}

/// What the picture is called wherever it has a name, such as "page"; of a picture for report.html alone, nothing.
const char* picture_name(Picture kind);

/// Takes pictures as they become ready.
class PictureSink {
 public:
    virtual ~PictureSink() = default;

    /// Whether the picture is of use; one that is not need not be drawn.
    virtual bool wants(Picture kind) const = 0;

    /// @param dots_per_inch  its resolution; 0 where that means nothing
    virtual void take(Picture kind, Image picture, int dots_per_inch) = 0;
};

}  // namespace docprep

#endif  // DOCPREP_PICTURES_H
