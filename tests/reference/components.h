#ifndef ORVEX_TESTS_REFERENCE_COMPONENTS_H
#define ORVEX_TESTS_REFERENCE_COMPONENTS_H

#include <functional>

#include "types.h"

namespace reference {

struct Forest {
    List<int> parents;

    explicit Forest(int n);
    int root(int id);
    int join(int a, int b);
    int remap(List<int>& out);
};

/// The recursive quicksort with the hole-filling partition, as defined.
void quick_partition(List<int>& v, int low, int high, const std::function<bool(int, int)>& before);

void bwlabel(const Image<Byte>& src, Image<int>& dst, int& num);
void connectdComponent(const Image<Byte>& src, List<Rect>& rects, List<List<Point>>* points);
void divideComponentsToRows(const List<Rect>& rects, List<List<Rect>>& row_groups);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_COMPONENTS_H
