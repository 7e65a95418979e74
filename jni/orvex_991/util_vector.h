#ifndef ORVEX_991_UTIL_VECTOR_H
#define ORVEX_991_UTIL_VECTOR_H

#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "util_diag.h"
#include "util_exception.h"

namespace orvex_991 {

/// Signed 32-bit element count that reads as a field (`v.size`) and as a call (`v.size()`): callers use both.
class Count {
 public:
    Count() = default;
    /// @cond  what an int does, left out of the reference
    explicit Count(int value) : value_(value) {}
    operator int() const { return value_; }
    int operator()() const { return value_; }
    Count& operator=(int value) {
        value_ = value;
        return *this;
    }
    Count& operator+=(int n) { return *this = value_ + n; }
    Count& operator-=(int n) { return *this = value_ - n; }
    Count& operator++() { return *this += 1; }
    Count& operator--() { return *this -= 1; }
    int operator++(int) { return value_++; }
    int operator--(int) { return value_--; }
    /// @endcond

 private:
    int value_ = 0;
};

namespace detail {

// A free function, because a parameter called `size`, which the warning's text needs,
// would hide vector's field.
inline void check_vector_size(int size) {
    ORVEX_CHECK_AS("vector", size >= 0);
}

}  // namespace detail

/// Growable array with deep copies and range-checked indexing.
///
/// Invariants: 0 <= size <= capacity; `data` is an owned block of `capacity` elements, null only while the
/// capacity is 0. The first growth gives 100 elements, each later one doubles. Blocks come from the throwing
/// array new, whose std::bad_alloc passes to the caller and leaves the vector as it was.
template <class T>
class vector {
 public:
    Count size;         ///< elements in use
    Count capacity;     ///< elements that the block has room for
    T* data = nullptr;  ///< the block

    vector() = default;

    /// n elements: of class type default-constructed, of scalar type left uninitialised.
    /// @checks "size >= 0", code 1
    vector(int n) {
        detail::check_vector_size(n);
        if (n == 0) return;
        data = new T[static_cast<std::size_t>(n)];
        size = capacity = n;
    }

    /// n copies of `value`.
    /// @checks "size >= 0", code 1
    vector(int n, const T& value) : vector(n) {
        for (int i = 0; i < n; ++i) data[i] = value;
    }

    /// Copies size, capacity and the elements; the new block has the other's capacity, even when that is 0.
    vector(const vector& other) {
        std::unique_ptr<T[]> block(new T[static_cast<std::size_t>(other.capacity())]);
        const int n = other.size;
        for (int i = 0; i < n; ++i) block[i] = other.data[i];
        size = n;
        capacity = other.capacity;
        data = block.release();
    }

    /// Takes the other's block and leaves it empty.
    vector(vector&& other) noexcept { swap(other); }

    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDelete): takes two arrays that another file fills for one
    ~vector() { delete[] data; }

    /// As the copy constructor; assigning a vector to itself changes nothing.
    vector& operator=(const vector& other) {
        if (this != &other) {
            vector copy(other);
            swap(copy);
        }
        return *this;
    }

    /// Takes the other's block and leaves it empty; assigning a vector to itself changes nothing.
    vector& operator=(vector&& other) noexcept {
        if (this != &other) {
            vector taken(std::move(other));
            swap(taken);
        }
        return *this;
    }

    /// Makes the size n and every element `value`, which may be an element of this vector. n below
    /// 0 counts as 0.
    void init_to_size(int n, const T& value) {
        const T kept(value);  // a regrowth ends the block that `value` may lie in
        reserve(n);
        size = n < 0 ? 0 : n;
        for (int i = 0; i < n; ++i) data[i] = kept;
    }

    /// Makes room for n elements; the size stays. Never shrinks; n below 1 does nothing.
    void reserve(int n) {
        if (n < 1 || n <= capacity) return;
        std::unique_ptr<T[]> block(new T[static_cast<std::size_t>(n)]);
        const int used = size;
        for (int i = 0; i < used; ++i) block[i] = std::move(data[i]);
        delete[] data;
        data = block.release();
        capacity = n;
    }

    /// 100 elements for an empty vector, twice the capacity otherwise; no more than 2^31 - 1 elements.
    void double_the_size() {
        constexpr int kFirstCapacity = 100;
        constexpr int kMost = std::numeric_limits<int>::max();
        if (capacity == kMost) throw std::bad_array_new_length();
        reserve(capacity == 0 ? kFirstCapacity : capacity > kMost / 2 ? kMost : 2 * capacity);
    }

    /// Appends `value`, which may be an element of this vector.
    void push_back(const T& value) {
        if (size == capacity) {
            const T kept(value);
            double_the_size();
            data[size] = kept;
        } else {
            data[size] = value;
        }
        ++size;
    }

    /// Removes the last element and returns it.
    /// @throws CException code 4 when there is none
    T pop_back() {
        if (size <= 0) throw CException(4);
        --size;
        return data[size];
    }

    /// @throws CException code 4 for an index outside 0 .. size - 1; nothing is printed
    T& operator[](int i) {
        if (i < 0 || i >= size) throw CException(4);
        return data[i];
    }
    /// @throws CException code 4 for an index outside 0 .. size - 1; nothing is printed
    const T& operator[](int i) const {
        if (i < 0 || i >= size) throw CException(4);
        return data[i];
    }

    /// Appends copies of the other's elements; `v += v` doubles the content.
    vector& operator+=(const vector& other) {
        const int n = other.size;
        if (n > std::numeric_limits<int>::max() - size) throw std::bad_array_new_length();
        reserve(size + n);
        for (int i = 0; i < n; ++i) data[size + i] = other.data[i];
        size += n;
        return *this;
    }

    /// Releases the block; size and capacity become 0.
    void clear() {
        delete[] data;
        data = nullptr;
        size = 0;
        capacity = 0;
    }

    /// Index of the first element equal to `value` by T's operator==, or -1.
    int get_index(T value) const {
        for (int i = 0; i < size; ++i)
            if (data[i] == value) return i;
        return -1;
    }

    /// Exchanges neighbours whenever cmp(later, earlier) holds: stable for a strict order. Quadratic.
    void bubbleSort(bool (*cmp)(const T&, const T&)) {
        for (int last = size - 1; last > 0; --last)
            for (int j = 0; j < last; ++j)
                if (cmp(data[j + 1], data[j])) std::swap(data[j], data[j + 1]);
    }

    /// Exchanges size, capacity and blocks.
    void swap(vector& other) noexcept {
        std::swap(size, other.size);
        std::swap(capacity, other.capacity);
        std::swap(data, other.data);
    }
};

/// Sorts v[low .. high], both ends inclusive, so that cmp orders it; cmp(a, b) true means that
/// a goes before b.
///
/// A quicksort with the first element as pivot and a hole-filling partition. It is not stable, and the order
/// that it leaves among equal elements is relied on, so the scheme is fixed. Quadratic on sorted input and on
/// many equal elements; its own recursion is at most log2(high - low + 1) deep whatever the input.
/// @throws CException code 4 when low < high and either lies outside the vector; nothing is written then
template <class T, class Comp>
void quick_partition(vector<T>& v, int low, int high, Comp& cmp) {
    if (low >= high) return;
    if (low < 0 || high >= v.size) throw CException(4);
    T* const a = v.data;
    while (low < high) {
        const T pivot = a[low];
        int i = low;
        int j = high;
        while (i < j) {
            while (i < j && !cmp(a[j], pivot)) --j;
            a[i] = a[j];
            while (i < j && !cmp(pivot, a[i])) ++i;
            a[j] = a[i];
        }
        a[j] = pivot;
        // The two sides do not influence each other, so the shorter one may go first to bound the depth.
        if (j - low < high - j) {
            quick_partition(v, low, j - 1, cmp);
            low = j + 1;
        } else {
            quick_partition(v, j + 1, high, cmp);
            high = j - 1;
        }
    }
}

}  // namespace orvex_991

#endif  // ORVEX_991_UTIL_VECTOR_H
