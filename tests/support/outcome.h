// What a call did, in a form in which the library's and the reference's can be compared: what was thrown,
// what was printed, and every output down to its layout fields and capacities.
#ifndef ORVEX_TESTS_SUPPORT_OUTCOME_H
#define ORVEX_TESTS_SUPPORT_OUTCOME_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "capture.h"
#include "cv_imgproc.h"
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

    friend testing::AssertionResult same(const Outcome& library, const Outcome& reference);

 private:
    std::vector<std::pair<std::string, std::string>> outputs_;

    template <class T>
    static void scalar(const T& value, std::string& out) {
        out.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    static void describe(int value, std::string& out) { scalar(value, out); }
    static void describe(float value, std::string& out) { scalar(value, out); }
    static void describe(unsigned char value, std::string& out) { scalar(value, out); }
    static void describe(const orvex_cv_991::Point& p, std::string& out) {
        scalar(p.x, out), scalar(p.y, out);
    }
    static void describe(const reference::Point& p, std::string& out) { scalar(p.x, out), scalar(p.y, out); }
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
        if (m.data) out.append(reinterpret_cast<const char*>(m.data), static_cast<size_t>(n) * sizeof(T));
    }
    template <class T>
    static void describe(const reference::Image<T>& m, std::string& out) {
        describe_matrix(m, m.allocated, out);
        if (m.allocated) out.append(reinterpret_cast<const char*>(m.data.data()), m.data.size() * sizeof(T));
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

/// Whether both calls did the same; if not, where they first differ.
testing::AssertionResult same(const Outcome& library, const Outcome& reference);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_OUTCOME_H
