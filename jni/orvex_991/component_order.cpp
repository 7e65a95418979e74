#include "component_order.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace orvex_cv_991 {

namespace {

/// Counts over 0 .. n - 1 with prefix sums and selection in O(log n) (a Fenwick tree).
class PrefixCounts {
 public:
    explicit PrefixCounts(int n) : sums_(static_cast<size_t>(n) + 1, 0) {}

    /// Narrows to 0 .. n - 1 and makes every count there one.
    void fill_with_ones(int n) {
        for (int i = 1; i <= n; ++i) sums_[static_cast<size_t>(i)] = i & -i;
        size_ = n;
        for (top_ = 1; top_ <= n / 2;) top_ *= 2;
    }

    void add(int place) {
        for (size_t i = static_cast<size_t>(place) + 1; i < sums_.size(); i += i & (~i + 1)) ++sums_[i];
    }

    /// Sum of the counts before `place`.
    int before(int place) const {
        int sum = 0;
        for (size_t i = static_cast<size_t>(place); i > 0; i &= i - 1) sum += sums_[i];
        return sum;
    }

    /// Removes the k-th one (from 0) that is left and returns its place.
    int take(int k) {
        int place = 0;
        for (int bit = top_; bit > 0; bit /= 2) {
            const int next = place + bit;
            if (next > size_) continue;
            int& sum = sums_[static_cast<size_t>(next)];
            if (sum <= k) {
                k -= sum;
                place = next;
            } else {
                --sum;
            }
        }
        return place;
    }

 private:
    std::vector<int> sums_;
    int size_ = 0;
    int top_ = 1;  // the largest power of two up to size_
};

}  // namespace

// One pass of the exchange sort carries its first element rightward until it meets a strictly smaller one,
// which is carried on from there. Larger elements never influence the order among those of one area v, so
// look at the sequence of elements <= v as runs of v's parted by smaller ones: each pass rotates the leading
// run left by one, drops the first parting element and appends the next run to the leading one; once no
// parting element is left, the remaining passes reverse the list. Hence, with c[i] smaller elements before
// the i-th v:
//     list = []; for each v: rotate list left by c[i] - c[i-1], append v; rotate by the rest; reverse.
// Played backwards from the end, every v's final place is "the k-th place that is still free".
std::vector<int> exchange_order(const std::vector<int>& areas) {
    const int n = static_cast<int>(areas.size());
    std::vector<int> levels(areas);
    std::sort(levels.begin(), levels.end());
    levels.erase(std::unique(levels.begin(), levels.end()), levels.end());

    // Elements grouped by area, in input order within a group; how many smaller ones precede each.
    std::vector<int> level(areas.size());
    std::vector<int> smaller_before(areas.size());
    std::vector<int> group_end(levels.size() + 1, 0);
    PrefixCounts seen(static_cast<int>(levels.size()));
    for (size_t i = 0; i < areas.size(); ++i) {
        level[i] =
            static_cast<int>(std::lower_bound(levels.begin(), levels.end(), areas[i]) - levels.begin());
        smaller_before[i] = seen.before(level[i]);
        seen.add(level[i]);
        ++group_end[static_cast<size_t>(level[i]) + 1];
    }
    for (size_t g = 1; g < group_end.size(); ++g) group_end[g] += group_end[g - 1];
    std::vector<int> grouped(areas.size());
    std::vector<int> next(group_end.begin(), group_end.end() - 1);
    for (int i = 0; i < n; ++i)
        grouped[static_cast<size_t>(next[static_cast<size_t>(level[static_cast<size_t>(i)])]++)] = i;

    std::vector<int> result(areas.size());
    PrefixCounts free_places(n);
    for (size_t g = 0; g + 1 < group_end.size(); ++g) {
        const int first = group_end[g];
        const int count = group_end[g + 1] - first;
        free_places.fill_with_ones(count);
        int passes_left = first;  // as many as there are smaller elements
        int head = 0;             // rank, among the free places, of the one where the list begins
        for (int left = count; left > 0; --left) {
            const int element = grouped[static_cast<size_t>(first + left - 1)];
            const int turns = passes_left - smaller_before[static_cast<size_t>(element)];
            passes_left = smaller_before[static_cast<size_t>(element)];
            head = (head + left - turns % left) % left;
            const int last = (head + left - 1) % left;
            const int place = free_places.take(last);
            if (last < head) --head;
            result[static_cast<size_t>(n - 1 - first - place)] = element;
        }
    }
    return result;
}

namespace {

/// Keys by position, with the searches that decide every move of the partition.
class KeyTree {
 public:
    explicit KeyTree(const std::vector<int>& keys) {
        while (leaves_ < keys.size()) leaves_ *= 2;
        nodes_.resize(2 * leaves_, {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()});
        for (size_t i = 0; i < keys.size(); ++i) nodes_[leaves_ + i] = {keys[i], keys[i]};
        for (size_t node = leaves_ - 1; node > 0; --node) pull(node);
    }

    int key(int position) const { return nodes_[leaves_ + static_cast<size_t>(position)].largest; }

    void set(int position, int key) {
        size_t node = leaves_ + static_cast<size_t>(position);
        nodes_[node] = {key, key};
        while (node /= 2) pull(node);
    }

    /// The rightmost position in first + 1 .. last whose key is above `limit`, or `first`.
    int last_above(int first, int last, int limit) const {
        size_t node = leaves_ + static_cast<size_t>(last);
        while (nodes_[node].largest <= limit) {
            while (node % 2 == 0) node /= 2;  // the next subtree to the left
            if (node <= 1) return first;
            --node;
        }
        while (node < leaves_) {
            node *= 2;
            if (nodes_[node + 1].largest > limit) ++node;
        }
        return std::max(first, static_cast<int>(node - leaves_));
    }

    /// The leftmost position in first .. last - 1 whose key is below `limit`, or `last`.
    int first_below(int first, int last, int limit) const {
        size_t node = leaves_ + static_cast<size_t>(first);
        while (nodes_[node].smallest >= limit) {
            while (node % 2 == 1) node /= 2;  // the next subtree to the right
            if (node == 0) return last;
            ++node;
        }
        while (node < leaves_) {
            node *= 2;
            if (nodes_[node].smallest >= limit) ++node;
        }
        return std::min(last, static_cast<int>(node - leaves_));
    }

 private:
    struct Node {
        int largest, smallest;
    };

    void pull(size_t node) {
        const Node& a = nodes_[2 * node];
        const Node& b = nodes_[2 * node + 1];
        nodes_[node] = {std::max(a.largest, b.largest), std::min(a.smallest, b.smallest)};
    }

    size_t leaves_ = 1;
    std::vector<Node> nodes_;
};

}  // namespace

// The hole-filling partition with the first element as pivot: from the right, the next element that goes
// strictly before the pivot fills the hole; then, from the left, the next that goes strictly after it. Ties
// are passed over on both sides, so step by step a tie costs a scan of the range; the two searches alone
// determine every move.
std::vector<int> partition_order(const std::vector<int>& areas) {
    std::vector<int> index(areas.size());
    for (size_t i = 0; i < index.size(); ++i) index[i] = static_cast<int>(i);
    KeyTree keys(areas);
    const auto move = [&](int to, int from) {
        index[static_cast<size_t>(to)] = index[static_cast<size_t>(from)];
        keys.set(to, keys.key(from));
    };

    std::vector<std::pair<int, int>> ranges(1, {0, static_cast<int>(areas.size()) - 1});
    while (!ranges.empty()) {
        auto [low, high] = ranges.back();
        ranges.pop_back();
        while (low < high) {
            const int pivot = index[static_cast<size_t>(low)];
            const int pivot_key = keys.key(low);
            int i = low;
            int j = high;
            while (i < j) {
                j = keys.last_above(i, j, pivot_key);
                if (i == j) break;
                move(i, j);
                i = keys.first_below(i, j, pivot_key);
                if (i == j) break;
                move(j, i);
            }
            index[static_cast<size_t>(j)] = pivot;
            keys.set(j, pivot_key);
            if (low < j - 1) ranges.emplace_back(low, j - 1);
            low = j + 1;
        }
    }
    return index;
}

}  // namespace orvex_cv_991
