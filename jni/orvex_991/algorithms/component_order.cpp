#include "algorithms/component_order.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

#include "base/key_sort.h"

namespace orvex_cv_991 {

namespace {

/// Counts over 0 .. n - 1 with sums over prefixes in O(log n) (a Fenwick tree).
class PrefixCounts {
 public:
    explicit PrefixCounts(size_t n) : sums_(n + 1, 0) {}

    void add(size_t place) {
        for (size_t i = place + 1; i < sums_.size(); i += i & (~i + 1)) ++sums_[i];
    }

    /// Sum of the counts before `place`.
    int before(size_t place) const {
        int sum = 0;
        for (size_t i = place; i > 0; i &= i - 1) sum += sums_[i];
        return sum;
    }

 private:
    std::vector<int> sums_;
};

/// The places 0 .. n - 1 that are still free, with the k-th of them in O(log n) (a Fenwick tree of ones).
class FreePlaces {
 public:
    explicit FreePlaces(size_t most) : sums_(2 * most + 2) {}

    /// Makes 0 .. n - 1 free, n at least 1.
    void reset(size_t n) {
        for (top_ = 1; top_ <= n / 2;) top_ *= 2;
        for (size_t i = 1; i <= n; ++i) sums_[i] = static_cast<int>(i & (~i + 1));
        constexpr int kNeverReached = std::numeric_limits<int>::max();
        std::fill(sums_.begin() + static_cast<ptrdiff_t>(n) + 1,
                  sums_.begin() + static_cast<ptrdiff_t>(2 * top_), kNeverReached);
    }

    /// Takes the k-th free place (from 0) and returns it. Branches would be unpredictable, so there are none.
    size_t take(int k) {
        size_t place = 0;
        for (size_t bit = top_; bit > 0; bit /= 2) {
            int& sum = sums_[place + bit];
            const int beyond = -static_cast<int>(sum <= k);  // all bits or none
            k -= sum & beyond;
            sum -= 1 + beyond;
            place += bit & static_cast<size_t>(beyond);
        }
        return place;
    }

 private:
    std::vector<int> sums_;
    size_t top_ = 1;  // the largest power of two up to n
};

}  // namespace

// One pass of the exchange sort carries its first element rightward until it meets a strictly smaller
// one, which is carried on from there. Larger elements never influence the order among those of one area
// v, so look at the sequence of elements <= v as runs of v's parted by smaller ones: each pass rotates
// the leading run left by one, drops the first parting element and appends the next run to the leading
// one; once no parting element is left, the remaining passes reverse the list. Hence, with c[i] smaller
// elements before the i-th v:
//     list = []; for each v: rotate list left by c[i] - c[i-1], append v; rotate by the rest; reverse.
// Played backwards from the end, every v's final place is "the k-th place that is still free".
std::vector<int> exchange_order(const std::vector<int>& areas) {
    // By area, in input order within an area.
    if (areas.empty()) return {};
    std::vector<uint64_t> grouped(areas.size());
    for (size_t i = 0; i < areas.size(); ++i) grouped[i] = uint64_t{ordered_bits(areas[i])} << 32 | i;
    sort_keys(grouped, 32);
    const auto area_bits = [](uint64_t key) { return key >> 32; };
    const auto element = [](uint64_t key) { return static_cast<size_t>(static_cast<uint32_t>(key)); };

    std::vector<size_t> group_begin;
    std::vector<size_t> group(areas.size());  // by element
    for (size_t k = 0; k < grouped.size(); ++k) {
        if (k == 0 || area_bits(grouped[k]) != area_bits(grouped[k - 1])) group_begin.push_back(k);
        group[element(grouped[k])] = group_begin.size() - 1;
    }
    group_begin.push_back(grouped.size());

    // Nothing is smaller than the elements of the first group, which can be many: a plain count does.
    std::vector<int> smaller_before(areas.size());
    PrefixCounts others(group_begin.size() - 1);
    int smallest = 0;
    for (size_t i = 0; i < areas.size(); ++i) {
        if (group[i] == 0) {
            ++smallest;
        } else {
            smaller_before[i] = smallest + others.before(group[i]);
            others.add(group[i]);
        }
    }

    // As nothing parts them, they are never rotated.
    std::vector<int> result(areas.size());
    const size_t last_place = areas.size() - 1;
    for (size_t k = 0; k < group_begin[1]; ++k)
        result[last_place - k] = static_cast<int>(element(grouped[k]));

    size_t largest = 0;
    for (size_t g = 1; g + 1 < group_begin.size(); ++g)
        largest = std::max(largest, group_begin[g + 1] - group_begin[g]);
    FreePlaces free_places(largest);
    for (size_t g = 1; g + 1 < group_begin.size(); ++g) {
        const size_t first = group_begin[g];
        const int count = static_cast<int>(group_begin[g + 1] - first);
        free_places.reset(static_cast<size_t>(count));
        int passes_left = static_cast<int>(first);  // as many as there are smaller elements
        int head = 0;                               // rank, among the free places, of where the list begins
        for (int left = count; left > 0; --left) {
            const size_t taken = element(grouped[first + static_cast<size_t>(left) - 1]);
            int turns = passes_left - smaller_before[taken];
            passes_left = smaller_before[taken];
            if (turns >= left) turns %= left;
            head -= turns;
            if (head < 0) head += left;
            const int last = head == 0 ? left - 1 : head - 1;
            if (last < head) --head;
            result[last_place - first - free_places.take(last)] = static_cast<int>(taken);
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
        while ((node /= 2) && pull(node)) {
        }
    }

    /// As set, for a position that is searched no more.
    void set_only(int position, int key) { nodes_[leaves_ + static_cast<size_t>(position)] = {key, key}; }

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

    /// Whether the node changes.
    bool pull(size_t node) {
        const Node &a = nodes_[2 * node], &b = nodes_[2 * node + 1];
        const Node before = nodes_[node];
        nodes_[node] = {std::max(a.largest, b.largest), std::min(a.smallest, b.smallest)};
        return nodes_[node].largest != before.largest || nodes_[node].smallest != before.smallest;
    }

    size_t leaves_ = 1;
    std::vector<Node> nodes_;
};

/// The two searches within a range that no search of another range will look into, step by step: cheaper
/// than the tree's where the range is short.
class StepSearch {
 public:
    explicit StepSearch(KeyTree& keys) : keys_(keys) {}

    int last_above(int first, int last, int limit) const {
        while (first < last && keys_.key(last) <= limit) --last;
        return last;
    }
    int first_below(int first, int last, int limit) const {
        while (first < last && keys_.key(first) >= limit) ++first;
        return first;
    }
    void set(int position, int key) { keys_.set_only(position, key); }

 private:
    KeyTree& keys_;
};

/// Partitions index[low .. high] and its keys around the first element and returns where that ends up.
///
/// From the right, the next element that goes strictly before the pivot fills the hole; then, from the
/// left, the next that goes strictly after it. Ties are passed over on both sides, so step by step a tie
/// costs a scan of the range; the two searches alone determine every move.
template <class Search>
int partition(std::vector<int>& index, const KeyTree& keys, Search& search, int low, int high) {
    const int pivot = index[low], pivot_key = keys.key(low);
    const auto move = [&](int to, int from) {
        index[to] = index[from];
        search.set(to, keys.key(from));
    };
    int i = low, j = high;
    while (i < j) {
        j = search.last_above(i, j, pivot_key);
        if (i == j) break;
        move(i, j);
        i = search.first_below(i, j, pivot_key);
        if (i == j) break;
        move(j, i);
    }
    index[j] = pivot;
    search.set(j, pivot_key);
    return j;
}

}  // namespace

std::vector<int> partition_order(const std::vector<int>& areas) {
    constexpr int kShort = 24;
    std::vector<int> index(areas.size());
    std::iota(index.begin(), index.end(), 0);
    KeyTree keys(areas);
    StepSearch steps(keys);

    std::vector<std::pair<int, int>> ranges(1, {0, static_cast<int>(areas.size()) - 1});
    while (!ranges.empty()) {
        auto [low, high] = ranges.back();
        ranges.pop_back();
        while (low < high) {
            const bool is_short = high - low < kShort;
            const int place =
                is_short ? partition(index, keys, steps, low, high) : partition(index, keys, keys, low, high);
            if (place == low && !is_short) {
                // Nothing goes before the pivot, nor before those equal to it that follow it at once.
                low = keys.first_below(low, high, keys.key(low));
                continue;
            }
            if (low < place - 1) ranges.emplace_back(low, place - 1);
            low = place + 1;
        }
    }
    return index;
}

}  // namespace orvex_cv_991
