// The rows of the table.
#ifndef ORVEX_BENCH_CASES_H
#define ORVEX_BENCH_CASES_H

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "inputs.h"

namespace bench {

/// One way to do the work of a row.
struct Candidate {
    std::string name;  ///< "ours", "reference", or the library's name
    std::function<void()> run;
};

struct Case {
    std::string name;
    int64_t bytes = 0;  ///< that the operation must read and write
    std::vector<Candidate> candidates;
};

/// The factors of the rows of resize, by their names there.
constexpr std::pair<const char*, double> kResizeFactors[] = {{"x0.27", 0.27}, {"x0.5", 0.5}, {"x1.7", 1.7}};

/// All rows with our operations on `in` and, if wanted, the plain reference.
std::vector<Case> make_cases(const Inputs& in, bool with_reference);

// Each library adds itself to the rows that it has something comparable for. What is timed includes
// fresh outputs, as ours do, and conversions into and out of the library's own pixel format only where
// the call's users need them.
void add_yuv(std::vector<Case>& cases, const Inputs& in);
void add_leptonica(std::vector<Case>& cases, const Inputs& in);
void add_vips(std::vector<Case>& cases, const Inputs& in);
void add_seal(std::vector<Case>& cases, const Inputs& in);
void add_cgal(std::vector<Case>& cases, const Inputs& in);

/// Adds a candidate to the row called `name`; a row that does not exist is a mistake in the program.
void add_peer(std::vector<Case>& cases, const std::string& name, const std::string& library,
              std::function<void()> run);

}  // namespace bench

#endif  // ORVEX_BENCH_CASES_H
