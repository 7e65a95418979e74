#include "cv_forest_join.h"

#include <algorithm>

namespace orvex_cv_991 {

ForestJoin::ForestJoin(int n) : parents_(n) {
    for (int i = 0; i < n; ++i) parents_[i] = i;
}

int ForestJoin::GetRootId(int id) {
    while (parents_[id] != id) id = parents_[id];
    return id;
}

int ForestJoin::Join(int a, int b) {
    const int root_a = GetRootId(a);
    const int root_b = GetRootId(b);
    const int root = std::min(root_a, root_b);
    parents_[root_a] = parents_[root_b] = root;
    parents_[b] = parents_[a] = root;
    return root;
}

int ForestJoin::Remap(orvex_991::vector<int>& out) {
    const int n = parents_.size;
    out.reserve(n);
    out.size = n;
    int count = 0;
    for (int i = 1; i < n; ++i) out[i] = parents_[i] == i ? ++count : out[parents_[i]];
    return count;
}

}  // namespace orvex_cv_991
