// Prints what was measured.
#ifndef ORVEX_BENCH_TABLE_H
#define ORVEX_BENCH_TABLE_H

#include <string>
#include <utility>
#include <vector>

#include "runner.h"

namespace bench {

struct Result {
    Case row;
    Times times;
};

/// Head of the table in Markdown: machine, compiler, size, how to read the columns.
std::string table_head(const Inputs& in, int repetitions);

/// One line: our milliseconds, gigabytes a second of what the operation must move, ratios to the copies, then
/// every other candidate's milliseconds with ours as a ratio to it (below 1 we are faster).
std::string table_line(const Result& result);

}  // namespace bench

#endif  // ORVEX_BENCH_TABLE_H
