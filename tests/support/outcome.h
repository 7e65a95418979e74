// What a call did, in a form in which the library's and the reference's can be compared: what was thrown,
// what was printed, and every output down to its layout fields and capacities.
#ifndef ORVEX_TESTS_SUPPORT_OUTCOME_H
#define ORVEX_TESTS_SUPPORT_OUTCOME_H

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "capture.h"
#include "cv_imgproc.h"
#include "shapes.h"
#include "types.h"

namespace testing_support {

class Outcome {
 public:
    std::string thrown;
    std::string printed;

    template <class T>
    Outcome& with(const std::string& name, const T& value) {
        std::string bytes;
        describe(value, bytes);
        outputs_.emplace_back(name, std::move(bytes));
        return *this;
    }

    /// Where the library's outcome first differs from the reference's; nothing when both did the same.
    static std::string difference(const Outcome& library, const Outcome& reference);

    /// All of it as one number, the same one on every processor.
    uint64_t digest() const;

 private:
    std::vector<std::pair<std::string, std::string>> outputs_;

    // Low byte first, whatever the processor's order.
    static void scalar(uint32_t bits, std::string& out) {
        for (int shift = 0; shift < 32; shift += 8) out += static_cast<char>(bits >> shift & 255);
    }
    static void scalar(int value, std::string& out) { scalar(static_cast<uint32_t>(value), out); }
    // Not-a-number as such: its sign and payload are the processor's.
    static void scalar(float value, std::string& out) {
        uint32_t bits = 0x7fc00000;
        if (!std::isnan(value)) std::memcpy(&bits, &value, sizeof bits);
        scalar(bits, out);
    }
    static void scalar(unsigned char value, std::string& out) { out += static_cast<char>(value); }
    static void scalar(bool value, std::string& out) { out += value ? '\1' : '\0'; }
    template <class T>
    static void elements(const T* from, size_t n, std::string& out) {
        for (size_t i = 0; i < n; ++i) scalar(from[i], out);
    }
    static void elements(const unsigned char* from, size_t n, std::string& out) {
        out.append(reinterpret_cast<const char*>(from), n);
    }
    static void describe(int value, std::string& out) { scalar(value, out); }
    static void describe(float value, std::string& out) { scalar(value, out); }
    static void describe(bool value, std::string& out) { scalar(value, out); }
    static void describe(unsigned char value, std::string& out) { scalar(value, out); }
    static void describe(const orvex_cv_991::Point& p, std::string& out) {
        scalar(p.x, out), scalar(p.y, out);
    }
    static void describe(const reference::Point& p, std::string& out) { scalar(p.x, out), scalar(p.y, out); }
    static void describe(const orvex_cv_991::Point32f& p, std::string& out) {
        scalar(p.x, out), scalar(p.y, out);
    }
    static void describe(const reference::Point32f& p, std::string& out) {
        scalar(p.x, out), scalar(p.y, out);
    }
    template <class R>
    static void describe_rect(const R& r, std::string& out) {
        scalar(r.x, out), scalar(r.y, out), scalar(r.width, out), scalar(r.height, out);
    }
    static void describe(const orvex_cv_991::Rect& r, std::string& out) { describe_rect(r, out); }
    static void describe(const reference::Rect& r, std::string& out) { describe_rect(r, out); }

    template <class M>
    static void describe_matrix(const M& m, bool allocated, std::string& out) {
        for (const int field : {m.rows, m.cols, m.channels, m.dims_rows, m.dims_cols, m.step, m.elem_size})
            scalar(field, out);
        scalar(allocated, out);
    }
    template <class T>
    static void describe(const orvex_cv_991::Mat<T>& m, std::string& out) {
        describe_matrix(m, m.data != nullptr, out);
        const int n = reference::wrapping_product(reference::wrapping_product(m.cols, m.rows), m.channels);
        if (m.data) elements(m.data, static_cast<size_t>(n), out);
    }
    template <class T>
    static void describe(const reference::Image<T>& m, std::string& out) {
        describe_matrix(m, m.allocated, out);
        if (m.allocated) elements(m.data.data(), m.data.size(), out);
    }
    template <class T>
    static void describe(const orvex_991::vector<T>& v, std::string& out) {
        scalar(v.size(), out), scalar(v.capacity(), out);
        for (int i = 0; i < v.size; ++i) describe(v[i], out);
    }
    template <class T>
    static void describe(const reference::List<T>& v, std::string& out) {
        scalar(v.size(), out), scalar(v.capacity, out);
        for (const T& item : v.items) describe(item, out);
    }
};

/// Runs a call of the library.
template <class Run>
Outcome of_library(Run run) {
    Outcome outcome;
    Capture capture;
    try {
        run();
    } catch (const orvex_991::CException& e) {
        outcome.thrown = "code " + std::to_string(e.code) + " \"" + e.message.c_str() + "\"";
    } catch (const std::exception& e) {
        outcome.thrown = e.what();
    }
    outcome.printed = normalised(capture.finish());
    return outcome;
}

/// Runs a call of the reference.
template <class Run>
Outcome of_reference(Run run) {
    Outcome outcome;
    reference::take_printed();
    try {
        run();
    } catch (const reference::Failure& e) {
        outcome.thrown = "code " + std::to_string(e.code) + " \"" + e.message + "\"";
    }
    outcome.printed = reference::take_printed();
    return outcome;
}

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_OUTCOME_H
