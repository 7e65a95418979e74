// What report.html shows of a run's pictures.
#ifndef DOCPREP_REPORT_PICTURES_H
#define DOCPREP_REPORT_PICTURES_H

#include <map>
#include <optional>

#include "pipeline/histogram.h"
#include "pipeline/pictures.h"
#include "pipeline/report.h"

namespace docprep {

/// Keeps small copies of every picture, and counts what the threshold decides on.
class ReportPictures : public PictureSink {
 public:
    /// @param report  of the run; must live as long
    explicit ReportPictures(const Report& report) : report_(report) {}

    struct Copy {
        Image pixels;
        int cols = 0;  ///< of the picture that it is a copy of
        int rows = 0;
    };

    bool wants(Picture) const override { return true; }
    void take(Picture kind, Image picture, int dots_per_inch) override;

    /// Null for a picture that the run did not make.
    const Copy* find(Picture kind) const;
    /// See decisive_levels.
    const std::optional<Histogram>& levels() const { return levels_; }

 private:
    const Report& report_;
    std::map<Picture, Copy> copies_;
    std::optional<Histogram> levels_;
};

/// Pixels by what tells whether they are print: by Otsu's method their level, by the adaptive one how much lighter
/// they are than the mean of their surroundings.
Histogram decisive_levels(const Image& gray, const Binarisation& how);

}  // namespace docprep

#endif  // DOCPREP_REPORT_PICTURES_H
