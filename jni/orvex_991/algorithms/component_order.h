// Internal: the two orders in which components come out, each fixed to the last tie.
#ifndef ORVEX_991_ALGORITHMS_COMPONENT_ORDER_H
#define ORVEX_991_ALGORITHMS_COMPONENT_ORDER_H

#include <vector>

namespace orvex_cv_991 {

/// Where an exchange sort over neighbours leaves each element: result[i] is the index of the element that
/// ends in place i. In pass p it exchanges the neighbours j and j + 1, for j from 0 to n - 2 - p, unless
/// areas[j + 1] < areas[j]: descending areas, and ties scrambled in a definite way. O(n log n).
std::vector<int> exchange_order(const std::vector<int>& areas);

/// The order that quick_partition gives the indices 0 .. n - 1 for a comparator that puts larger areas first:
/// result[i] is the index in place i. O(n log^2 n) where the scheme itself is quadratic.
std::vector<int> partition_order(const std::vector<int>& areas);

}  // namespace orvex_cv_991

#endif  // ORVEX_991_ALGORITHMS_COMPONENT_ORDER_H
