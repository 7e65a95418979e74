// Internal: whether a scan pixel by pixel would get by with the forest that a labelling is granted.
#ifndef ORVEX_991_ALGORITHMS_FOREST_LIMIT_H
#define ORVEX_991_ALGORITHMS_FOREST_LIMIT_H

#include "cv_mat.h"

namespace orvex_cv_991 {

/// Whether the image could need more than the forest's rows * cols / 2 labels. Where it does not,
/// scan_within_forest only repeats the labelling by runs.
/// @param provisional_labels  that the scan hands out, as Labelling counts them
bool may_exceed_forest(const Mat<unsigned char>& src, int provisional_labels);

/// Labels pixel by pixel, with a forest of rows * cols / 2 labels: a size that images with
/// many short runs exceed.
/// @param src     1 channel, not empty, its pixels known to be readable
/// @param labels  rows * cols x 1, all 0; gets provisional labels
/// @throws CException code 4 when two labels meet of which one lies beyond the forest; `labels` then
///         holds those given so far
void scan_within_forest(const Mat<unsigned char>& src, Mat<int>& labels);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_FOREST_LIMIT_H
