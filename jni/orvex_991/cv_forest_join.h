#ifndef ORVEX_991_CV_FOREST_JOIN_H
#define ORVEX_991_CV_FOREST_JOIN_H

#include "util_vector.h"

namespace orvex_cv_991 {

/// Union-find over provisional labels. A parent never exceeds its own index, so the root of a set is its
/// smallest label. Every access is range-checked.
class ForestJoin {
 public:
    /// n labels 0 .. n - 1, each its own set.
    /// @checks "size >= 0", code 1
    explicit ForestJoin(int n);

    /// The root of `id`; leaves the path as it is.
    /// @throws CException code 4 for an id outside the forest
    int GetRootId(int id);

    /// Merges the sets of a and b and returns the root, the smaller of the two.
    /// @throws CException code 4 for an id outside the forest; nothing is changed then
    int Join(int a, int b);

    /// Sets out[i], for every label i from 1, to the number of its set: sets count from 1 in the order of
    /// their roots. out[0] is not written.
    /// @return the number of sets, label 0 not counted
    int Remap(orvex_991::vector<int>& out);

 private:
    orvex_991::vector<int> parents_;
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_CV_FOREST_JOIN_H
