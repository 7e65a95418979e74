// Plain reference of the library, written from the definitions of its operations. Shares no code with it.
//
// Values that the library keeps in its own containers stand in standard ones here, and
// every access is checked.
#ifndef ORVEX_TESTS_REFERENCE_TYPES_H
#define ORVEX_TESTS_REFERENCE_TYPES_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace reference {

using Byte = unsigned char;

/// Stands for the library's exception.
struct Failure {
    int code;
    std::string message;
};

/// What the operations would have printed since the last call, with '#' for line numbers and milliseconds.
std::string take_printed();

void print(const std::string& text);
/// The prefix of a debug line ('D') or of an error line ('E').
void print_prefix(char level = 'D', const std::string& file = "cv_imgproc.cpp");
/// Prefix and a line of its own.
void print_line(const std::string& text);
/// Reports and throws when `holds` is false.
void check(bool holds, const std::string& text, const std::string& function,
           const std::string& file = "cv_imgproc.cpp");

/// Multiplication in signed 32 bits that wraps.
int wrapping_product(int64_t a, int64_t b);
int wrapping(int64_t value);

template <class T>
struct Image {
    int rows = 0, cols = 0, channels = 0;
    bool allocated = false;
    int dims_rows = 0, dims_cols = 0, step = 0, elem_size = 0;
    std::vector<T> data;

    void create(int new_rows, int new_cols, int new_channels, int fill) {
        allocated = false;
        data.clear();
        rows = dims_rows = new_rows;
        cols = dims_cols = new_cols;
        channels = new_channels;
        step = wrapping_product(wrapping_product(cols, channels), sizeof(T));
        elem_size = wrapping_product(channels, sizeof(T));
        const int n = wrapping_product(wrapping_product(cols, rows), channels);
        if (n < 0) throw Failure{3, ""};
        data.assign(static_cast<size_t>(n), static_cast<T>(fill));
        allocated = true;
    }

    void fill(T value) {
        check(channels == 1, "1 == channels", "operator=", "cv_mat.cpp");
        for (T& element : data) element = value;
    }

    void complement() {
        check(channels == 1, "1 == channels", "operator~", "cv_mat.cpp");
        for (T& element : data) element = static_cast<T>(~element);
    }

    T& at(int row, int col) {
        check(row < rows && col < cols && 1 == channels, "row < rows && col < cols && 1 == channels", "at",
              "cv_mat.h");
        return data.at(static_cast<size_t>(row * cols + col));
    }
    const T& at(int row, int col) const { return const_cast<Image*>(this)->at(row, col); }

    bool empty() const { return rows == 0 || cols == 0; }

    /// The rows * cols that a flat loop runs over. An operation refuses a matrix whose true element count is
    /// not the one that was allocated, or whose block is shorter than its loop.
    int flat() const {
        const int64_t n = static_cast<int64_t>(rows) * cols;
        need(n);
        if (n < INT32_MIN) throw Failure{3, ""};
        return static_cast<int>(n);
    }

    /// The same for a loop whose count wraps, as that of a block does. A product below 1 reads nothing,
    /// and then it does not matter what the block holds.
    int counted() const {
        const int n = wrapping_product(rows, cols);
        if (n >= 1) need(n);
        return n;
    }

    bool sound() const {
        const double exact = static_cast<double>(rows) * cols * channels;
        return exact == 0 || (allocated && exact == static_cast<double>(data.size()));
    }

    void need(int64_t elements) const {
        if (!sound() || static_cast<int64_t>(data.size()) < elements) throw Failure{3, ""};
    }
};

/// Growable array with the library's rules of growth, which its capacity shows.
template <class T>
struct List {
    std::vector<T> items;
    int capacity = 0;

    int size() const { return static_cast<int>(items.size()); }
    void reserve(int n) {
        if (n >= 1 && n > capacity) capacity = n;
    }
    void push_back(const T& value) {
        if (size() == capacity) reserve(capacity == 0 ? 100 : 2 * capacity);
        items.push_back(value);
    }
    void resize(int n) {  // reserve, then set the size
        reserve(n);
        items.resize(static_cast<size_t>(n));
    }
    void clear() {
        items.clear();
        capacity = 0;
    }
    T& operator[](int i) {
        if (i < 0 || i >= size()) throw Failure{4, ""};
        return items[static_cast<size_t>(i)];
    }
    const T& operator[](int i) const { return const_cast<List&>(*this)[i]; }
};

struct Point {
    int x, y;
};
struct Size {
    int width, height;
};
struct Rect {
    int x, y, width, height;
};

/// Truncation toward zero with the nearest int for what is out of range and 0 for not-a-number.
int to_int(double value);

}  // namespace reference

#endif  // ORVEX_TESTS_REFERENCE_TYPES_H
