// The pictures of a run.
#ifndef DOCPREP_PICTURES_H
#define DOCPREP_PICTURES_H

#include "photo.h"

namespace docprep {

enum class Picture {
    kPage,      ///< the page for a recogniser
    kBinary,    ///< the photograph's dark print, white on black
    kRows,      ///< the page with its rows in colours
    kSeal,      ///< the photograph with nothing but its seals in colour
    kSaliency,  ///< the saliency of its grey levels
};

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
